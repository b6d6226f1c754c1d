// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/ado/quickcheck.h"

#include <QObject>
#include <QString>

#include <memory>

class QThread;

enum class StoreState { Good, Faulty, Newer };

/// Tells the user when the database that the data source points to is damaged, lacks a table or was made by a
/// newer version, and which copies in backup/ there are. The program ends with a newer one only: working on
/// it could spoil it. With a faulty one it lives on, as it does with a database that is missing, locked or of
/// another password, which the connection tells: these count as good here, as does one without a version.
[[nodiscard]] StoreState checkStore(const QString& databasePath);

/// Looks for damage inside the database in a thread, beside the user's work; damage is told in one message
/// with the copies in backup/, when no transaction is open. Ends with the object, which waits for its thread.
class StoreInspection : public QObject {
public:
    explicit StoreInspection(const QString& databasePath);
    ~StoreInspection() override;

private:
    void tell();

    QString path;
    ado::QuickCheck check;
    std::unique_ptr<QThread> thread;
    bool damaged = false;
};
