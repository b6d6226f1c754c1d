// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/failure/failure.h"

#include <vector>

namespace ado {

/// Numbers of the failures that this layer itself finds; the store's own carry SQLite's result code (1..101).
namespace number {
inline constexpr int noCurrentRecord = 3021; ///< a field is used before the first or after the last record
inline constexpr int itemNotFound = 3265;    ///< no column of that name
inline constexpr int objectClosed = 3704;    ///< the connection or recordset is not open
inline constexpr int syntax = -3100;         ///< a text or date literal is unclosed or invalid
inline constexpr int afterEnd = -3142;       ///< more than one statement in one text
inline constexpr int notWritable = -3251;    ///< writing a read-only recordset or a query of several tables
inline constexpr int onServer = -3270;       ///< only a database in a file does this
inline constexpr int password = -1905;       ///< the password is not the file's
inline constexpr int dataSource = -1907;     ///< the data source is not registered or its file is missing
} // namespace number

/// One failure of the store: its number and a sentence for a person.
struct Error {
    int Number = 0;
    QString Description;
};

/// The failures of the last failing operation on a connection, oldest first: those of the store. The use of a
/// closed object is thrown only, since it never reached the store.
class ErrorList {
public:
    int Count() const { return static_cast<int>(list.size()); }
    const Error& Item(int index) const { return list.at(static_cast<std::size_t>(index)); }
    auto begin() const { return list.begin(); }
    auto end() const { return list.end(); }
    void Add(Error error) { list.push_back(std::move(error)); }
    void Clear() { list.clear(); }

private:
    std::vector<Error> list;
};

} // namespace ado
