// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/choices.h"

#include "core/base/busy.h"
#include "core/base/filllist.h"

using namespace Qt::StringLiterals;

void listCustomers(forms::ComboBox& list) {
    fillList(list, u"select custname from customer order by custid"_s, "custname");
}

void listSurveyDates(forms::ListBox& list, const QString& customer) {
    const int custid = findCustomer(customer);
    fillList(list, u"select * from survey where custid="_s + QString::number(custid) + u" order by sdate asc",
             "sdate");
}

void generateReport(forms::Form& form, const forms::ComboBox& customers, const std::function<void()>& fill) {
    if (customers.ListCount() == 0)
        return;
    const Busy busy(form, u"Generating Report....."_s);
    guarded(fill);
}
