// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/record.h"

#include "platform/excel/bytes.h"

namespace excel::biff {

int lastOf(const Records& records, quint16 id, int depth) {
    int last = -1;
    for (size_t i = 0; i < records.size(); ++i) {
        depth += records[i].id == id::Bof;
        if (depth == 1 && records[i].id == id)
            last = int(i);
        depth -= records[i].id == id::Eof;
    }
    return last;
}

void eraseOwn(Records& records, bool (*unwanted)(const Record&), int depth) {
    std::erase_if(records, [&](const Record& record) {
        depth += record.id == id::Bof;
        const bool erase = depth == 1 && unwanted(record);
        depth -= record.id == id::Eof;
        return erase;
    });
}

void appendRecord(QByteArray& stream, const Record& record) {
    append16(stream, record.id);
    append16(stream, quint16(record.body.size()));
    stream += record.body;
}

} // namespace excel::biff
