// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

#include <memory>

struct zip;

namespace excel {

/// A zip file of named parts, read in memory. Every limit is checked before memory is taken for what it
/// limits. All functions throw biff::Refusal.
class ZipPackage {
public:
    static constexpr qsizetype maxFileSize = qsizetype(8) * 1024 * 1024;
    static constexpr qsizetype maxPartSize = qsizetype(32) * 1024 * 1024;
    static constexpr qsizetype maxReadSize =
        qsizetype(64) * 1024 * 1024; ///< all parts that are read, together
    static constexpr int maxEntries = 1000;

    /// True when the bytes begin like a zip file.
    static bool isZip(const QByteArray& content);

    /// Refuses a zip file that is damaged, too large or has too many entries.
    explicit ZipPackage(const QByteArray& content);

    bool has(const QString& part) const { return find(part) >= 0; }
    /// A part's content, unpacked; refused when it is missing, encrypted, damaged or too large.
    QByteArray read(const QString& part);

private:
    struct Closer {
        void operator()(zip* open) const;
    };
    qint64 find(const QString& part) const;

    QByteArray bytes; // the archive reads from them
    std::unique_ptr<zip, Closer> archive;
    qsizetype readSize = 0;
};

} // namespace excel
