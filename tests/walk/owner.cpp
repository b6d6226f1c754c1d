// SPDX-License-Identifier: GPL-3.0-or-later
// Whose rows a form shows, by the names in it.
#include "tests/walk/oracle.h"

namespace walk {
QSet<QString> Oracle::idsOf(const QString& table, int nameField, const QString& name, Names names,
                            const QSet<QString>& customers) const {
    QSet<QString> ids;
    const auto look = [&](const QStringList& fields) {
        const bool ofCustomer = customers.isEmpty() || customers.contains(fields.value(1));
        if (ofCustomer && fields.value(nameField).compare(name, Qt::CaseInsensitive) == 0)
            ids << fields.value(0);
    };
    for (auto it = rows.lower_bound(table + u'|'); it != rows.end() && it->first.startsWith(table + u'|');
         ++it)
        look(it->second);
    const auto [first, last] = former.equal_range(table);
    for (auto it = first; names == Names::Ever && it != last; ++it)
        look(it->second);
    return ids;
}

Owner Oracle::ownerOf(const QWidget* form, Names names) const {
    constexpr int customerName = 1, respondentName = 2; // fields of their tables
    Owner result;
    if (!form)
        return result;
    result.form = form->objectName();
    const auto survey = [&](const char* customer, const char* respondent) {
        result.customers = idsOf(u"customer"_s, customerName, textOf(*form, customer), names);
        if (!result.customers.isEmpty())
            result.respondents =
                idsOf(u"respondent"_s, respondentName, textOf(*form, respondent), names, result.customers);
    };
    if (result.form == u"frmCustomer")
        result.customers << currentCell(*form, "grdCustomerDtls", 5);
    else if (result.form == u"frmParameter")
        result.parameters << currentCell(*form, "grdParameterDtls", 2);
    else if (result.form == u"frmNewSurvey")
        survey("lblCustomerName", "lblRespondentName");
    else if (result.form == u"frmPasteSurvey")
        survey("txtCustomer", "txtRespondent");
    else if (result.form == u"frmFeedBackObj")
        survey("cmbCusName", "lstRespname");
    else if (result.form == u"frmEditExistingSurvey")
        survey("cmbCustomer", "lstRespondent");
    else if (result.form == u"frmTargets") { // keeps the key of a customer who is renamed
        const QString key = child<forms::ComboBox>(*form, "cmbCustomer")->currentData().toString();
        if (key != u"0")
            result.customers << key;
    } else if (result.form == u"frmErase") {
        for (const QWidget* behind : loadedForms()) {
            if (behind->objectName() != u"frmPerson")
                continue;
            result.customers << child<forms::ComboBox>(*behind, "cmbCustomer")->currentData().toString();
            result.respondents << child<forms::ComboBox>(*behind, "cmbRespondent")->currentData().toString();
        }
    } else if (result.form == u"frmImprovementPlan") {
        for (const QListWidgetItem* item : child<forms::ListBox>(*form, "lstCusName")->selectedItems())
            result.customers += idsOf(u"customer"_s, customerName, item->text(), names);
    }
    return result;
}
} // namespace walk
