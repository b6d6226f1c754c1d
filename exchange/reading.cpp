// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/reading.h"

#include "core/base/backup.h"
#include "core/base/failure.h"
#include "core/base/gblGlobal.h"
#include "core/base/shell.h"
#include "exchange/fewlines.h"
#include "exchange/openelsewhere.h"
#include "platform/desktop/loginname.h"
#include "platform/forms/clock.h"
#include "platform/forms/msgbox.h"

using namespace Qt::StringLiterals;

namespace {

ReadingRun newRun() {
    return {forms::nowHook(), desktop::loginName()};
}

/// Reads by `read`, which returns the titles of the bad ones; all of them are bad without a copy.
Reading readAfterCopy(SurveyReader& reader, const std::vector<ReturnedFile>& files,
                      const std::function<QStringList()>& read) {
    const bool isCopied = guardedWithDescription([] {
        reconnect();
        backUpBeforeLoss();
    });
    if (!isCopied) {
        QStringList titles;
        for (const ReturnedFile& file : files)
            titles << file.title();
        return {.bad = titles, .remarks = {}, .reasons = {}, .hasStoreFailed = true};
    }
    reader.onFailure = showWithDescription;
    reader.onStored = [](const SurveyReader::Questionnaires& stored) {
        Q_EMIT ReadReport::instance().answersStored(stored);
    };
    const QStringList bad = read();
    const qsizetype complete = files.size() - bad.size();
    QString done = complete == 1 && files.size() == 1 ? files.front().title() : counted(complete, u"file"_s);
    done += u" read"_s;
    if (!bad.isEmpty())
        done += u", %1 not to the end"_s.arg(bad.size());
    showDone(done);
    return {bad, reader.remarks(), reader.reasons(), reader.hasWritten(), reader.hasStoreFailed()};
}

} // namespace

Reading readSurveyFile(const ReturnedFile& file, std::optional<bool> statusBefore) {
    SurveyReader reader(newRun());
    return readAfterCopy(reader, {file}, [&] {
        return reader.read(file, statusBefore) ? QStringList() : QStringList(file.title());
    });
}

Reading readSurveyFiles(const std::vector<ReturnedFile>& files,
                        const std::function<bool(const QString& title, qsizetype left)>& onFile) {
    SurveyReader reader(newRun());
    reader.onFile = onFile;
    return readAfterCopy(reader, files, [&] { return reader.readAll(files); });
}

std::map<QString, QString>
readChosenFiles(const std::vector<ReturnedFile>& chosen,
                const std::function<bool(const QString& title, qsizetype left)>& onFile) {
    std::vector<ReturnedFile> files;
    QStringList bad;
    std::map<QString, QString> reasons;
    for (const ReturnedFile& file : chosen) {
        if (mayUseFile(file.path)) {
            files.push_back(file);
        } else {
            bad << file.title();
            reasons[file.path] = u"Open in another program, not read"_s;
        }
    }
    const Reading reading = readSurveyFiles(files, onFile);
    // The failure of a single file has named it, unless it was the store's.
    nameAfterReading(chosen.size() > 1 || reading.hasStoreFailed ? bad + reading.bad : QStringList(),
                     reading.remarks);
    reasons.insert(reading.reasons.begin(), reading.reasons.end());
    return reasons;
}

ReadReport& ReadReport::instance() {
    static ReadReport report;
    return report;
}

void nameAfterReading(const QStringList& bad, const QStringList& remarks) {
    QStringList paragraphs;
    const auto name = [&](const QString& head, const QStringList& list) {
        if (!list.isEmpty())
            paragraphs << head + u"\r\n" + fewOf(list);
    };
    name(u"Not read to the end:"_s, bad);
    name(u"Read as it stands, but worth a look:"_s, remarks);
    if (!paragraphs.isEmpty())
        forms::msgBox(paragraphs.join(u"\r\n\r\n"_s), forms::style::information);
}
