// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/bytes.h"
#include "platform/excel/compoundfile.h"
#include "platform/excel/refusal.h"

#include <limits>
#include <memory>

using namespace Qt::StringLiterals;

namespace excel::biff {

using namespace container;

QString CompoundFile::Entry::name() const {
    const int bytes = get16(raw, 64);
    QString name;
    for (int at = 0; at + 2 < bytes; at += 2)
        name += QChar(get16(raw, at));
    return name;
}

quint8 CompoundFile::Entry::type() const {
    return get8(raw, 66);
}

bool CompoundFile::isCompoundFile(const QByteArray& file) {
    return file.startsWith(QByteArrayView(signature, 8));
}

int CompoundFile::findStream(QStringView name) const {
    for (const int entry : rootChildren) {
        const Entry& candidate = directory[size_t(entry)];
        if (candidate.type() == Stream && candidate.name().compare(name, Qt::CaseInsensitive) == 0)
            return entry;
    }
    return -1;
}

/// Chains of one allocation table over one run of sectors. A sector belongs to one chain only: that ends
/// loops and keeps the sum of all chains below the size of the file.
class SectorChains {
public:
    SectorChains(QByteArrayView content, int size)
        : bytes(content), sectorSize(size), used(size_t(content.size() / size)) {}

    std::vector<quint32> table;

    QByteArrayView claim(quint32 sector) {
        if (sector >= used.size() || used[sector])
            damaged(u"sector %1 is outside the file or used twice"_s.arg(sector));
        used[sector] = true;
        return bytes.sliced(qsizetype(sector) * sectorSize, sectorSize);
    }

    /// Up to the end of the chain or, where a stream's size is known, only the sectors for that size.
    QByteArray chain(quint32 start, quint64 size = std::numeric_limits<quint64>::max()) {
        QByteArray content;
        for (quint32 sector = start; sector != endOfChain && quint64(content.size()) < size;
             sector = table[sector]) {
            content.append(claim(sector));
            if (sector >= table.size())
                damaged(u"sector %1 has no entry in the allocation table"_s.arg(sector));
        }
        return content;
    }

    void appendTable(QByteArrayView sector) {
        for (qsizetype at = 0; at + 4 <= sector.size(); at += 4)
            table.push_back(get32(sector, at));
    }

private:
    QByteArrayView bytes;
    int sectorSize;
    std::vector<bool> used;
};

class ContainerReader {
public:
    explicit ContainerReader(const QByteArray& file);
    CompoundFile read();

private:
    void readFat();
    void readDirectory();
    void readStreams();
    void walkTree();
    void checkEntry(const CompoundFile::Entry& entry) const;

    QByteArray image; // padded with zeros to whole sectors
    int sectorSize = 512;
    bool version4 = false;
    std::unique_ptr<SectorChains> sectors;
    CompoundFile result;
};

ContainerReader::ContainerReader(const QByteArray& file) : image(file) {
    if (file.size() < 512 || !CompoundFile::isCompoundFile(file))
        damaged(u"the header of the file is incomplete"_s);
    if (file.size() > CompoundFile::maxFileSize)
        throw Refusal(u"is larger than 64 MB"_s);
    const int version = get16(file, 26);
    const int shift = get16(file, 30);
    if (!(version == 3 && shift == 9) && !(version == 4 && shift == 12))
        damaged(u"the sector size is unknown"_s);
    if (get16(file, 28) != 0xFFFE || get16(file, 32) != 6 || get32(file, 56) != miniStreamCutoff)
        damaged(u"the header of the file is unknown"_s);
    version4 = version == 4;
    sectorSize = 1 << shift;
    image.append((sectorSize - image.size() % sectorSize) % sectorSize, '\0');
    sectors = std::make_unique<SectorChains>(QByteArrayView(image).sliced(sectorSize), sectorSize);
}

CompoundFile ContainerReader::read() {
    readFat();
    readDirectory();
    walkTree();
    readStreams();
    return std::move(result);
}

void ContainerReader::readFat() {
    quint32 wanted = get32(image, 44);
    for (int i = 0; i < headerFatSectors && wanted > 0; ++i, --wanted)
        sectors->appendTable(sectors->claim(get32(image, 76 + 4 * i)));
    quint32 next = get32(image, 68);
    while (wanted > 0) {
        const QByteArrayView difat = sectors->claim(next);
        for (int at = 0; at + 4 < sectorSize && wanted > 0; at += 4, --wanted)
            sectors->appendTable(sectors->claim(get32(difat, at)));
        next = get32(difat, sectorSize - 4);
    }
}

void ContainerReader::checkEntry(const CompoundFile::Entry& entry) const {
    const int nameBytes = get16(entry.raw, 64);
    if (nameBytes < 2 || nameBytes > 64 || nameBytes % 2 != 0)
        damaged(u"a name in the directory is broken"_s);
    const int type = entry.type();
    if (type != CompoundFile::Storage && type != CompoundFile::Stream && type != CompoundFile::Root)
        damaged(u"an entry of the directory is of unknown type"_s);
}

void ContainerReader::readDirectory() {
    const QByteArray entries = sectors->chain(get32(image, 48));
    if (entries.isEmpty() || entries.size() / entrySize > CompoundFile::maxEntries)
        damaged(u"the directory is missing or too long"_s);
    for (qsizetype at = 0; at < entries.size(); at += entrySize) {
        CompoundFile::Entry entry{entries.mid(at, entrySize), {}};
        if (entry.type() != CompoundFile::Unused)
            checkEntry(entry);
        if ((entry.type() == CompoundFile::Root) != (at == 0))
            damaged(u"the root of the directory is not its first entry"_s);
        result.directory.push_back(entry);
    }
}

void ContainerReader::walkTree() {
    std::vector<bool> visited(result.directory.size());
    std::vector<std::pair<quint32, bool>> open{{get32(result.directory[0].raw, 76), true}};
    while (!open.empty()) {
        const auto [index, belowRoot] = open.back();
        open.pop_back();
        if (index == noEntry)
            continue;
        if (index == 0 || index >= visited.size() || visited[index])
            damaged(u"the directory's tree is broken"_s);
        visited[index] = true;
        const CompoundFile::Entry& entry = result.directory[index];
        if (entry.type() == CompoundFile::Unused)
            damaged(u"the directory's tree leads to an unused entry"_s);
        if (belowRoot)
            result.rootChildren.push_back(int(index));
        open.emplace_back(get32(entry.raw, 72), belowRoot);
        open.emplace_back(get32(entry.raw, 68), belowRoot);
        if (entry.type() == CompoundFile::Storage)
            open.emplace_back(get32(entry.raw, 76), false);
    }
}

void ContainerReader::readStreams() {
    const QByteArray& root = result.directory[0].raw;
    const QByteArray miniStream =
        get32(root, 120) == 0 ? QByteArray() : sectors->chain(get32(root, 116), get32(root, 120));
    if (miniStream.size() < qsizetype(get32(root, 120)))
        damaged(u"the mini stream is cut off"_s);
    SectorChains mini(miniStream, miniSectorSize);
    if (get32(image, 64) > 0)
        mini.appendTable(sectors->chain(get32(image, 60)));

    for (CompoundFile::Entry& entry : result.directory) {
        if (entry.type() != CompoundFile::Stream)
            continue;
        const quint64 size = version4 ? get64(entry.raw, 120) : get32(entry.raw, 120);
        if (size == 0)
            continue;
        SectorChains& chains = size < miniStreamCutoff ? mini : *sectors;
        entry.data = chains.chain(get32(entry.raw, 116), size);
        if (size > quint64(entry.data.size()))
            damaged(u"the stream \"%1\" is cut off"_s.arg(entry.name()));
        entry.data.truncate(qsizetype(size));
    }
}

CompoundFile CompoundFile::parse(const QByteArray& file) {
    return ContainerReader(file).read();
}

} // namespace excel::biff
