// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/choices.h"

#include "core/base/busy.h"
#include "core/base/gblGlobal.h"

using namespace Qt::StringLiterals;

void listCustomers(forms::ComboBox& list) {
    ado::Recordset customers;
    customers.Open(u"select * from customer"_s, *cnnMain);
    list.Clear();
    for (; !customers.Eof(); customers.MoveNext())
        list.AddItem(customers["custname"].Text());
}

void listSurveyDates(forms::ListBox& list, const QString& customer) {
    const int custid = findCustomer(customer);
    ado::Recordset survey;
    survey.Open(u"select * from survey where custid="_s + QString::number(custid) + u" order by sdate asc",
                *cnnMain);
    list.Clear();
    for (; !survey.Eof(); survey.MoveNext())
        list.AddItem(survey["sdate"].Text());
}

void generateReport(forms::Form& form, const forms::ComboBox& customers, const std::function<void()>& fill) {
    if (customers.ListCount() == 0)
        return;
    const Busy busy(form, u"Generating Report....."_s);
    guarded(fill);
}
