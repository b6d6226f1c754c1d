// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/protection.h"

#include "platform/excel/bytes.h"
#include "platform/excel/refusal.h"
#include "platform/excel/sheet.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace excel::biff {

namespace {

constexpr qsizetype allowedActions = 19; // in the SheetProtection record
constexpr quint32 editObjectsAndScenarios = 3;

quint16 rotated(quint16 hash) {
    return quint16(((hash >> 14) & 1) | ((hash << 1) & 0x7FFF));
}

bool isProtection(const Record& record) {
    return record.id == id::Protect || record.id == id::ScenarioProtect || record.id == id::ObjectProtect ||
           record.id == id::Password;
}

quint16 valueOf(const Records& records, quint16 id, int depth) {
    const int at = lastOf(records, id, depth);
    return at < 0 ? 0 : get16(records[size_t(at)].body, 0);
}

Record flagRecord(quint16 id, quint16 value) {
    Record record{id, {}};
    append16(record.body, value);
    return record;
}

/// After the page set-up; without one, before the columns.
qsizetype placeForProtection(const Records& records) {
    const int setup = std::max(lastOf(records, id::PageSetup), lastOf(records, id::HeaderFooter));
    if (setup >= 0)
        return setup + 1;
    return std::find_if(records.begin(), records.end(),
                        [](const Record& r) {
                            return r.id == id::DefaultColumnWidth || r.id == id::ColumnInfo ||
                                   r.id == id::Dimensions;
                        }) -
           records.begin();
}

} // namespace

quint16 passwordHash(const QString& password) {
    if (password.isEmpty())
        return 0;
    const auto printable = [](QChar c) { return c.unicode() >= 0x20 && c.unicode() <= 0x7E; };
    if (password.size() > 15 || !std::all_of(password.begin(), password.end(), printable))
        throw Refusal(u"cannot use this password: it must be 1 to 15 letters, digits or signs of ASCII"_s);
    quint16 hash = 0;
    for (auto c = password.rbegin(); c != password.rend(); ++c)
        hash = rotated(hash) ^ c->unicode();
    return rotated(hash) ^ quint16(password.size()) ^ 0xCE4B;
}

/// The records occur once in a sheet, usually before its cells.
void Sheet::readProtection() {
    protectionOn = valueOf(before, id::Protect, 0) || valueOf(after, id::Protect, 1);
    const quint16 hash = valueOf(before, id::Password, 0);
    storedHash = hash ? hash : valueOf(after, id::Password, 1);
}

void Sheet::protect(quint16 hash) {
    unprotect();
    // Some programs treat a sheet with an ObjectProtect of 0 as unprotected, so records of 0 are omitted.
    Records block{flagRecord(id::Protect, 1), flagRecord(id::ScenarioProtect, 1),
                  flagRecord(id::ObjectProtect, 1)};
    if (hash)
        block.push_back(flagRecord(id::Password, hash));
    before.insert(before.begin() + placeForProtection(before), block.begin(), block.end());
    for (Record& record : after)
        if (record.id == id::SheetProtection && record.body.size() >= allowedActions + 4)
            put32(record.body, allowedActions, get32(record.body, allowedActions) & ~editObjectsAndScenarios);
    readProtection();
}

void Sheet::unprotect() {
    changed = true;
    eraseOwn(before, isProtection, 0);
    eraseOwn(after, isProtection, 1);
    readProtection();
}

} // namespace excel::biff
