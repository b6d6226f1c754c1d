// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/storecheck.h"

#include "core/base/backup.h"
#include "core/base/gblGlobal.h"
#include "core/store/openstore.h"
#include "platform/forms/msgbox.h"

#include <QThread>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

/// Result codes of the store for a file that it cannot read as a database.
constexpr int formatError = 1;
constexpr int damaged = 11;
constexpr int noDatabase = 26;

/// The tables and saved queries that statements and reports name.
constexpr const char16_t* neededTables[] = {u"customer",
                                            u"respondent",
                                            u"parameter",
                                            u"questions",
                                            u"survey",
                                            u"responquesindex",
                                            u"feedbackobjective",
                                            u"feedbackdescriptive",
                                            u"log",
                                            u"actionplan",
                                            u"standardmessage",
                                            u"setting",
                                            u"reportlinktable",
                                            u"report",
                                            u"reporttable",
                                            u"linetable",
                                            u"surveydateorder",
                                            u"scattertable",
                                            u"search",
                                            u"copydetails",
                                            u"mscharttry",
                                            u"custresp",
                                            u"param",
                                            u"responquery",
                                            u"existingsurvey",
                                            u"objquery",
                                            u"descquery",
                                            u"scatterqry",
                                            u"scatter",
                                            u"action"};

QStringList missingTables(ado::Connection& store) {
    const QStringList present = store.Tables();
    QStringList missing;
    for (const char16_t* name : neededTables) {
        if (!present.contains(QStringView(name)))
            missing << QString::fromUtf16(name);
    }
    return missing;
}

bool isNewer(ado::Connection& store) {
    return store.SchemaVersion() > storeVersion;
}

struct Finding {
    StoreState state = StoreState::Good;
    QString fault; ///< completes the sentence "The file 'x' ..."
};

Finding findFault() {
    ado::Connection store;
    store.ConnectionString = connectionText();
    try {
        store.Open();
        if (isNewer(store))
            return {StoreState::Newer,
                    u"was made by a newer version of this program and needs that version."_s};
        const QStringList missing = missingTables(store);
        if (!missing.isEmpty())
            return {StoreState::Faulty,
                    u"is no complete database of this program. It lacks: "_s + missing.join(u", "_s) + u'.'};
    } catch (const Failure& failure) {
        const int number = failure.number();
        if (number == formatError || number == damaged || number == noDatabase)
            return {StoreState::Faulty, u"is damaged or no database."_s};
    }
    return {};
}

void reportFault(const QString& databasePath, const QString& fault) {
    QString text = u"The file '"_s + databasePath + u"' " + fault;
    const QStringList copies = listBackups(databasePath);
    if (!copies.isEmpty())
        text += u"\r\n\r\nTo go back to a copy of it, put one of these in its place, the newest first:\r\n" +
                copies.join(u"\r\n"_s);
    forms::msgBox(text, forms::style::critical);
}

} // namespace

StoreState checkStore(const QString& databasePath) {
    const Finding found = findFault();
    if (found.state != StoreState::Good)
        reportFault(databasePath, found.fault);
    return found.state;
}

StoreInspection::StoreInspection(const QString& databasePath)
    : path(databasePath), check(databasePath),
      thread(QThread::create([this] { damaged = check.findsDamage(); })) {
    connect(thread.get(), &QThread::finished, this, [this] {
        if (damaged)
            reportDamage();
    });
    thread->start(QThread::LowPriority);
}

StoreInspection::~StoreInspection() {
    check.stop();
    thread->wait();
}

void StoreInspection::reportDamage() {
    constexpr int retryDelay = 200; // milliseconds
    if (cnnMain && cnnMain->InTransaction())
        QTimer::singleShot(retryDelay, this, &StoreInspection::reportDamage);
    else
        reportFault(path, u"is damaged inside: what is saved now can be lost."_s);
}
