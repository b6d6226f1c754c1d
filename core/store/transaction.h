// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// A transaction on cnnMain. The destructor rolls back unless Commit has succeeded, so the store is not
/// locked while the user reads the error message. The connection's recorded errors survive the rollback.
/// Transactions do not nest.
class Transaction {
public:
    enum class Scope { Store, WorkTables };

    /// Begins the transaction. One that writes to work tables only locks nothing. Throws Failure.
    explicit Transaction(Scope scope = Scope::Store);
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    ~Transaction();

    /// Throws Failure; the destructor then rolls back.
    void Commit();

    /// Whether a transaction is open. `guarded` then rethrows failures instead of showing them.
    static bool isOpen() { return current != nullptr; }

private:
    inline static const Transaction* current = nullptr;
};
