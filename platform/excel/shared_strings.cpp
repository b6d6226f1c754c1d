// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/shared_strings.h"

#include "platform/excel/bytes.h"
#include "platform/excel/refusal.h"
#include "platform/excel/text.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace excel::biff {

SharedStrings::SharedStrings(const Records& globals) {
    const int at = lastOf(globals, id::SharedStrings);
    if (at < 0) {
        chunks_.emplace_back(8, '\0');
        return;
    }
    chunks_.push_back(globals[size_t(at)].body);
    for (size_t next = size_t(at) + 1; next < globals.size() && globals[next].id == id::Continue; ++next)
        chunks_.push_back(globals[next].body);

    if (chunks_[0].size() < lastEnd_)
        chunks_[0].resize(lastEnd_, '\0');
    readTexts(get32(chunks_[0], 4));
}

// Some programs count more texts than they write; a cell that refers to one that is not there is refused.
void SharedStrings::readTexts(quint32 counted) {
    ChunkReader reader(chunks_);
    reader.skip(quint64(lastEnd_));
    try {
        for (quint32 i = 0; i < counted; ++i) {
            bool plain = false;
            texts_.push_back(reader.richText(&plain));
            if (plain && !plain_.contains(texts_.back()))
                plain_.insert(texts_.back(), i);
            lastChunk_ = reader.chunk();
            lastEnd_ = reader.offset();
        }
    } catch (const Refusal&) {
        return; // a text is cut off or not there
    }
}

const QString& SharedStrings::text(quint32 index) const {
    if (index >= texts_.size())
        damaged(u"a cell refers to text %1 of %2"_s.arg(index).arg(texts_.size()));
    return texts_[index];
}

quint32 SharedStrings::intern(const QString& text) {
    const auto known = plain_.constFind(text);
    const quint32 index = known != plain_.constEnd() ? *known : count();
    put32(chunks_[0], 0, get32(chunks_[0], 0) + 1);
    if (index == count()) {
        append(text);
        plain_.insert(text, index);
        texts_.push_back(text);
        put32(chunks_[0], 4, count());
    }
    return index;
}

void SharedStrings::append(const QString& text) {
    const bool wide = !isLatin1(text);
    const int width = wide ? 2 : 1;
    // Bytes behind the last text that is counted belong to none.
    chunks_.resize(lastChunk_ + 1);
    chunks_.back().truncate(lastEnd_);
    // The count, the flags and the first character must stand in one record.
    if (chunks_.back().size() + 3 + width > maxRecordBody)
        chunks_.emplace_back();
    append16(chunks_.back(), quint16(text.size()));
    append8(chunks_.back(), wide ? 1 : 0);
    for (QStringView rest = text; !rest.isEmpty();) {
        const qsizetype room = (maxRecordBody - chunks_.back().size()) / width;
        if (room == 0) {
            chunks_.emplace_back();
            append8(chunks_.back(), wide ? 1 : 0);
            continue;
        }
        const qsizetype fit = std::min(room, rest.size());
        appendCharacters(chunks_.back(), rest.first(fit), wide);
        rest = rest.sliced(fit);
    }
    lastChunk_ = chunks_.size() - 1;
    lastEnd_ = chunks_.back().size();
}

void SharedStrings::writeInto(Records& globals) const {
    std::erase_if(globals, [](const Record& r) { return r.id == id::ExtendedSst; });
    const int old = lastOf(globals, id::SharedStrings);
    if (old < 0 && texts_.empty())
        return;
    auto at = std::find_if(globals.begin(), globals.end() - 1,
                           [](const Record& r) { return r.id == id::BookExtension || r.id == id::Theme; });
    if (old >= 0) {
        const auto first = globals.begin() + old;
        at = globals.erase(first, std::find_if(first + 1, globals.end(),
                                               [](const Record& r) { return r.id != id::Continue; }));
    }
    Records table;
    for (const QByteArray& chunk : chunks_)
        table.push_back({table.empty() ? id::SharedStrings : id::Continue, chunk});
    globals.insert(at, table.begin(), table.end());
}

} // namespace excel::biff
