// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/privacy/person.h"

#include "core/privacy/personname.h"
#include "core/store/programsetting.h"
#include "core/store/refusal.h"
#include "core/store/store.h"
#include "exchange/files/answerhistory.h"
#include "exchange/files/filenames.h"

#include <QDir>

#include <map>

using namespace Qt::StringLiterals;

namespace {

/// Reads the parts one after the other; a store of version 1 lacks some of the tables.
class Parts {
public:
    explicit Parts(const Person& shown) : person(shown), stored(cnnMain->Tables()) {}

    std::vector<PersonPart> read();

private:
    /// Adds the rows of a select, in which %1 is the respondent and %2 the customer.
    void add(const QString& title, const QStringList& from, const QStringList& headings, const QString& sql);
    void addAnswers();
    void addDispatches();
    void addReadings();
    void addRecordedAnswers();
    void addNaming();
    void addFiles();
    QString filled(QString sql) const {
        return sql.replace(u"%1"_s, QString::number(person.respondentid))
            .replace(u"%2"_s, QString::number(person.custid));
    }
    bool has(const QStringList& tables) const {
        return std::all_of(tables.begin(), tables.end(),
                           [this](const QString& table) { return stored.contains(table); });
    }

    const Person& person;
    const QStringList stored;
    std::vector<PersonPart> parts;
};

void Parts::add(const QString& title, const QStringList& from, const QStringList& headings,
                const QString& sql) {
    PersonPart part{title, from.join(u", "_s), {headings, {}}};
    if (has(from)) {
        ado::Recordset records(filled(sql), *cnnMain);
        for (; !records.Eof(); records.MoveNext()) {
            QVariantList row;
            for (int i = 0; i < records.FieldCount(); ++i)
                row << records.FieldAt(i).Value();
            part.table.rows.push_back(row);
        }
    }
    parts.push_back(part);
}

std::vector<PersonPart> Parts::read() {
    add(u"Respondent"_s, {u"respondent"_s, u"customer"_s},
        {u"Name"_s, u"Designation"_s, u"E-mail"_s, u"Customer"_s, u"Number"_s},
        u"select respondentname, respondentdesignation, emailid, custname, respondentid from respondent "
        "join customer on customer.custid=respondent.custid where respondentid=%1"_s);
    add(u"Groups"_s, {u"segment"_s}, {u"Kind"_s, u"Group"_s, u"Given to"_s},
        u"select kind, name, case when respondentid is null then 'the customer' else 'the respondent' end "
        "from segment where custid=%2 and (respondentid is null or respondentid=%1) order by kind"_s);
    add(u"Questionnaires"_s, {u"responquesindex"_s, u"survey"_s, u"questions"_s},
        {u"Survey Date"_s, u"Place"_s, u"Question"_s},
        u"select survey.sdate, responquesindex.Order, questions.question from responquesindex "
        "left join survey on survey.surveyid=responquesindex.surveyid "
        "left join questions on questions.questionid=responquesindex.questionid "
        "where responquesindex.respondentid=%1 order by 1, 2"_s);
    addAnswers();
    parts.push_back({u"Register of survey files"_s,
                     u"log"_s,
                     {{u"File"_s, u"Survey Date"_s, u"Respondent Name"_s, u"Read In"_s}, {}}});
    ado::Recordset log(u"select xlsfilename, sdate, respname, Status from log where "_s +
                           registerCondition(person) + u" order by sdate, xlsfilename",
                       *cnnMain);
    for (; !log.Eof(); log.MoveNext())
        parts.back().table.rows.push_back({log["xlsfilename"].Value(), log["sdate"].Value(),
                                           log["respname"].Value(), log["Status"].Value().toBool()});
    addDispatches();
    addReadings();
    addRecordedAnswers();
    addNaming();
    addFiles();
    return std::move(parts);
}

void Parts::addAnswers() {
    add(u"Marks"_s, {u"feedbackobjective"_s, u"questions"_s},
        {u"Survey Date"_s, u"Question"_s, u"Weightage"_s, u"Score"_s},
        u"select surveydate, question, weightage, score from feedbackobjective "
        "left join questions on questions.questionid=feedbackobjective.questionid "
        "where respondentid=%1 order by surveydate, feedbackobjid"_s);
    add(u"Answers in words"_s, {u"feedbackdescriptive"_s, u"questions"_s},
        {u"Survey Date"_s, u"Question"_s, u"Weightage"_s, u"Answer"_s},
        u"select surveydate, question, weightage, Description from feedbackdescriptive "
        "left join questions on questions.questionid=feedbackdescriptive.questionid "
        "where respondentid=%1 order by surveydate, feedbackdescid"_s);
}

void Parts::addDispatches() {
    add(u"Handed over"_s, {u"dispatch"_s, u"survey"_s},
        {u"Survey Date"_s, u"File"_s, u"Handed Over"_s, u"Due"_s},
        u"select survey.sdate, filename, handedover, due from dispatch "
        "left join survey on survey.surveyid=dispatch.surveyid where respondentid=%1 order by handedover"_s);
    add(u"Reminders"_s, {u"reminder"_s, u"dispatch"_s}, {u"File"_s, u"Reminded"_s},
        u"select filename, reminded from reminder "
        "join dispatch on dispatch.dispatchid=reminder.dispatchid where respondentid=%1 order by reminded"_s);
}

void Parts::addReadings() {
    add(u"Files read"_s, {u"readingfile"_s, u"reading"_s},
        {u"Read"_s, u"By"_s, u"File"_s, u"Survey Date"_s, u"SHA-256"_s, u"New"_s, u"Changed"_s, u"Same"_s,
         u"Undone"_s},
        u"select started, login, filename, surveydate, sha256, added, changed, same, undone from readingfile "
        "left join reading on reading.readingid=readingfile.readingid "
        "where respondentid=%1 order by readingfileid"_s);
}

/// What a state holds besides its survey.
QVariantList cellsOf(const std::optional<AnswerState>& state) {
    return state ? QVariantList{state->weightage, state->content} : QVariantList{{}, {}};
}

void Parts::addRecordedAnswers() {
    parts.push_back({u"Answers in the records of readings"_s,
                     u"readingfile, column answers"_s,
                     {{u"Read"_s, u"Survey Date"_s, u"Question"_s, u"Weightage Before"_s, u"Answer Before"_s,
                       u"Weightage After"_s, u"Answer After"_s},
                      {}}});
    if (!has({u"readingfile"_s}))
        return;
    std::map<int, QString> texts;
    ado::Recordset questions(u"select questionid, question from questions"_s, *cnnMain);
    for (; !questions.Eof(); questions.MoveNext())
        texts[questions["questionid"].Value().toInt()] = questions["question"].Text();
    ado::Recordset files(filled(u"select started, surveydate, answers from readingfile "
                                "left join reading on reading.readingid=readingfile.readingid "
                                "where respondentid=%1 and answers is not null order by readingfileid"_s),
                         *cnnMain);
    for (; !files.Eof(); files.MoveNext()) {
        for (const AnswerChange& change : changesFromJson(files["answers"].Text()))
            parts.back().table.rows.push_back(QVariantList{files["started"].Value(),
                                                           files["surveydate"].Value(),
                                                           texts[change.questionid]} +
                                              cellsOf(change.before) + cellsOf(change.after));
    }
}

/// Texts of others that name the person.
void Parts::addNaming() {
    parts.push_back(
        {u"Texts that name the person"_s,
         u"actionplan, standardmessage, customer, feedbackdescriptive, readingfile; those of this customer"_s,
         {{u"Where"_s, u"Date"_s, u"Text"_s}, {}}});
    const PersonName name(person.name, person.email);
    const auto look = [&](const QString& where, const QString& sql) {
        ado::Recordset records(filled(sql), *cnnMain);
        for (; !records.Eof(); records.MoveNext()) {
            if (name.isIn(records.FieldAt(1).Text()))
                parts.back().table.rows.push_back(
                    {where, records.FieldAt(0).Value(), records.FieldAt(1).Value()});
        }
    };
    look(u"Improvement action"_s,
         u"select [Date], [Action] from actionplan where customerid=%2 order by actionid"_s);
    look(u"Standard message"_s, u"select null, standardmessage from standardmessage where customerid=%2"_s);
    for (const QString& field : {u"custname"_s, u"Address"_s, u"telno"_s, u"email"_s})
        look(u"Customer"_s, u"select null, "_s + field + u" from customer where custid=%2"_s);
    look(u"Answer of another respondent"_s,
         u"select surveydate, Description from feedbackdescriptive "
         "where respondentid in (select respondentid from respondent where custid=%2 and respondentid<>%1) "
         "order by feedbackdescid"_s);
    if (!has({u"readingfile"_s}))
        return;
    ado::Recordset others(filled(u"select surveydate, answers from readingfile where respondentid in "
                                 "(select respondentid from respondent where custid=%2 and respondentid<>%1) "
                                 "and answers is not null order by readingfileid"_s),
                          *cnnMain);
    for (; !others.Eof(); others.MoveNext()) {
        for (const AnswerChange& change : changesFromJson(others["answers"].Text())) {
            for (const auto& state : {change.before, change.after}) {
                if (state && !change.isScore && name.isIn(state->content.toString()))
                    parts.back().table.rows.push_back({u"Record of another respondent's reading"_s,
                                                       others["surveydate"].Value(), state->content});
            }
        }
    }
}

void Parts::addFiles() {
    parts.push_back({u"Survey files"_s, u"the folder of survey files"_s, {{u"File"_s, u"Own"_s}, {}}});
    for (const PersonFile& file : findPersonFiles(person))
        parts.back().table.rows.push_back({QDir::toNativeSeparators(file.path), file.isOwn});
}

} // namespace

QString sqlText(QString text) {
    return u'\'' + text.replace(u'\'', u"''"_s) + u'\'';
}

Person requirePerson(int respondentid) {
    ado::Recordset stored(u"select respondent.custid, respondentname, emailid, custname from respondent "
                          "join customer on customer.custid=respondent.custid where respondentid="_s +
                              QString::number(respondentid),
                          *cnnMain);
    if (stored.Eof())
        throw Refusal(u"This respondent is no longer in the database. Nothing has been changed."_s);
    return {respondentid, stored["custid"].Value().toInt(), stored["respondentname"].Text(),
            stored["emailid"].Text(), stored["custname"].Text()};
}

std::vector<PersonPart> findPersonParts(const Person& person) {
    return Parts(person).read();
}

QString registerCondition(const Person& person) {
    return u"(respid=%1 or (respid is null and custname=%2 and respname=%3))"_s.arg(
        QString::number(person.respondentid), sqlText(person.customer), sqlText(person.name));
}

QStringList registeredTitles(const Person& person) {
    QStringList titles;
    const auto take = [&](const QString& sql) {
        ado::Recordset records(sql, *cnnMain);
        for (; !records.Eof(); records.MoveNext()) {
            const QString title = toStoredText(records.FieldAt(0).Text().trimmed());
            if (!title.isEmpty() && !titles.contains(title))
                titles << title;
        }
    };
    const QStringList stored = cnnMain->Tables();
    const QString ofPerson = u" where respondentid="_s + QString::number(person.respondentid);
    take(u"select distinct xlsfilename from log where "_s + registerCondition(person));
    if (stored.contains(u"dispatch"_s))
        take(u"select distinct filename from dispatch"_s + ofPerson);
    if (stored.contains(u"readingfile"_s))
        take(u"select distinct registered from readingfile"_s + ofPerson);
    return titles;
}

std::vector<PersonFile> findPersonFiles(const Person& person) {
    const QStringList titles = registeredTitles(person);
    QStringList others; // titles that someone else's files go by as well
    if (!titles.isEmpty()) {
        QStringList conditions;
        for (const QString& title : titles)
            conditions << conditionOfTitle(title);
        ado::Recordset log(u"select distinct xlsfilename from log where ("_s + conditions.join(u" or "_s) +
                               u") and case when " + registerCondition(person) + u" then 1 else 0 end = 0",
                           *cnnMain);
        for (; !log.Eof(); log.MoveNext())
            others << log["xlsfilename"].Text();
    }
    const auto goesBy = [](const QString& name, const QStringList& registered) {
        return std::any_of(registered.begin(), registered.end(),
                           [&](const QString& title) { return isReturnOf(name, title); });
    };
    std::vector<PersonFile> files;
    const QDir folder(surveyFolder());
    for (const QString& name : folder.entryList(QDir::Files, QDir::Name)) {
        if (!goesBy(name, titles))
            continue;
        const bool isWorkbook =
            name.endsWith(u".xls", Qt::CaseInsensitive) || !titlesHandedOut(name).isEmpty();
        files.push_back({folder.filePath(name), isWorkbook &&
                                                    name.compare(templateFile, Qt::CaseInsensitive) != 0 &&
                                                    !goesBy(name, others)});
    }
    return files;
}
