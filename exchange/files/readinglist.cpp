// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/files/readinglist.h"

#include "core/store/store.h"
#include "core/store/transaction.h"

using namespace Qt::StringLiterals;

namespace {

AnswerCounts countsIn(ado::Recordset& records) {
    return {records["added"].Value().toInt(), records["changed"].Value().toInt(),
            records["same"].Value().toInt()};
}

QDateTime momentIn(ado::Recordset& records, const char* field) {
    return QDateTime::fromString(records[field].Text(), Qt::ISODate);
}

} // namespace

std::vector<RecordedReading> findReadings() {
    std::vector<RecordedReading> readings;
    ado::Recordset records(
        u"select reading.readingid, started, login, undone, count(*) as files, "
        "sum(answers is null) as thinned, sum(added) as added, sum(changed) as changed, sum(same) as same "
        "from reading join readingfile on readingfile.readingid=reading.readingid "
        "group by reading.readingid order by reading.readingid desc"_s,
        *cnnMain);
    for (; !records.Eof(); records.MoveNext())
        readings.push_back({.readingid = records["readingid"].Value().toInt(),
                            .started = momentIn(records, "started"),
                            .login = records["login"].Text(),
                            .undone = momentIn(records, "undone"),
                            .isThinned = records["thinned"].Value().toInt() > 0,
                            .files = records["files"].Value().toInt(),
                            .answers = countsIn(records)});
    return readings;
}

std::vector<RecordedFile> findFilesOf(int readingid) {
    std::vector<RecordedFile> files;
    ado::Recordset records(u"select readingfile.*, respondentname, custname from readingfile "
                           "left join respondent on respondent.respondentid=readingfile.respondentid "
                           "left join customer on customer.custid=respondent.custid where readingid="_s +
                               QString::number(readingid) + u" order by readingfileid",
                           *cnnMain);
    for (; !records.Eof(); records.MoveNext())
        files.push_back({.name = records["filename"].Text(),
                         .sha256 = records["sha256"].Text(),
                         .customer = records["custname"].Text(),
                         .respondent = records["respondentname"].Text(),
                         .surveydate = records["surveydate"].Value().toDate(),
                         .answers = countsIn(records)});
    return files;
}

int countReadingsBefore(const QDateTime& moment) {
    ado::Recordset records(
        u"select count(*) from reading where started<'"_s + moment.toString(Qt::ISODate) +
            u"' and readingid in (select readingid from readingfile where answers is not null)",
        *cnnMain);
    return records.FieldAt(0).Value().toInt();
}

void thinOutReadingsBefore(const QDateTime& moment) {
    Transaction transaction;
    cnnMain->Execute(u"update readingfile set answers=null where readingid in "
                     "(select readingid from reading where started<'"_s +
                     moment.toString(Qt::ISODate) + u"')");
    transaction.Commit();
}
