// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

namespace excel {

/// The size of a file and when it was changed; tells whether another program has written it.
struct DiskState {
    DiskState() = default; ///< of no file
    explicit DiskState(const QString& path);
    bool operator==(const DiskState&) const = default;

    QDateTime changed;
    qint64 size = -1;
};

struct FileContent {
    FileContent(QByteArray content, DiskState before = {})
        : bytes(std::move(content)), state(std::move(before)) {}
    QByteArray bytes;
    DiskState state; ///< before it was read; of no file for content in memory
};

/// The content of a file of 64 MB at most. Throws Failure when it is missing, unreadable or larger.
FileContent readContent(const QString& path);

} // namespace excel
