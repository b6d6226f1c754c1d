// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/files/readingrecord.h"

#include "core/store/store.h"
#include "platform/ado/session.h"

#include <algorithm>

using namespace Qt::StringLiterals;
using Lock = ado::Recordset::Lock;

bool hasReadingTables() {
    return cnnMain->session()->isTable(u"readingfile"_s);
}

void ReadingRecord::beginFile(const QString& title, const QString& registered,
                              std::optional<bool> statusBefore) {
    if (!isRecorded)
        isRecorded = hasReadingTables();
    file = {};
    file.title = title;
    file.registered = toStoredText(registered);
    file.statusBefore = statusBefore;
}

void ReadingRecord::add(const AnswerKeys& keys, AnswerChange change) {
    if (!file.keys)
        file.keys = keys;
    file.changes.push_back(std::move(change));
}

void ReadingRecord::endFile() {
    if (isRecorded != true)
        return;
    requireRun();
    const auto count = [&](auto isCounted) {
        return int(std::count_if(file.changes.begin(), file.changes.end(), isCounted));
    };
    const int added = count([](const AnswerChange& change) { return !change.before; });
    const int same = count([](const AnswerChange& change) { return change.before == change.after; });
    ado::Recordset row(u"select * from readingfile"_s, *cnnMain, Lock::BatchOptimistic);
    row.AddNew();
    row["readingid"] = readingid;
    row["filename"] = file.title;
    if (!file.hash.isEmpty())
        row["sha256"] = file.hash;
    if (file.keys) {
        row["respondentid"] = file.keys->respondentid;
        row["surveyid"] = file.keys->surveyid;
        row["surveydate"] = file.keys->surveydate;
    }
    if (file.statusBefore) {
        row["registered"] = file.registered;
        row["statusbefore"] = *file.statusBefore;
    }
    row["added"] = added;
    row["changed"] = int(file.changes.size()) - added - same;
    row["same"] = same;
    row["answers"] = toJson(file.changes);
    row.Update();
}

void ReadingRecord::requireRun() {
    if (readingid.isValid())
        return;
    ado::Recordset reading(u"select * from reading"_s, *cnnMain, Lock::Optimistic);
    reading.AddNew();
    reading["started"] = run.started.toString(Qt::ISODate);
    reading["login"] = run.login;
    reading.Update();
    readingid = reading["readingid"].Value();
    isNew = true;
}

void ReadingRecord::drop() {
    if (isNew)
        readingid = {};
    isNew = false;
}
