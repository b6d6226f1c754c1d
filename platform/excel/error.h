// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <exception>

namespace excel {

// The one failure of this library. The text is a whole sentence for a person; it names the file and says
// what is wrong with it or with the request.
class Error : public std::exception {
public:
    explicit Error(const QString& text) : text_(text), utf8_(text.toUtf8()) {}
    const QString& text() const { return text_; }
    const char* what() const noexcept override { return utf8_.constData(); }

private:
    QString text_;
    QByteArray utf8_;
};

} // namespace excel
