// SPDX-License-Identifier: GPL-3.0-or-later
#include "reference/segmentedits.h"

#include "core/store/refusal.h"
#include "core/store/transaction.h"

using namespace Qt::StringLiterals;

namespace {

void refuse(const QStringList& gone) {
    constexpr qsizetype mostNamed = 10;
    QString names = gone.mid(0, mostNamed).join(u", "_s);
    if (gone.size() > mostNamed)
        names += u" and %1 more"_s.arg(gone.size() - mostNamed);
    throw Refusal(
        u"No longer in the database: %1. Nothing has been saved; save again for the others."_s.arg(names));
}

} // namespace

const SegmentEdits::Edit* SegmentEdits::find(const QString& kind, const SegmentRow& row) const {
    const auto ofKind = byKind.find(kind.toCaseFolded());
    if (ofKind == byKind.end())
        return nullptr;
    const auto edit = ofKind->second.edits.find({row.custid, row.respondentid});
    return edit == ofKind->second.edits.end() ? nullptr : &edit->second;
}

const QString& SegmentEdits::groupOf(const QString& kind, const SegmentRow& row) const {
    const Edit* edit = find(kind, row);
    return edit ? edit->group : row.group;
}

void SegmentEdits::set(const QString& kind, const SegmentRow& row, const QString& group) {
    const QString key = kind.toCaseFolded();
    OfKind& ofKind = byKind.try_emplace(key, OfKind{kind, {}}).first->second;
    Edit& edit = ofKind.edits.try_emplace({row.custid, row.respondentid}, Edit{row, {}}).first->second;
    edit.group = group;
    if (edit.group == edit.read.group)
        ofKind.edits.erase({row.custid, row.respondentid});
    if (ofKind.edits.empty())
        byKind.erase(key);
}

QStringList SegmentEdits::kinds() const {
    QStringList kinds;
    for (const auto& [key, ofKind] : byKind)
        kinds << ofKind.kind;
    return kinds;
}

/// Throws Refusal for rows that are gone.
SegmentEdits::Compared SegmentEdits::compare(OfKind& ofKind) {
    std::map<Place, QString> stored;
    for (const SegmentRow& row : readSegmentRows(ofKind.kind))
        stored[{row.custid, row.respondentid}] = row.group;
    Compared changed{{u"Kind: "_s + ofKind.kind, {}}, {}};
    QStringList gone;
    std::erase_if(ofKind.edits, [&](const auto& entry) {
        if (stored.contains(entry.first))
            return false;
        gone << entry.second.read.name();
        return true;
    });
    if (!gone.isEmpty())
        refuse(gone);
    for (const auto& [place, edit] : ofKind.edits) {
        const std::size_t before = changed.row.fields.size();
        addIfChanged(changed.row, {edit.read.name(), edit.read.group, stored.at(place), edit.group});
        if (changed.row.fields.size() > before)
            changed.both.insert(place);
    }
    return changed;
}

std::vector<SegmentChange> SegmentEdits::changesOf(const QString& key, const OfKind& ofKind,
                                                   const std::set<Place>& both) const {
    std::vector<SegmentChange> changes;
    for (const auto& [place, edit] : ofKind.edits) {
        if (!both.contains(place) || !settlement.isLeft(key, edit.read.name()))
            changes.push_back({place.first, place.second, edit.group});
    }
    return changes;
}

bool SegmentEdits::save() {
    settlement.clear();
    for (auto& [key, ofKind] : byKind)
        settlement.note(key, compare(ofKind).row);
    if (!settlement.ask())
        return false;
    Transaction transaction;
    for (auto& [key, ofKind] : byKind) {
        const Compared compared = compare(ofKind);
        settlement.require(key, compared.row);
        writeSegments(ofKind.kind, changesOf(key, ofKind, compared.both));
    }
    transaction.Commit();
    byKind.clear();
    return true;
}
