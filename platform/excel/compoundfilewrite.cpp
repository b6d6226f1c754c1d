// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/bytes.h"
#include "platform/excel/compoundfile.h"

namespace excel::biff {

using namespace container;

namespace {

constexpr int sectorSize = 512;
constexpr int numbersPerSector = sectorSize / 4;

int sectorsFor(qsizetype bytes, int size) {
    return int((bytes + size - 1) / size);
}

/// Content in whole sectors together with the allocation table that chains them.
struct Sectors {
    int size;
    QByteArray content;
    std::vector<quint32> table;

    quint32 add(const QByteArray& data) {
        const int count = sectorsFor(data.size(), size);
        if (count == 0)
            return endOfChain;
        const auto first = quint32(table.size());
        for (int i = 1; i <= count; ++i)
            table.push_back(i < count ? first + quint32(i) : endOfChain);
        content += data;
        content.append(qsizetype(count) * size - data.size(), '\0');
        return first;
    }
};

QByteArray tableBytes(const std::vector<quint32>& numbers) {
    QByteArray bytes;
    for (const quint32 number : numbers)
        append32(bytes, number);
    while (bytes.size() % sectorSize != 0)
        append32(bytes, freeSector);
    return bytes;
}

/// The directory with the new places of the streams, filled up with unused entries.
QByteArray placeStreams(const std::vector<CompoundFile::Entry>& entries, Sectors& sectors, Sectors& mini) {
    QByteArray directory;
    for (const CompoundFile::Entry& entry : entries) {
        QByteArray raw = entry.raw;
        if (entry.type() == CompoundFile::Stream) {
            put32(raw, 116, (entry.data.size() < miniStreamCutoff ? mini : sectors).add(entry.data));
            put64(raw, 120, quint64(entry.data.size()));
        }
        directory += raw;
    }
    put32(directory, 116, sectors.add(mini.content));
    put64(directory, 120, quint64(mini.content.size()));

    QByteArray unused(entrySize, '\0');
    for (const int link : {68, 72, 76})
        put32(unused, link, noEntry);
    while (directory.size() % sectorSize != 0)
        directory += unused;
    return directory;
}

struct Header {
    quint32 directory = endOfChain;
    quint32 miniFat = endOfChain;
    quint32 miniFatCount = 0;
    quint32 firstFat = 0;
    quint32 fatCount = 0;
    quint32 difatCount = 0;

    quint32 firstDifat() const { return difatCount == 0 ? endOfChain : firstFat + fatCount; }
    QByteArray bytes() const;
};

QByteArray Header::bytes() const {
    QByteArray header(sectorSize, '\0');
    header.replace(0, 8, QByteArrayView(signature, 8));
    put16(header, 24, 0x003E);
    put16(header, 26, 3);
    put16(header, 28, 0xFFFE);
    put16(header, 30, 9);
    put16(header, 32, 6);
    put32(header, 44, fatCount);
    put32(header, 48, directory);
    put32(header, 56, miniStreamCutoff);
    put32(header, 60, miniFat);
    put32(header, 64, miniFatCount);
    put32(header, 68, firstDifat());
    put32(header, 72, difatCount);
    for (quint32 i = 0; i < headerFatSectors; ++i)
        put32(header, 76 + 4 * i, i < fatCount ? firstFat + i : freeSector);
    return header;
}

/// Appends the allocation table itself; it has entries for its own sectors too, so their number is found
/// by repeating until it no longer grows.
void appendFat(Sectors& sectors, Header& header) {
    const auto data = quint32(sectors.table.size());
    quint32 fat = 0;
    quint32 difat = 0;
    for (quint32 before = 1; before != fat + difat;) {
        before = fat + difat;
        fat = (data + fat + difat + numbersPerSector - 1) / numbersPerSector;
        difat = fat <= headerFatSectors
                    ? 0
                    : (fat - headerFatSectors + numbersPerSector - 2) / (numbersPerSector - 1);
    }
    header.firstFat = data;
    header.fatCount = fat;
    header.difatCount = difat;
    sectors.table.insert(sectors.table.end(), fat, fatSector);
    sectors.table.insert(sectors.table.end(), difat, difatSector);
    sectors.content += tableBytes(sectors.table);

    for (quint32 i = 0; i < difat; ++i) {
        std::vector<quint32> numbers;
        for (quint32 n = 0; n + 1 < numbersPerSector; ++n) {
            const quint32 index = headerFatSectors + i * (numbersPerSector - 1) + n;
            numbers.push_back(index < fat ? header.firstFat + index : freeSector);
        }
        numbers.push_back(i + 1 < difat ? header.firstDifat() + i + 1 : endOfChain);
        sectors.content += tableBytes(numbers);
    }
}

} // namespace

QByteArray CompoundFile::serialize() const {
    Sectors sectors{sectorSize, {}, {}};
    Sectors mini{miniSectorSize, {}, {}};
    const QByteArray entryBytes = placeStreams(directory, sectors, mini);
    Header header;
    const QByteArray miniFat = tableBytes(mini.table);
    header.miniFat = sectors.add(miniFat);
    header.miniFatCount = quint32(sectorsFor(miniFat.size(), sectorSize));
    header.directory = sectors.add(entryBytes);
    appendFat(sectors, header);
    return header.bytes() + sectors.content;
}

} // namespace excel::biff
