// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/storerestore.h"

#include "core/base/backup.h"
#include "core/base/gblGlobal.h"
#include "core/store/openstore.h"
#include "platform/ado/quickcheck.h"
#include "platform/ado/restore.h"
#include "platform/ado/store.h"
#include "platform/forms/clock.h"

#include <QDir>

#include <filesystem>
#include <system_error>

using namespace Qt::StringLiterals;

namespace {

QDateTime dateOf(const QFileInfo& copy) {
    constexpr qsizetype prefix = 10; // "Tallywell-"
    constexpr qsizetype length = 17;
    const QDateTime named =
        QDateTime::fromString(copy.fileName().mid(prefix, length), u"yyyy-MM-dd-HHmmss"_s);
    return named.isValid() ? named : copy.lastModified();
}

/// A file beside the store that only its owner can read, removed at the end of the scope: the copy before a
/// loss may displace the oldest one. As a link it takes no time and no room; only a copy can become the
/// store.
class Staged {
public:
    enum As { Link, Copy };

    Staged(const QString& from, As wanted) : path(strDatabasePath + u".restore") {
        QFile::remove(path);
        std::error_code fault; // the file system may have no links
        if (wanted == Link)
            std::filesystem::create_hard_link(from.toStdU16String(), path.toStdU16String(), fault);
        if (((wanted == Copy || fault) && !QFile::copy(from, path)) ||
            !QFile::setPermissions(path, QFileDevice::ReadOwner | QFileDevice::WriteOwner))
            throw Refusal(u"'%1' cannot be copied. Nothing has been changed."_s.arg(from));
    }
    Staged(const Staged&) = delete;
    Staged& operator=(const Staged&) = delete;
    ~Staged() { QFile::remove(path); }

    const QString path;
};

} // namespace

std::vector<StoreCopy> findStoreCopies() {
    std::vector<StoreCopy> copies;
    for (const QString& path : listBackups(strDatabasePath)) {
        const QFileInfo file(path);
        copies.push_back({path, dateOf(file), file.size()});
    }
    return copies;
}

CopyFault checkCopy(const QString& path, const ado::Step& step) {
    ado::QuickCheck check(path, ado::QuickCheck::Depth::Full);
    if (check.findsDamage(step))
        return {u"damaged"_s};
    if (check.isStopped())
        return {{}, true};
    try {
        ado::Connection copy;
        copy.OpenReadOnly(path, storePassword());
        if (copy.SchemaVersion() > storeVersion)
            return {u"of a newer version"_s};
        if (!copy.Tables().contains(u"customer"_s))
            return {u"no store"_s};
    } catch (const Failure&) {
        return {u"cannot be read"_s};
    }
    return {};
}

bool isPresentDamaged(const ado::Step& step) {
    return ado::QuickCheck(strDatabasePath).findsDamage(step);
}

int countErasedSince(const QDateTime& moment) {
    if (!cnnMain || cnnMain->State() != ado::StateOpen)
        return 0;
    try {
        if (!cnnMain->Tables().contains(u"protocol"_s))
            return 0;
        return ado::Recordset(
                   u"select count(*) from protocol where what like 'Respondent%' and happened>'"_s +
                       moment.toString(Qt::ISODate) + u'\'',
                   *cnnMain)
            .FieldAt(0)
            .Value()
            .toInt();
    } catch (const Failure&) {
        cnnMain->Errors().Clear(); // the store is damaged, which is the reason to go back
        return 0;
    }
}

bool restoreCopy(const QString& path, const ado::Step& step) {
    const Staged staged(path, Staged::Link);
    if (!copyStore(*cnnMain, strDatabasePath, [&](const QString&) { return step(); }))
        return false;
    cnnMain->Close();
    try {
        return ado::restoreStore(strDatabasePath, staged.path, step);
    } catch (const Failure& failure) {
        throw Refusal(failure.text());
    }
}

QString replaceDamagedStore(const QString& path) {
    const Staged staged(path, Staged::Copy);
    if (cnnMain)
        cnnMain->Close();
    QString kept = QFileInfo(path).absoluteDir().filePath(
        forms::nowHook().toString(u"'damaged-'yyyy-MM-dd-HHmmss'.mdb'"_s));
    const QString journal = u"-journal"_s;
    if (!QFile::rename(strDatabasePath, kept) || (QFile::exists(strDatabasePath + journal) &&
                                                  !QFile::rename(strDatabasePath + journal, kept + journal)))
        throw Refusal(u"'%1' cannot be moved."_s.arg(strDatabasePath));
    if (!QFile::rename(staged.path, strDatabasePath))
        throw Refusal(u"'%1' cannot be written. The store is now '%2'."_s.arg(strDatabasePath, kept));
    return kept;
}
