// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

/// A survey file to be read.
struct ReturnedFile {
    ReturnedFile(QString fullPath, QString hash = {})
        : path(std::move(fullPath)), checkedHash(std::move(hash)) {}
    QString path;
    QString checkedHash; ///< of the content that was checked; a file with another one is not read. Empty: any
    QString title() const { return path.section(u'/', -1); }
};

/// SHA-256 of a file's content, hexadecimal.
QString contentHash(const QByteArray& content);
