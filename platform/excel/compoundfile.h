// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <vector>

namespace excel::biff {

/// The container of an .xls file: a small file system of storages (folders) and streams (files). The
/// directory is kept entry for entry as read (order, names, tree links, class ids, times), so saving changes
/// only the positions of the streams.
class CompoundFile {
public:
    static constexpr qsizetype maxFileSize = 64 * 1024 * 1024;
    static constexpr int maxEntries = 4096;

    enum EntryType : quint8 { Unused = 0, Storage = 1, Stream = 2, Root = 5 };

    struct Entry {
        QByteArray raw; ///< the 128 bytes of the directory
        QByteArray data;
        QString name() const;
        quint8 type() const;
    };

    /// True when the bytes begin with the signature of a compound file.
    static bool isCompoundFile(const QByteArray& file);
    /// Reads the directory and every stream; throws Refusal when any of them is damaged, since a stream that
    /// cannot be read could not be saved.
    static CompoundFile parse(const QByteArray& file);
    /// A new file image of 512-byte sectors.
    QByteArray serialize() const;

    /// The stream of that name (in any case) directly below the root; -1 when there is none.
    int findStream(QStringView name) const;
    const QByteArray& data(int entry) const { return directory[size_t(entry)].data; }
    void setData(int entry, const QByteArray& data) { directory[size_t(entry)].data = data; }
    const std::vector<Entry>& entries() const { return directory; }

private:
    std::vector<Entry> directory;
    std::vector<int> rootChildren;
    friend class ContainerReader;
};

/// Special sector numbers and header constants of the container.
namespace container {
constexpr quint32 freeSector = 0xFFFFFFFF;
constexpr quint32 endOfChain = 0xFFFFFFFE;
constexpr quint32 fatSector = 0xFFFFFFFD;
constexpr quint32 difatSector = 0xFFFFFFFC;
constexpr quint32 noEntry = 0xFFFFFFFF;
constexpr int entrySize = 128;
constexpr int miniSectorSize = 64;
constexpr int miniStreamCutoff = 4096; ///< bytes; smaller streams are in the mini stream
constexpr int headerFatSectors = 109;
constexpr char signature[] = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1";
} // namespace container

} // namespace excel::biff
