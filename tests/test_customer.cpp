// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/MDIMain.h"
#include "platform/forms/flexgrid.h"
#include "reference/frmCustomer.h"
#include "tests/support/storetest.h"

using namespace Qt::StringLiterals;

namespace {

class CustomerTest : public StoreTest {
protected:
    frmCustomer& open() {
        frmCustomer& form = frmCustomer::instance();
        form.Show();
        form.txtCustomerDtls()->setFocus();
        return form;
    }
};

TEST_F(CustomerTest, typedCustomerIsStoredByEnterOnTheLastCell) {
    open();
    type(u"Acme"_s);
    key(Qt::Key_Return);
    type(u"1 High Street"_s);
    key(Qt::Key_Return);
    key(Qt::Key_Return);
    key(Qt::Key_Return);
    EXPECT_EQ(rows(u"select custname, Address, telno from customer"_s),
              QStringList{u"Acme|1 High Street|"_s});
    EXPECT_EQ(control<forms::MSHFlexGrid>(frmCustomer::instance(), "grdCustomerDtls")->Row(), 2);
}

} // namespace
