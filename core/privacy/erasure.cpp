// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/privacy/erasure.h"

#include "core/privacy/personname.h"
#include "core/store/refusal.h"
#include "core/store/store.h"
#include "core/store/transaction.h"
#include "core/store/worktable.h"
#include "exchange/files/answerhistory.h"
#include "platform/ado/restore.h"

#include <algorithm>
#include <functional>

using namespace Qt::StringLiterals;
using Lock = ado::Recordset::Lock;

namespace {

/// Goes through all that is stored about a person, and counts it or changes it as well.
class Eraser {
public:
    Eraser(const Person& erased, const ErasureChoice& chosen)
        : person(erased), choice(chosen), stored(cnnMain->Tables()), name(erased.name, erased.email),
          ofPerson(u" where respondentid="_s + QString::number(erased.respondentid)) {
        plan.newName = findNewName();
        plan.hasNamesake = isTaken(person.name);
    }

    ErasurePlan count() { return run(); }
    ErasurePlan erase() {
        isWriting = true;
        return run();
    }

private:
    using Change = std::function<QString(const QString& text)>;

    ErasurePlan run();
    bool isTaken(const QString& wanted) const;
    QString findNewName() const;
    bool has(const QString& table) const { return stored.contains(table); }
    void add(const QString& what, int rows) {
        if (rows > 0)
            plan.steps.push_back({what, rows});
    }
    void countAndRun(const QString& what, const QString& table, const QString& condition,
                     const QString& statement);
    void eraseAnswers();
    void eraseRecords();
    void eraseHandOvers();
    void eraseRegister();
    void renameInOthers();
    void renameRespondent();
    int rewrite(const QString& select, const char* field, const Change& change);

    const Person& person;
    const ErasureChoice choice;
    const QStringList stored;
    const PersonName name;
    const QString ofPerson;
    ErasurePlan plan;
    bool isWriting = false;
};

ErasurePlan Eraser::run() {
    eraseAnswers();
    eraseRecords();
    eraseHandOvers();
    eraseRegister();
    if (has(u"segment"_s))
        countAndRun(u"Groups of the respondent, removed"_s, u"segment"_s, ofPerson,
                    u"delete * from segment"_s);
    if (choice.renamesIn)
        renameInOthers();
    renameRespondent();
    return std::move(plan);
}

/// Whether another respondent of the customer has the name.
bool Eraser::isTaken(const QString& wanted) const {
    return hasRecords(u"select * from respondent where custid=%1 and respondentid<>%2 and respondentname="_s
                          .arg(person.custid)
                          .arg(person.respondentid) +
                      sqlText(wanted));
}

QString Eraser::findNewName() const {
    const QString wanted = u"Erased respondent %1"_s.arg(person.respondentid);
    QString free = wanted;
    for (int number = 2; isTaken(free); ++number)
        free = wanted + u" (%1)"_s.arg(number);
    return free;
}

/// The statement without its condition.
void Eraser::countAndRun(const QString& what, const QString& table, const QString& condition,
                         const QString& statement) {
    ado::Recordset counted(u"select count(*) from "_s + table + condition, *cnnMain);
    const int rows = counted.FieldAt(0).Value().toInt();
    counted.Close();
    add(what, rows);
    if (isWriting && rows > 0)
        cnnMain->Execute(statement + condition);
}

void Eraser::eraseAnswers() {
    if (choice.keepsMarks) {
        countAndRun(u"Answers in words, emptied"_s, u"feedbackdescriptive"_s,
                    ofPerson + u" and Description<>''", u"update feedbackdescriptive set Description=''"_s);
        return;
    }
    countAndRun(u"Answers in words, removed"_s, u"feedbackdescriptive"_s, ofPerson,
                u"delete * from feedbackdescriptive"_s);
    countAndRun(u"Marks, removed"_s, u"feedbackobjective"_s, ofPerson, u"delete * from feedbackobjective"_s);
    countAndRun(u"Questions of questionnaires, removed"_s, u"responquesindex"_s, ofPerson,
                u"delete * from responquesindex"_s);
}

/// The answers before and after without their words, as those in the store are now, where a Null stays one: a
/// reading can still be undone.
QString withoutWords(const QString& json) {
    std::vector<AnswerChange> changes = changesFromJson(json);
    for (AnswerChange& change : changes) {
        for (std::optional<AnswerState>* state : {&change.before, &change.after}) {
            if (*state && !change.isScore && (*state)->content.isValid())
                (*state)->content = QString();
        }
    }
    return toJson(changes);
}

/// The text itself when nothing changes in the words.
QString withWords(const QString& json, const std::function<QString(const QString&)>& changed) {
    std::vector<AnswerChange> changes = changesFromJson(json);
    bool isChanged = false;
    for (AnswerChange& change : changes) {
        for (std::optional<AnswerState>* state : {&change.before, &change.after}) {
            if (!*state || change.isScore)
                continue;
            const QString words = (*state)->content.toString();
            const QString others = changed(words);
            if (others == words)
                continue;
            (*state)->content = others;
            isChanged = true;
        }
    }
    return isChanged ? toJson(changes) : json;
}

void Eraser::eraseRecords() {
    if (!has(u"readingfile"_s))
        return;
    ado::Recordset files(u"select * from readingfile"_s + ofPerson, *cnnMain, Lock::BatchOptimistic);
    int rows = 0;
    for (; !files.Eof(); files.MoveNext(), ++rows) {
        if (!isWriting)
            continue;
        files["filename"] = u"erased"_s;
        files["sha256"] = QVariant();
        files["registered"] = QVariant();
        files["statusbefore"] = QVariant();
        if (!files["answers"].IsNull())
            files["answers"] = choice.keepsMarks ? withoutWords(files["answers"].Text()) : toJson({});
        files.Update();
    }
    add(choice.keepsMarks ? u"Records of readings, without the file's name and the words"_s
                          : u"Records of readings, without the file's name and the answers"_s,
        rows);
}

void Eraser::eraseHandOvers() {
    if (!has(u"dispatch"_s))
        return;
    if (choice.keepsMarks) {
        countAndRun(u"Hand-overs, without the file's name"_s, u"dispatch"_s, ofPerson,
                    u"update dispatch set filename='erased'"_s);
        return;
    }
    countAndRun(u"Reminders, removed"_s, u"reminder"_s,
                u" where dispatchid in (select dispatchid from dispatch"_s + ofPerson + u')',
                u"delete * from reminder"_s);
    countAndRun(u"Hand-overs, removed"_s, u"dispatch"_s, ofPerson, u"delete * from dispatch"_s);
}

void Eraser::eraseRegister() {
    countAndRun(u"Rows of the register, removed"_s, u"log"_s, u" where "_s + registerCondition(person),
                u"delete * from log"_s);
}

/// Returns how many records have another text afterwards.
int Eraser::rewrite(const QString& select, const char* field, const Change& change) {
    int rows = 0;
    ado::Recordset records(select, *cnnMain, Lock::BatchOptimistic);
    for (; !records.Eof(); records.MoveNext()) {
        const QString text = records[field].Text();
        const QString changed = change(text);
        if (changed == text)
            continue;
        ++rows;
        if (isWriting) {
            records[field] = changed;
            records.Update();
        }
    }
    return rows;
}

void Eraser::renameInOthers() {
    const auto renamed = [this](const QString& text) { return name.replaced(text, plan.newName); };
    const QString ofCustomer = QString::number(person.custid);
    const QString ofOthers = u" where respondentid in (select respondentid from respondent where custid="_s +
                             ofCustomer + u" and respondentid<>" + QString::number(person.respondentid) +
                             u')';
    add(u"Improvement actions, with the new name"_s,
        rewrite(u"select * from actionplan where customerid="_s + ofCustomer, "Action", renamed));
    add(u"Standard messages, with the new name"_s,
        rewrite(u"select * from standardmessage where customerid="_s + ofCustomer, "standardmessage",
                renamed));
    add(u"Answers of other respondents, with the new name"_s,
        rewrite(u"select * from feedbackdescriptive"_s + ofOthers, "Description", renamed));
    if (has(u"readingfile"_s))
        add(u"Records of other readings, with the new name"_s,
            rewrite(u"select * from readingfile"_s + ofOthers + u" and answers is not null", "answers",
                    [&](const QString& json) { return withWords(json, renamed); }));
}

void Eraser::renameRespondent() {
    add(choice.keepsMarks ? u"Respondent, with the new name, without designation and e-mail"_s
                          : u"Respondent, removed"_s,
        1);
    if (!isWriting)
        return;
    if (choice.keepsMarks)
        cnnMain->Execute(
            u"update respondent set respondentname=%1, respondentdesignation='', emailid=null"_s.arg(
                sqlText(plan.newName)) +
            ofPerson);
    else
        cnnMain->Execute(u"delete * from respondent"_s + ofPerson);
}

void writeProtocolRow(const Person& person, const ErasurePlan& plan, const QDateTime& now) {
    if (!cnnMain->Tables().contains(u"protocol"_s))
        return;
    QStringList steps;
    for (const ErasureStep& step : plan.steps)
        steps << step.line();
    ado::Recordset row(u"select * from protocol"_s, *cnnMain, Lock::Optimistic);
    row.AddNew();
    row["happened"] = now.toString(Qt::ISODate);
    row["what"] = u"Respondent %1 erased: "_s.arg(person.respondentid) + steps.join(u"; "_s);
    row.Update();
}

} // namespace

ErasurePlan planErasure(const Person& person, const ErasureChoice& choice) {
    return Eraser(person, choice).count();
}

ErasurePlan erasePerson(const Person& shown, const ErasureChoice& choice, const QDateTime& now) {
    Transaction transaction;
    const Person person = requirePerson(shown.respondentid);
    if (person.name != shown.name || person.email != shown.email || person.custid != shown.custid)
        throw Refusal(u"Someone else has changed this respondent meanwhile. Nothing has been changed."_s);
    ErasurePlan done = Eraser(person, choice).erase();
    writeProtocolRow(person, done, now);
    transaction.Commit();
    return done;
}

bool rewriteStore(const ado::Step& step) {
    fillWorkTable([] {
        for (const QString& table : workTables())
            cnnMain->Execute(u"delete * from "_s + ado::quoted(table));
    });
    if (!cnnMain->IsFile())
        return true;
    try { // of a connection with own tables, SQLite cannot vacuum the store
        return ado::rewriteFile(strDatabasePath, step);
    } catch (const Failure& failure) {
        throw Refusal(failure.text()); // cnnMain has no record of it
    }
}
