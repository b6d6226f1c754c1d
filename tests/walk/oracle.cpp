// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/walk/oracle.h"

#include "core/MDIMain.h"
#include "platform/forms/flexgrid.h"
#include "platform/forms/lists.h"
#include "platform/forms/listview.h"
#include "platform/forms/treeview.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace walk {
namespace {

/// The tables whose rows belong to someone, with the fields that say to whom: the first is the row's own key,
/// and a row that keeps it keeps the others.
const std::map<QString, QString> ownedTables{
    {u"customer"_s, u"custid"_s},
    {u"respondent"_s, u"respondentid, custid"_s},
    {u"parameter"_s, u"paramid"_s},
    {u"questions"_s, u"questionid, paramid"_s},
    {u"survey"_s, u"surveyid, custid, sdate"_s},
    {u"responquesindex"_s, u"rowid, respondentid, questionid, surveyid"_s},
    {u"feedbackobjective"_s, u"feedbackobjid, respondentid, questionid, surveydate"_s},
    {u"feedbackdescriptive"_s, u"feedbackdescid, respondentid, questionid, surveydate"_s},
    {u"actionplan"_s, u"actionid, customerid"_s},
    {u"log"_s, u"rowid, respid"_s},
    {u"standardmessage"_s, u"rowid, customerid"_s},
    {u"setting"_s, u"rowid"_s}};

/// The forms whose commands write a table.
const std::map<QString, QStringList> writers{
    {u"customer"_s, {u"frmCustomer"_s}},
    {u"respondent"_s, {u"frmCustomer"_s}},
    {u"parameter"_s, {u"frmParameter"_s}},
    {u"questions"_s, {u"frmParameter"_s}},
    {u"survey"_s, {u"frmNewSurvey"_s, u"frmEditExistingSurvey"_s, u"frmPasteSurvey"_s}},
    {u"responquesindex"_s, {u"frmNewSurvey"_s, u"frmEditExistingSurvey"_s, u"frmPasteSurvey"_s}},
    {u"feedbackobjective"_s, {u"frmFeedBackObj"_s, u"frmReading"_s, u"frmEditExistingSurvey"_s}},
    {u"feedbackdescriptive"_s, {u"frmFeedBackObj"_s, u"frmReading"_s, u"frmEditExistingSurvey"_s}},
    {u"actionplan"_s, {u"frmImprovementPlan"_s}},
    {u"log"_s,
     {u"frmNewSurvey"_s, u"frmEditExistingSurvey"_s, u"frmFeedBackObj"_s, u"frmReading"_s,
      u"frmLogDetails"_s}},
    {u"standardmessage"_s, {u"frmMessage"_s}},
    {u"setting"_s, {u"frmSetting"_s}}};

template <class Control> const Control* child(const QWidget& form, const char* name) {
    return form.findChild<Control*>(QLatin1StringView(name));
}

QString textOf(const QWidget& form, const char* name) {
    const QWidget* found = child<QWidget>(form, name);
    if (const auto* label = qobject_cast<const QLabel*>(found))
        return label->text();
    if (const auto* box = qobject_cast<const QLineEdit*>(found))
        return box->text();
    if (const auto* list = qobject_cast<const forms::ListBox*>(found))
        return list->Text();
    const auto* combo = qobject_cast<const forms::ComboBox*>(found);
    return combo ? combo->Text() : QString();
}

QString currentCell(const QWidget& form, const char* grid, int column) {
    const auto* found = child<forms::MSHFlexGrid>(form, grid);
    return found->TextMatrix(found->Row(), column);
}

QWidgetList loadedForms() {
    QWidgetList result;
    for (QWidget* widget : QApplication::allWidgets()) {
        if (qobject_cast<forms::Form*>(widget) && widget->isVisible())
            result << widget;
    }
    return result;
}

} // namespace

Oracle::Oracle(const QString& storePath) {
    store.OpenReadOnly(storePath, u"kvtwpa"_s);
    rows = readStore();
    for (const QAction* action : MDIMain::instance().findChildren<QAction*>())
        QObject::connect(action, &QAction::triggered, &hooks, [this, action] { ran(action->objectName()); });
}

/// Hooks every control that can run a command, once.
void Oracle::watch(forms::Form& form) {
    using forms::ListBox, forms::MSHFlexGrid, forms::TreeView;
    const auto onCommand = [this](auto* control, auto signal) {
        QObject::connect(control, signal, &hooks, [this, control] { ran(control->objectName()); });
    };
    for (auto* button : form.findChildren<QAbstractButton*>())
        onCommand(button, &QAbstractButton::clicked);
    for (auto* grid : form.findChildren<MSHFlexGrid*>())
        onCommand(grid, &MSHFlexGrid::DblClick);
    for (auto* tree : form.findChildren<TreeView*>()) {
        onCommand(tree, &TreeView::DblClick);
        onCommand(tree, &TreeView::KeyDown);
        onCommand(tree, &TreeView::OLECompleteDrag);
    }
    for (auto* list : form.findChildren<ListBox*>()) {
        onCommand(list, &ListBox::KeyDown);
        QObject::connect(list, &ListBox::Click, &hooks, [this, list] { clickedTexts[list] = list->Text(); });
        clickedTexts[list] = list->Text();
    }
    QObject::connect(&form, &QObject::destroyed, &hooks, [this, gone = &form] { watched.remove(gone); });
}

void Oracle::watchForms() {
    for (QWidget* form : loadedForms()) {
        if (!watched.contains(form))
            watch(*static_cast<forms::Form*>(form));
        watched.insert(form);
    }
}

void Oracle::begin(const QWidget* target) {
    commands.clear();
    watchForms();
    const QWidget* form = target;
    while (form && !qobject_cast<const forms::Form*>(form)) {
        const auto* window = qobject_cast<const QMdiSubWindow*>(form);
        form = window ? window->widget() : form->parentWidget();
    }
    if (!form) { // a menu or a popup: of the form in front
        const QMdiSubWindow* active = MDIMain::instance().findChild<QMdiArea*>()->activeSubWindow();
        form = active ? active->widget() : nullptr;
    }
    owner = ownerOf(form);
}

QSet<QString> Oracle::idsOf(const QString& table, int nameField, const QString& name,
                            const QSet<QString>& customers) const {
    QSet<QString> ids;
    for (auto it = rows.lower_bound(table + u'|'); it != rows.end() && it->first.startsWith(table + u'|');
         ++it) {
        const QStringList& fields = it->second;
        const bool ofCustomer = customers.isEmpty() || customers.contains(fields.value(1));
        if (ofCustomer && fields.value(nameField).compare(name, Qt::CaseInsensitive) == 0)
            ids << fields.value(0);
    }
    return ids;
}

Owner Oracle::ownerOf(const QWidget* form) const {
    constexpr int customerName = 1, respondentName = 2; // fields of their tables
    Owner result;
    if (!form)
        return result;
    result.form = form->objectName();
    const auto survey = [&](const char* customer, const char* respondent) {
        result.customers = idsOf(u"customer"_s, customerName, textOf(*form, customer));
        if (!result.customers.isEmpty())
            result.respondents =
                idsOf(u"respondent"_s, respondentName, textOf(*form, respondent), result.customers);
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
    else if (result.form == u"frmImprovementPlan") {
        for (const QListWidgetItem* item : child<forms::ListBox>(*form, "lstCusName")->selectedItems())
            result.customers += idsOf(u"customer"_s, customerName, item->text());
    }
    return result;
}

Oracle::Rows Oracle::readStore() {
    Rows result;
    for (const auto& [table, owners] : ownedTables) {
        ado::Recordset records;
        records.Open(u"select rowid as walkid, * from "_s + table, store);
        for (; !records.Eof(); records.MoveNext()) {
            QStringList fields;
            for (int i = 1; i < records.FieldCount(); ++i)
                fields << records.FieldAt(i).Text();
            result[table + u'|' + records.FieldAt(0).Text()] = fields;
        }
    }
    return result;
}

QString Oracle::fault(bool atRest) {
    watchForms();
    ado::Recordset counter;
    counter.Open(u"pragma data_version"_s, store);
    const QString now = counter.FieldAt(0).Text();
    counter.Close();
    if (now != version) {
        version = now;
        const Rows content = readStore();
        const QString found = faultOfStore(content);
        rows = content;
        if (!found.isEmpty())
            return found;
    }
    QString found = faultOfForms();
    if (found.isEmpty() && atRest)
        found = faultOfActiveForm();
    return found.isEmpty() && atRest ? faultOfRest() : found;
}

QString Oracle::faultOfStore(const Rows& now) const {
    for (const auto& [key, before] : rows) {
        const auto found = now.find(key);
        const QString table = key.section(u'|', 0, 0);
        if (found != now.end() && found->second == before)
            continue;
        const QString fault = faultOfChange(table, before, now);
        if (!fault.isEmpty())
            return fault + u" [before] " + key + u' ' + before.join(u'|');
    }
    for (const auto& [key, after] : now) {
        const auto found = rows.find(key);
        if (found != rows.end() && found->second == after)
            continue;
        const QString table = key.section(u'|', 0, 0);
        const QString fault = faultOfChange(table, after, now);
        if (!fault.isEmpty())
            return fault + u" [now] " + key + u' ' + after.join(u'|');
        static const QHash<QString, QList<int>> ownerFields{{u"respondent"_s, {1}},
                                                            {u"survey"_s, {2}},
                                                            {u"responquesindex"_s, {0, 1, 2}},
                                                            {u"feedbackobjective"_s, {1, 2, 3}},
                                                            {u"feedbackdescriptive"_s, {1, 2, 3}},
                                                            {u"actionplan"_s, {1}},
                                                            {u"questions"_s, {3}},
                                                            {u"standardmessage"_s, {0}}};
        for (const int field : ownerFields.value(table)) {
            if (after.value(field).isEmpty() || after.value(field) == u"0")
                return u"a row of nobody: "_s + key + u' ' + after.join(u'|');
        }
        static const QHash<QString, QList<int>> keptFields{{u"respondent"_s, {1}},
                                                           {u"questions"_s, {3}},
                                                           {u"survey"_s, {1, 2}},
                                                           {u"feedbackobjective"_s, {1, 2, 4}},
                                                           {u"feedbackdescriptive"_s, {1, 2, 4}},
                                                           {u"actionplan"_s, {1}}};
        for (const int field : keptFields.value(table)) {
            if (found != rows.end() && found->second.value(field) != after.value(field))
                return u"a row has changed its owner: "_s + key + u' ' + found->second.join(u'|') + u" -> " +
                       after.join(u'|');
        }
    }
    return {};
}

/// Whether a row that has come, gone or changed may have.
QString Oracle::faultOfChange(const QString& table, const QStringList& row, const Rows& now) const {
    if (commands.isEmpty())
        return u"the store has changed without a command"_s;
    if (!writers.at(table).contains(owner.form))
        return u"%1 has written %2"_s.arg(owner.form, table);
    const auto gone = [&](const QString& ownerTable, const QString& id) { // its rows go with it
        return !now.contains(ownerTable + u'|' + id);
    };
    bool owned = true;
    if (table == u"respondent")
        owned = owner.customers.contains(row[1]) || gone(u"customer"_s, row[1]);
    else if (table == u"questions")
        owned = owner.parameters.contains(row[3]) || gone(u"parameter"_s, row[3]);
    else if (table == u"survey")
        owned = owner.customers.contains(row[2]);
    else if (table == u"responquesindex")
        owned = owner.respondents.contains(row[0]);
    else if (table == u"actionplan")
        owned = owner.customers.contains(row[1]);
    else if (table.startsWith(u"feedback") && !commands.contains(u"cmdImport") &&
             !commands.contains(u"cmdRead"))
        owned = owner.respondents.contains(row[1]);
    return owned ? QString() : u"%1 has written another owner's %2"_s.arg(owner.form, table);
}

/// The stored rows of a lower grid belong to the row under the upper grid's cursor.
QString Oracle::faultOfPairedGrids(const QWidget& form, const char* upper, int upperKey, const char* lower,
                                   int lowerKey, const QString& table) const {
    const int ownerField = table == u"respondent" ? 1 : 3;
    const QString ownerId = currentCell(form, upper, upperKey);
    const auto* grid = child<forms::MSHFlexGrid>(form, lower);
    for (int row = 1; row < grid->Rows(); ++row) {
        const auto stored = rows.find(table + u'|' + grid->TextMatrix(row, lowerKey));
        if (stored != rows.end() && stored->second.value(ownerField) != ownerId)
            return u"%1 shows a row of %2 under %3"_s.arg(QLatin1StringView(lower),
                                                          stored->second.value(ownerField), ownerId);
    }
    return {};
}

QString Oracle::faultOfForms() const {
    for (const QWidget* form : loadedForms()) {
        for (const auto* list : form->findChildren<forms::ListBox*>()) {
            const auto clicked = clickedTexts.find(list);
            if (list->SelCount() == 1 && clicked != clickedTexts.end() && clicked->second != list->Text() &&
                !list->signalsBlocked())
                return u"%1 chose \"%2\" without a Click"_s.arg(list->objectName(), list->Text());
        }
        for (const auto* grid : form->findChildren<forms::MSHFlexGrid*>()) {
            const QModelIndex current = grid->currentIndex();
            if (grid->selectionMode() != QAbstractItemView::NoSelection && grid->Row() >= 1 &&
                current.isValid() &&
                (current.row() + 1 != grid->Row() || !grid->selectionModel()->isSelected(current)))
                return u"%1 does not mark its current row %2"_s.arg(grid->objectName()).arg(grid->Row());
        }
        for (const auto* box : form->findChildren<QLineEdit*>()) {
            const auto* grid =
                qobject_cast<forms::MSHFlexGrid*>(box->parent() ? box->parent()->parent() : nullptr);
            if (!grid || !box->isVisible())
                continue;
            if (box->text() != grid->Text())
                return u"%1 shows \"%2\" over \"%3\""_s.arg(box->objectName(), box->text(), grid->Text());
            const QRect view = grid->viewport()->rect();
            if (box->hasFocus() && view.height() >= box->height() && !view.intersects(box->geometry()))
                return box->objectName() + u" takes typing out of sight"_s;
        }
        QString found;
        if (form->objectName() == u"frmCustomer")
            found = faultOfPairedGrids(*form, "grdCustomerDtls", 5, "grdRespondentDtls", 4, u"respondent"_s);
        else if (form->objectName() == u"frmParameter")
            found = faultOfPairedGrids(*form, "grdParameterDtls", 2, "grdQuestionDtls", 3, u"questions"_s);
        if (!found.isEmpty())
            return found;
    }
    return {};
}

/// A form in front shows what is stored for its owner.
QString Oracle::faultOfActiveForm() {
    const QMdiSubWindow* active = MDIMain::instance().findChild<QMdiArea*>()->activeSubWindow();
    const QWidget* form = active ? active->widget() : nullptr;
    if (!form)
        return {};
    const Owner shown = ownerOf(form);
    if (shown.form == u"frmNewSurvey")
        return faultOfQuestionnaire(*form, shown, textOf(*form, "lblSurveyDate"));
    if (shown.form == u"frmEditExistingSurvey")
        return faultOfQuestionnaire(*form, shown, textOf(*form, "lstSurvetDates"));
    if (shown.form == u"frmImprovementPlan")
        return faultOfActions(*form, shown);
    if (shown.form == u"frmFeedBackObj" && !currentCell(*form, "grdDtls", 1).isEmpty() &&
        textOf(*form, "lblSDate") != textOf(*form, "lstSurveyDates"))
        return u"frmFeedBackObj shows another date than is chosen"_s;
    return {};
}

QString Oracle::faultOfQuestionnaire(const QWidget& form, const Owner& shown, const QString& date) {
    QStringList onShow;
    const auto* grid = child<forms::MSHFlexGrid>(form, "grdParamAndQuest");
    for (int row = 1; row < grid->Rows() - 1; ++row)
        onShow << grid->TextMatrix(row, 1) + u": " + grid->TextMatrix(row, 2);
    QStringList stored;
    const auto fieldsOf = [&](const char16_t* table, const QString& id) {
        const auto found = rows.find(QString::fromUtf16(table) + u'|' + id);
        return found == rows.end() ? QStringList() : found->second;
    };
    for (const auto& [key, asked] : rows) {
        if (!key.startsWith(u"responquesindex|") || !shown.respondents.contains(asked[0]))
            continue;
        const QStringList survey = fieldsOf(u"survey", asked[2]);
        const QStringList question = fieldsOf(u"questions", asked[1]);
        if (survey.value(1) == date && shown.customers.contains(survey.value(2)) && !question.isEmpty())
            stored << fieldsOf(u"parameter", question[3]).value(1) + u": " + question[1];
    }
    onShow.sort();
    stored.sort();
    if (onShow == stored)
        mayBeUnread = false;
    if (onShow == stored || mayBeUnread || shown.respondents.size() != 1)
        return {};
    return u"%1 shows [%2] where [%3] is stored"_s.arg(shown.form, onShow.join(u", "_s),
                                                       stored.join(u", "_s));
}

QString Oracle::faultOfActions(const QWidget& form, const Owner& shown) const {
    const auto* list = child<forms::ListView>(form, "lsvDtls");
    if (shown.customers.size() != 1 || child<forms::ListBox>(form, "lstCusName")->SelCount() != 1)
        return {};
    for (int row = 0; row < list->ListCount(); ++row) {
        const bool stored = std::any_of(rows.begin(), rows.end(), [&](const auto& entry) {
            return entry.first.startsWith(u"actionplan|") && shown.customers.contains(entry.second[1]) &&
                   entry.second[2] == list->Text(row, 1);
        });
        if (!stored)
            return u"frmImprovementPlan lists an action of %1 that the chosen customer does not have"_s.arg(
                list->Text(row, 1));
    }
    return {};
}

QString Oracle::faultOfRest() {
    if (cnnMain && cnnMain->InTransaction())
        return u"a transaction is open"_s;
    if (QGuiApplication::overrideCursor())
        return u"the hourglass is left behind"_s;
    const QString word = MDIMain::instance().stsBar->Panels(1).Text();
    if (!word.isEmpty() && word != u"Removing....") // which stays, without a date to remove from
        return u"the status bar still says \"%1\""_s.arg(word);
    return {};
}

} // namespace walk
