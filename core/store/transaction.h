// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// A transaction on cnnMain. Left without Commit it is rolled back, so that it has ended before the failure
/// that ended it is shown: while the user reads a message the store is not locked. What the connection
/// recorded of the failure survives the rollback. Transactions do not nest.
class Transaction {
public:
    /// Begins it. Throws Failure.
    Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    ~Transaction();

    /// Throws Failure; the transaction is then rolled back when it is left.
    void Commit();

    /// Whether one is open. guarded then shows nothing and passes the failure on to the holder.
    static bool isOpen() { return current != nullptr; }

private:
    inline static const Transaction* current = nullptr;
};
