// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <exception>

/// Thrown by every operation of the program that fails: a number and a sentence for a person.
class Failure : public std::exception {
public:
    // Numbers of failures that no engine numbers.
    static constexpr int unnumbered = 5;
    static constexpr int overflow = 6; ///< a number does not fit its place
    static constexpr int subscriptOutOfRange = 9;
    static constexpr int typeMismatch = 13; ///< a text is no number, date or yes/no
    static constexpr int fileAccess = 75;

    explicit Failure(const QString& text) : Failure(unnumbered, text) {}
    Failure(int number, const QString& text);

    int number() const { return code; }
    /// A sentence for a person.
    const QString& text() const { return sentence; }
    const char* what() const noexcept override { return utf8.constData(); }

    /// The failures "Overflow" and "Subscript out of range".
    static Failure ofOverflow();
    static Failure ofSubscript();

private:
    int code;
    QString sentence;
    QByteArray utf8;
};
