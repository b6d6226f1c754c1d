// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/base/changedrow.h"

#include "core/store/refusal.h"
#include "core/store/store.h"

#include <algorithm>

using namespace Qt::StringLiterals;

void Settlement::note(const QString& key, const ChangedRow& row) {
    if (!row.fields.empty())
        rows[key] = {row};
}

bool Settlement::ask() {
    for (auto& [key, settled] : rows) {
        settled.keep = changedHook(settled.row);
        if (settled.keep == Keep::Both)
            return false;
    }
    return true;
}

void Settlement::require(const QString& key, const ChangedRow& row) const {
    const auto found = rows.find(key);
    if (!row.fields.empty() && (found == rows.end() || found->second.row != row))
        throw Refusal(
            u"%1 has just been changed by someone else. Nothing has been saved; save again."_s.arg(row.name));
}

bool Settlement::isLeft(const QString& key, const QString& field) const {
    const auto found = rows.find(key);
    return found != rows.end() && found->second.keep == Keep::Stored &&
           std::any_of(found->second.row.fields.begin(), found->second.row.fields.end(),
                       [&](const ChangedField& changed) { return changed.name == field; });
}

bool Settlement::leavesAny() const {
    return std::any_of(rows.begin(), rows.end(),
                       [](const auto& row) { return row.second.keep == Keep::Stored; });
}

void addIfChanged(ChangedRow& row, const ChangedField& field) {
    const bool isTouched = field.mine != field.before;
    if (isTouched && field.stored != field.before && toStoredText(field.stored) != toStoredText(field.mine))
        row.fields.push_back(field);
}
