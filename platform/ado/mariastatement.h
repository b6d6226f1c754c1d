// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/ado/session.h"

#include <mysql.h>

namespace ado {

class MariaSession;

/// A statement compiled by a MariaDB server. Its first step runs it and takes all its rows: a connection does
/// nothing else while rows are under way, but the program writes while it reads. Memory is bounded by the
/// result, which a recordset keeps as well; for a result of any size see takeInPieces.
class MariaStatement final : public Compiled {
public:
    /// Takes over the compiled handle.
    MariaStatement(MariaSession& owner, QString text, MYSQL_STMT* statement);
    ~MariaStatement() override;

    void bind(const QVariantList& values) override;
    bool step() override;
    QVariant column(int index) const override;
    QVariant column(int index, ColumnType type) const override;
    void takeRow(std::vector<QVariant>& row) const override;
    bool isReading() const override;
    void reset() override;
    /// Runs it once for each list of values, in one message to the server.
    void runForEach(const std::vector<const QVariantList*>& rows);
    /// The next run leaves its rows with the server, which hands over some thousands at a time.
    void takeInPieces();

private:
    enum class Kind { Whole, Real, Decimal, Date, Text };

    /// The buffer of a value that goes to the server or comes from it.
    struct Cell {
        Kind kind = Kind::Text;
        bool hasFraction = false; ///< of a Decimal
        long long whole = 0;
        double real = 0;
        MYSQL_TIME date{};
        QByteArray text;
        unsigned long length = 0; // bytes of the text
        my_bool isNull = 0;
    };

    static MYSQL_BIND bound(Cell& cell, const QVariant& value);
    static MYSQL_BIND receiving(Cell& cell, const MYSQL_FIELD& field, unsigned long size);
    void run();
    void takeRows();
    void takeCutTexts();
    [[noreturn]] void fail();

    MariaSession& session;
    MYSQL_STMT* handle;
    std::vector<Cell> parameters;
    std::vector<MYSQL_BIND> parameterBinds;
    std::vector<Cell> cells; ///< of the current row
    std::vector<MYSQL_BIND> binds;
    bool hasRun = false;
    bool isInPieces = false;
};

} // namespace ado
