// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/ado/quickcheck.h"

#include <QObject>
#include <QString>

#include <memory>

class QThread;

/// OnServer: not in a file.
enum class StoreState { Good, Faulty, Newer, OnServer };

/// Checks the database of the data source. If it is damaged, lacks a table or was made by a newer version,
/// shows a message that lists the copies in backup/. The program must end on Newer, since it could spoil the
/// file; on Faulty it continues. A database that is missing, locked or has another password returns Good: the
/// connection reports that. So does one without a version number.
[[nodiscard]] StoreState checkStore(const QString& databasePath);

/// Checks the database for internal damage in a background thread. Damage is reported in one message, with
/// the copies in backup/, once no transaction is open. The destructor stops the check and waits for the
/// thread.
class StoreInspection : public QObject {
public:
    explicit StoreInspection(const QString& databasePath);
    ~StoreInspection() override;

private:
    void reportDamage();

    QString path;
    ado::QuickCheck check;
    std::unique_ptr<QThread> thread;
    bool damaged = false;
};
