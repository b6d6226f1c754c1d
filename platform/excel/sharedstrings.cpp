// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/sharedstrings.h"

#include "platform/excel/bytes.h"
#include "platform/excel/refusal.h"
#include "platform/excel/text.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace excel::biff {

SharedStrings::SharedStrings(const Records& globals) {
    const int at = lastOf(globals, id::SharedStrings);
    if (at < 0) {
        chunks.emplace_back(8, '\0');
        return;
    }
    chunks.push_back(globals[size_t(at)].body);
    for (size_t next = size_t(at) + 1; next < globals.size() && globals[next].id == id::Continue; ++next)
        chunks.push_back(globals[next].body);

    if (chunks[0].size() < lastEnd)
        chunks[0].resize(lastEnd, '\0');
    readTexts(get32(chunks[0], 4));
}

/// Some programs count more texts than they write; a cell that refers to a missing one is refused.
void SharedStrings::readTexts(quint32 counted) {
    ChunkReader reader(chunks);
    reader.skip(quint64(lastEnd));
    try {
        for (quint32 i = 0; i < counted; ++i) {
            bool plain = false;
            texts.push_back(reader.richText(&plain));
            if (plain && !plainIndex.contains(texts.back()))
                plainIndex.insert(texts.back(), i);
            lastChunk = reader.chunk();
            lastEnd = reader.offset();
        }
    } catch (const Refusal&) {
        return; // a text is cut off or missing
    }
}

const QString& SharedStrings::text(quint32 index) const {
    if (index >= texts.size())
        damaged(u"a cell refers to text %1 of %2"_s.arg(index).arg(texts.size()));
    return texts[index];
}

quint32 SharedStrings::intern(const QString& text) {
    const auto known = plainIndex.constFind(text);
    const quint32 index = known != plainIndex.constEnd() ? *known : count();
    put32(chunks[0], 0, get32(chunks[0], 0) + 1);
    if (index == count()) {
        append(text);
        plainIndex.insert(text, index);
        texts.push_back(text);
        put32(chunks[0], 4, count());
    }
    return index;
}

void SharedStrings::append(const QString& text) {
    const bool wide = !isLatin1(text);
    const int width = wide ? 2 : 1;
    // Bytes after the last counted text belong to no text.
    chunks.resize(lastChunk + 1);
    chunks.back().truncate(lastEnd);
    // The count, the flags and the first character must be in one record.
    if (chunks.back().size() + 3 + width > maxRecordBody)
        chunks.emplace_back();
    append16(chunks.back(), quint16(text.size()));
    append8(chunks.back(), wide ? 1 : 0);
    for (QStringView rest = text; !rest.isEmpty();) {
        const qsizetype room = (maxRecordBody - chunks.back().size()) / width;
        if (room == 0) {
            chunks.emplace_back();
            append8(chunks.back(), wide ? 1 : 0);
            continue;
        }
        const qsizetype fit = std::min(room, rest.size());
        appendCharacters(chunks.back(), rest.first(fit), wide);
        rest = rest.sliced(fit);
    }
    lastChunk = chunks.size() - 1;
    lastEnd = chunks.back().size();
}

void SharedStrings::writeInto(Records& globals) const {
    std::erase_if(globals, [](const Record& r) { return r.id == id::ExtendedSst; });
    const int old = lastOf(globals, id::SharedStrings);
    if (old < 0 && texts.empty())
        return;
    auto at = std::find_if(globals.begin(), globals.end() - 1,
                           [](const Record& r) { return r.id == id::BookExtension || r.id == id::Theme; });
    if (old >= 0) {
        const auto first = globals.begin() + old;
        at = globals.erase(first, std::find_if(first + 1, globals.end(),
                                               [](const Record& r) { return r.id != id::Continue; }));
    }
    Records table;
    for (const QByteArray& chunk : chunks)
        table.push_back({table.empty() ? id::SharedStrings : id::Continue, chunk});
    globals.insert(at, table.begin(), table.end());
}

} // namespace excel::biff
