// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <exception>

namespace excel {

/// The one failure of this library. The text is a whole sentence for a person that names the file and what is
/// wrong with it or with the request.
class Error : public std::exception {
public:
    explicit Error(const QString& text) : sentence(text), utf8(text.toUtf8()) {}
    const QString& text() const { return sentence; }
    const char* what() const noexcept override { return utf8.constData(); }

private:
    QString sentence;
    QByteArray utf8;
};

} // namespace excel
