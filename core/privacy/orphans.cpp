// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/privacy/orphans.h"

#include "core/store/store.h"
#include "core/store/transaction.h"
#include "exchange/files/homefile.h"

#include <QDir>

#include <numeric>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

constexpr qlonglong keysAStep = 500'000;

// What a row may refer to: that is joined to what it belongs to itself.
const QString customers = u"(select custid from customer)"_s;
const QString respondents = u"(select respondent.respondentid from respondent "
                            "join customer on customer.custid=respondent.custid)"_s;
const QString questionsAsked = u"(select questions.questionid from questions "
                               "join parameter on parameter.paramid=questions.paramid)"_s;
const QString surveys = u"(select survey.surveyid from survey "
                        "join customer on customer.custid=survey.custid)"_s;

/// A field without a value refers to nothing.
QString isGone(const QString& field, const QString& stored) {
    return u'(' + field + u" is null or " + field + u" not in " + stored + u')';
}

struct Kind {
    QString what;
    QString table;
    QString condition;
    QString statement = {}; ///< empty: the rows are removed
};

/// Those that others refer to come first.
std::vector<Kind> allKinds() {
    const QString answerIsGone =
        isGone(u"respondentid"_s, respondents) + u" or " + isGone(u"questionid"_s, questionsAsked);
    return {
        {u"Respondents"_s, u"respondent"_s, isGone(u"custid"_s, customers)},
        {u"Questions"_s, u"questions"_s, isGone(u"paramid"_s, u"(select paramid from parameter)"_s)},
        {u"Surveys"_s, u"survey"_s, isGone(u"custid"_s, customers)},
        {u"Questions of questionnaires"_s, u"responquesindex"_s,
         answerIsGone + u" or " + isGone(u"surveyid"_s, surveys)},
        {u"Marks"_s, u"feedbackobjective"_s, answerIsGone},
        {u"Answers in words"_s, u"feedbackdescriptive"_s, answerIsGone},
        {u"Register of survey files"_s, u"log"_s,
         u"(custname is null or custname not in (select custname from customer where custname is not null)) "
         "and "_s +
             isGone(u"respid"_s, respondents)},
        {u"Improvement actions"_s, u"actionplan"_s, isGone(u"customerid"_s, customers)},
        {u"Standard messages"_s, u"standardmessage"_s, isGone(u"customerid"_s, customers)},
        {u"Hand-overs"_s, u"dispatch"_s,
         isGone(u"respondentid"_s, respondents) + u" or " + isGone(u"surveyid"_s, surveys)},
        {u"Reminders"_s, u"reminder"_s,
         isGone(u"dispatchid"_s, u"(select dispatchid from dispatch where respondentid in "_s + respondents +
                                     u" and surveyid in " + surveys + u')')},
        {u"Groups"_s, u"segment"_s,
         isGone(u"custid"_s, customers) + u" or (respondentid is not null and respondentid not in " +
             respondents + u')'},
        {u"Targets"_s, u"target"_s,
         isGone(u"paramid"_s, u"(select paramid from parameter)"_s) +
             u" or (custid is not null and custid not in " + customers + u')'},
        {u"Records of readings, emptied"_s, u"readingfile"_s,
         u"respondentid is not null and filename<>'erased' and respondentid not in "_s + respondents,
         u"update readingfile set filename='erased', sha256=null, registered=null, statusbefore=null, "
         "answers=case when answers is null then null else '[]' end"_s},
        {u"Readings without files"_s, u"reading"_s,
         isGone(u"readingid"_s, u"(select readingid from readingfile where readingid is not null)"_s)},
    };
}

/// A store of version 1 lacks some of the tables.
std::vector<Kind> kinds() {
    const QStringList stored = cnnMain->Tables();
    std::vector<Kind> all = allKinds();
    std::erase_if(all, [&](const Kind& kind) { return !stored.contains(kind.table); });
    return all;
}

/// The keys of a table, in parts.
class KeyRanges {
public:
    explicit KeyRanges(const QString& table) : key(u'[' + cnnMain->session()->keyOf(table) + u']') {
        ado::Recordset ends(u"select min(%1), max(%1) from %2"_s.arg(key, table), *cnnMain);
        if (ends.FieldAt(0).IsNull())
            return;
        next = ends.FieldAt(0).Value().toLongLong();
        last = ends.FieldAt(1).Value().toLongLong();
    }
    int count() const { return next > last ? 0 : int((last - next) / keysAStep) + 1; }
    /// The condition of the next part; nothing after the last one.
    std::optional<QString> take() {
        if (next > last)
            return std::nullopt;
        const qlonglong first = std::exchange(next, next + keysAStep);
        return u"%1 between %2 and %3"_s.arg(key).arg(first).arg(std::min(last, next - 1));
    }

private:
    QString key;
    qlonglong next = 1;
    qlonglong last = 0;
};

QStringList filesOf(const QString& condition) {
    QStringList files;
    ado::Recordset log(u"select distinct xlsfilename from log where "_s + condition, *cnnMain);
    for (; !log.Eof(); log.MoveNext()) {
        const QString name = log["xlsfilename"].Text();
        if (!name.contains(u'/') && !name.contains(u'\\') && toCheckFileExists(name))
            files << QDir::toNativeSeparators(surveyFilePath(name));
    }
    return files;
}

/// Calls `meet` with the condition of each part of each table; it returns the number of rows.
OrphanResult goThrough(const OrphanStep& step,
                       const std::function<int(const Kind& kind, const QString& condition)>& meet) {
    OrphanResult result;
    for (const Kind& kind : kinds()) {
        Orphans orphans{kind.what, kind.table};
        if (kind.table == u"log")
            result.files = filesOf(kind.condition);
        KeyRanges ranges(kind.table);
        while (const std::optional<QString> range = ranges.take()) {
            if (!step(kind.what)) {
                result.isCancelled = true;
                return result;
            }
            orphans.rows += meet(kind, u" where "_s + *range + u" and (" + kind.condition + u')');
        }
        result.found.push_back(orphans);
    }
    return result;
}

void writeProtocolRow(const OrphanResult& result, const QDateTime& now) {
    if (!cnnMain->Tables().contains(u"protocol"_s))
        return;
    QStringList lines;
    for (const Orphans& orphans : result.found) {
        if (orphans.rows > 0)
            lines << orphans.line();
    }
    ado::Recordset row(u"select * from protocol"_s, *cnnMain, ado::Recordset::Lock::Optimistic);
    row.AddNew();
    row["happened"] = now.toString(Qt::ISODate);
    row["what"] = u"Cleaned up: "_s + lines.join(u"; "_s);
    row.Update();
}

} // namespace

int OrphanResult::rows() const {
    return std::accumulate(found.begin(), found.end(), 0,
                           [](int sum, const Orphans& orphans) { return sum + orphans.rows; });
}

int countOrphanSteps() {
    int steps = 0;
    for (const Kind& kind : kinds())
        steps += KeyRanges(kind.table).count();
    return steps;
}

OrphanResult countOrphans(const OrphanStep& step) {
    return goThrough(step, [](const Kind& kind, const QString& condition) {
        return ado::Recordset(u"select count(*) from "_s + kind.table + condition, *cnnMain)
            .FieldAt(0)
            .Value()
            .toInt();
    });
}

OrphanResult removeOrphans(const OrphanStep& step, const QDateTime& now) {
    Transaction transaction;
    OrphanResult result = goThrough(step, [](const Kind& kind, const QString& condition) {
        cnnMain->Execute((kind.statement.isEmpty() ? u"delete * from "_s + kind.table : kind.statement) +
                         condition);
        return int(cnnMain->session()->changedRows());
    });
    if (result.isCancelled || result.rows() == 0)
        return result;
    writeProtocolRow(result, now);
    transaction.Commit();
    return result;
}
