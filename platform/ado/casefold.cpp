// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ado/casefold.h"

#include <QChar>

#include <sqlite3.h>

namespace ado {
namespace {

/// Beyond the last code point, so that no text can contain them.
constexpr char32_t anyRun = 0x110000;
constexpr char32_t anyOne = 0x110001;
constexpr char32_t malformed = 0xFFFD;

/// Reads one code point and advances the position. A byte that starts no valid sequence counts as U+FFFD.
char32_t next(std::string_view text, std::size_t& position) {
    const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(text[at]); };
    const char32_t lead = byte(position++);
    if (lead < 0x80)
        return lead;
    const int following = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC2 ? 1 : 0;
    if (following == 0 || lead > 0xF4 || position + static_cast<std::size_t>(following) > text.size())
        return malformed;
    char32_t value = lead & (0x3FU >> following);
    for (int i = 0; i < following; ++i) {
        if ((byte(position) & 0xC0U) != 0x80U)
            return malformed;
        value = (value << 6U) | (byte(position++) & 0x3FU);
    }
    return value;
}

char32_t folded(char32_t value) {
    if (value < 0x80)
        return value >= U'A' && value <= U'Z' ? value + 32 : value;
    return QChar::toCaseFolded(value);
}

/// Whether one of the bytes is a continuation byte.
bool isContinuation(char a, char b) {
    return (static_cast<unsigned char>(a) & 0xC0U) == 0x80U ||
           (static_cast<unsigned char>(b) & 0xC0U) == 0x80U;
}

std::string_view textOf(sqlite3_value* value) {
    const auto* bytes = reinterpret_cast<const char*>(sqlite3_value_text(value));
    return bytes ? std::string_view(bytes, static_cast<std::size_t>(sqlite3_value_bytes(value)))
                 : std::string_view();
}

int collate(void*, int sizeA, const void* a, int sizeB, const void* b) {
    return compareFolded({static_cast<const char*>(a), static_cast<std::size_t>(sizeA)},
                         {static_cast<const char*>(b), static_cast<std::size_t>(sizeB)});
}

void like(sqlite3_context* context, int, sqlite3_value** arguments) {
    if (sqlite3_value_type(arguments[0]) == SQLITE_NULL || sqlite3_value_type(arguments[1]) == SQLITE_NULL)
        return;
    auto* pattern = static_cast<LikePattern*>(sqlite3_get_auxdata(context, 0));
    if (pattern) {
        sqlite3_result_int(context, pattern->matches(textOf(arguments[1])));
        return;
    }
    pattern = new LikePattern(textOf(arguments[0]));
    sqlite3_result_int(context, pattern->matches(textOf(arguments[1])));
    // SQLite may destroy the pattern at once, so it is handed over last.
    sqlite3_set_auxdata(context, 0, pattern, [](void* p) { delete static_cast<LikePattern*>(p); });
}

} // namespace

int compareFolded(std::string_view a, std::string_view b) {
    std::size_t i = 0;
    while (i < a.size() && i < b.size() && a[i] == b[i])
        ++i;
    while (i > 0 && i < a.size() && i < b.size() && isContinuation(a[i], b[i]))
        --i; // back to the start of the character in which they differ
    std::size_t j = i;
    while (i < a.size() && j < b.size()) {
        const char32_t x = folded(next(a, i));
        const char32_t y = folded(next(b, j));
        if (x != y)
            return x < y ? -1 : 1;
    }
    return static_cast<int>(i < a.size()) - static_cast<int>(j < b.size());
}

LikePattern::LikePattern(std::string_view utf8) {
    for (std::size_t i = 0; i < utf8.size();) {
        const char32_t value = next(utf8, i);
        if (value == U'%') {
            if (parts.empty() || parts.back() != anyRun)
                parts.push_back(anyRun);
        } else {
            parts.push_back(value == U'_' ? anyOne : folded(value));
        }
    }
}

bool LikePattern::matches(std::string_view text) const {
    // Greedy: on a mismatch the last % takes one character more. Earlier ones never need to be tried again.
    std::size_t position = 0;
    std::size_t part = 0;
    std::size_t retryPart = parts.size() + 1;
    std::size_t retryPosition = 0;
    while (position < text.size()) {
        if (part < parts.size() && parts[part] == anyRun) {
            retryPart = ++part;
            retryPosition = position;
            if (part == parts.size())
                return true;
            continue;
        }
        std::size_t after = position;
        const char32_t value = folded(next(text, after));
        if (part < parts.size() && (parts[part] == anyOne || parts[part] == value)) {
            ++part;
            position = after;
            continue;
        }
        if (retryPart > parts.size())
            return false;
        next(text, retryPosition);
        position = retryPosition;
        part = retryPart;
    }
    while (part < parts.size() && parts[part] == anyRun)
        ++part;
    return part == parts.size();
}

int registerTextRules(sqlite3* database) {
    constexpr int flags = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS;
    if (int code =
            sqlite3_create_collation_v2(database, "UNICODE_CI", SQLITE_UTF8, nullptr, collate, nullptr))
        return code;
    return sqlite3_create_function_v2(database, "like", 2, flags, nullptr, like, nullptr, nullptr, nullptr);
}

} // namespace ado
