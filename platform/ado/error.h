// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <exception>
#include <vector>

namespace ado {

/// Numbers of the failures that this layer itself finds; the store's own carry SQLite's result code (1..101).
namespace number {
inline constexpr int overflow = 6;           ///< a whole number does not fit its column
inline constexpr int typeMismatch = 13;      ///< a text is no number, date or yes/no
inline constexpr int noCurrentRecord = 3021; ///< a field is used before the first or after the last record
inline constexpr int itemNotFound = 3265;    ///< no column of that name
inline constexpr int objectClosed = 3704;    ///< the connection or recordset is not open
inline constexpr int syntax = -3100;         ///< a text or date literal is unclosed or invalid
inline constexpr int afterEnd = -3142;       ///< more than one statement in one text
inline constexpr int notWritable = -3251;    ///< writing a read-only recordset or a query of several tables
inline constexpr int password = -1905;       ///< the password is not the file's
inline constexpr int dataSource = -1907;     ///< the data source is not registered or its file is missing
} // namespace number

/// One failure of the store: its number and a sentence for a person.
struct Error {
    int Number = 0;
    QString Description;
};

/// The failures of the last failing operation on a connection, oldest first.
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

/// Thrown by every operation of this layer that fails. Failures of the store are also recorded in
/// Connection::Errors; the use of a closed object is not, since it never reached the store.
class Failure : public std::exception {
public:
    explicit Failure(Error cause) : error(std::move(cause)), utf8(error.Description.toUtf8()) {}
    const Error& cause() const { return error; }
    const char* what() const noexcept override { return utf8.constData(); }

private:
    Error error;
    QByteArray utf8;
};

} // namespace ado
