// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/walk/oracle.h"

#include "platform/forms/treeview.h"

#include <QAbstractButton>

namespace walk {
namespace {
/// A table whose rows have owners.
struct OwnedTable {
    QString writers;      ///< forms whose commands may write it
    QList<int> owners;    ///< indexes of owner fields: neither empty nor 0
    QList<int> kept = {}; ///< indexes of fields that never change
    QList<int> once = {}; ///< indexes of fields that no two rows have in common
};

const OwnedTable answers{
    u"frmFeedBackObj frmReading frmReadingRuns frmCheckFiles frmEditExistingSurvey frmErase frmCleanUp"_s,
    {1, 2, 3},
    {1, 2, 4},
    {1, 2, 4}};
const QString editors = u"frmNewSurvey frmEditExistingSurvey frmPasteSurvey"_s;
const QString readers = u"frmFeedBackObj frmReading frmCheckFiles frmReadingRuns"_s;

const std::map<QString, OwnedTable> ownedTables{
    {u"customer"_s, {u"frmCustomer"_s, {}}},
    {u"respondent"_s, {u"frmCustomer frmErase"_s, {1}, {1}}},
    {u"parameter"_s, {u"frmParameter"_s, {}}},
    {u"questions"_s, {u"frmParameter"_s, {3}, {3}}},
    {u"survey"_s, {editors + u" frmCleanUp", {2}, {1, 2}, {1, 2}}},
    {u"responquesindex"_s, {editors + u" frmErase frmCleanUp", {0, 1, 2}}},
    {u"feedbackobjective"_s, answers},
    {u"feedbackdescriptive"_s, answers},
    {u"actionplan"_s, {u"frmImprovementPlan frmErase frmCleanUp"_s, {1}, {1}}},
    {u"log"_s, {readers + u" frmNewSurvey frmEditExistingSurvey frmLogDetails frmErase frmCleanUp"_s, {}}},
    {u"reading"_s, {readers + u" frmCleanUp", {}, {1, 2}}},
    {u"readingfile"_s, {readers + u" frmErase frmCleanUp", {1}, {1, 4, 6}}},
    {u"dispatch"_s,
     {u"frmNewSurvey frmEditExistingSurvey frmLogDetails frmResponses frmHandOver frmErase frmCleanUp"_s,
      {1, 2, 3},
      {1, 2, 3},
      {2, 3}}},
    {u"reminder"_s, {u"frmEditExistingSurvey frmResponses frmErase frmCleanUp"_s, {0}, {0, 1}}},
    {u"programsetting"_s, {u"frmResponses frmResponseSettings frmStore"_s, {}, {0}, {0}}},
    {u"standardmessage"_s, {u"frmMessage frmErase frmCleanUp"_s, {0}}},
    {u"segment"_s, {u"frmSegments frmErase frmCleanUp"_s, {0}, {}, {0, 1, 2}}},
    {u"setting"_s, {u"frmSetting"_s, {}}},
    {u"target"_s, {u"frmTargets frmCleanUp"_s, {0}, {0, 1}, {0, 1}}}};
} // namespace

Oracle::Oracle(bool shared) : isShared(shared) {
    store.ConnectionString = connectionText();
    store.Open();
    rows = readStore();
    for (const QAction* action : MDIMain::instance().findChildren<QAction*>())
        QObject::connect(action, &QAction::triggered, &hooks,
                         [this, action] { noteCommand(action->objectName()); });
}

QStringList Oracle::tables() {
    QStringList names;
    for (const auto& [table, rules] : ownedTables)
        names << table;
    return names;
}

/// Connects to every control that can run a command.
void Oracle::watch(forms::Form& form) {
    using forms::ListBox, forms::MSHFlexGrid, forms::TreeView;
    const auto onCommand = [this](auto* control, auto signal) {
        QObject::connect(control, signal, &hooks, [this, control] { noteCommand(control->objectName()); });
    };
    for (auto* button : form.findChildren<QAbstractButton*>()) {
        onCommand(button, &QAbstractButton::pressed); // before the form's procedure, which may open a dialog
        QObject::connect(button, &QAbstractButton::clicked, &hooks,
                         [this, button] { noteCommand(u"clicked "_s + button->objectName()); });
    }
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
    if (!form) // a menu or a popup belongs to the active form
        form = activeForm();
    if (form && form->objectName() == u"frmChangedMeanwhile")
        return; // its answer ends the command of the form behind it
    owner = ownerOf(form, Names::Ever);
    messageShown = false;
    entered = form ? newRowsOf(*form) : QStringList();
}

Oracle::Rows Oracle::readStore() {
    Rows result;
    store.BeginOwnTrans(); // all tables at one moment
    if (isShared)
        writers.read(store);
    for (const auto& [table, rules] : ownedTables) {
        ado::Recordset records(
            u"select [%1] as walkid, %2.* from %2"_s.arg(store.session()->keyOf(table), table), store);
        for (; !records.Eof(); records.MoveNext()) {
            QStringList fields;
            for (int i = 1; i < records.FieldCount(); ++i)
                fields << records.FieldAt(i).Text();
            result[table + u'|' + records.FieldAt(0).Text()] = fields;
        }
    }
    store.RollbackTrans();
    return result;
}

/// Forms may show what someone else has changed as it was.
void Oracle::leaveOut(const Rows& now) {
    for (const auto& [row, fields] : rows) {
        const auto found = now.find(row);
        if (writers.isOthers(row) && (found == now.end() || found->second != fields))
            former.emplace(row.section(u'|', 0, 0), fields);
    }
    if (writers.hasOthers())
        noteLock();
}

/// A server does not say when its data have changed.
bool Oracle::mayHaveChanged() {
    if (!store.IsFile())
        return true;
    ado::Recordset counter(u"pragma data_version"_s, store);
    const QString now = counter.FieldAt(0).Text();
    return std::exchange(version, now) != now;
}

QString Oracle::fault(bool isIdle) {
    watchForms();
    if (mayHaveChanged()) {
        const Rows content = readStore();
        QString found = faultOfStore(content);
        if (found.isEmpty())
            found = faultOfTwins(content);
        leaveOut(content);
        rows = content;
        if (!found.isEmpty())
            return found;
    }
    QString found = faultOfNewRows();
    if (found.isEmpty())
        found = faultOfForms();
    if (found.isEmpty() && isIdle)
        found = faultOfActiveForm();
    return found.isEmpty() && isIdle ? faultWhenIdle() : found;
}

QString Oracle::faultOfStore(const Rows& now) const {
    for (const Rows* content : {&rows, &now}) {
        const Rows& other = content == &now ? rows : now;
        for (const auto& [key, row] : *content) {
            const auto found = other.find(key);
            const bool stays = found != other.end();
            if ((stays && found->second == row) || writers.isOthers(key))
                continue;
            const QString table = key.section(u'|', 0, 0);
            QString fault = faultOfChange(table, row, now);
            for (const int field : ownedTables.at(table).owners) {
                if (content == &now && (row.value(field).isEmpty() || row.value(field) == u"0"))
                    fault = u"a row without an owner:"_s;
            }
            for (const int field : ownedTables.at(table).kept) {
                if (stays && found->second.value(field) != row.value(field))
                    fault = u"a row has changed its owner:"_s;
            }
            if (!fault.isEmpty())
                return fault + (content == &now ? u" [now] " : u" [before] ") + key + u' ' + row.join(u'|');
        }
    }
    return {};
}

/// Two programs may add the same row at once, so it is the last one's fault.
QString Oracle::faultOfTwins(const Rows& now) {
    QSet<QString> known;
    for (const auto& [key, row] : now) {
        const QString table = key.section(u'|', 0, 0);
        QStringList fields{table};
        for (const int field : ownedTables.at(table).once)
            fields << row.value(field);
        if (fields.size() > 1 && known.contains(fields.join(u'|')))
            return u"twice: "_s + fields.join(u'|');
        known << fields.join(u'|');
    }
    return {};
}

/// Whether a reading that has just been undone had a file of the answer's respondent and date.
bool Oracle::isOfUndoneReading(const QStringList& answer, const Rows& now) const {
    return std::any_of(now.begin(), now.end(), [&](const auto& entry) {
        const QStringList& file = entry.second;
        if (!entry.first.startsWith(u"readingfile|") || file[4] != answer[1] || file[6] != answer[4])
            return false;
        const QString reading = u"reading|"_s + file[1];
        const auto before = rows.find(reading);
        return before != rows.end() && before->second[3].isEmpty() && !now.at(reading)[3].isEmpty();
    });
}

/// What is wrong with the insertion, deletion or change of a row; empty if nothing.
QString Oracle::faultOfChange(const QString& table, const QStringList& row, const Rows& now) const {
    if (commands.isEmpty())
        return u"the store has changed without a command"_s;
    if (!ownedTables.at(table).writers.split(u' ').contains(owner.form))
        return u"%1 has written %2"_s.arg(owner.form, table);
    const auto gone = [&](const QString& ownerTable, const QString& id) { // deletes cascade
        return !now.contains(ownerTable + u'|' + id);
    };
    if (owner.form == u"frmCleanUp")
        return faultOfCleanUp(table, row);
    if (owner.form == u"frmErase")
        return faultOfErasure(table, row, now);
    bool owned = true;
    if (table == u"respondent")
        owned = owner.customers.contains(row[1]) || gone(u"customer"_s, row[1]);
    else if (table == u"questions")
        owned = owner.parameters.contains(row[3]) || gone(u"parameter"_s, row[3]);
    else if (table == u"survey")
        owned = owner.customers.contains(row[2]);
    else if (table == u"responquesindex")
        owned = owner.respondents.contains(row[0]);
    else if (table == u"dispatch" && owner.form.endsWith(u"Survey")) // its mail, or the deletion
        owned = owner.respondents.contains(row[2]);
    else if (table == u"actionplan")
        owned = owner.customers.contains(row[1]);
    else if (table == u"target")
        owned = row[1].isEmpty() ? owner.customers.isEmpty() : owner.customers.contains(row[1]);
    else if (table.startsWith(u"feedback") && !commands.contains(u"cmdImport") &&
             !commands.contains(u"cmdImportTicked") && !commands.contains(u"cmdRead"))
        owned =
            commands.contains(u"cmdUndo") ? isOfUndoneReading(row, now) : owner.respondents.contains(row[1]);
    return owned ? QString() : u"%1 has written another owner's %2"_s.arg(owner.form, table);
}
} // namespace walk
