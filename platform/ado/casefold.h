// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string_view>
#include <vector>

struct sqlite3;

namespace ado {

/// Compares two UTF-8 texts case-insensitively by folded code point, for all of Unicode. Negative, zero or
/// positive when a sorts before, equal to or after b.
int compareFolded(std::string_view a, std::string_view b);

/// The pattern of a `like`: % for any run of characters, _ for one; everything else is case-insensitive.
class LikePattern {
public:
    explicit LikePattern(std::string_view utf8);
    bool matches(std::string_view utf8) const;

private:
    std::vector<char32_t> parts; ///< folded code points, anyRun and anyOne
};

/// Registers the collation UNICODE_CI with the database and replaces its `like`. Throws nothing; returns
/// SQLite's result code.
int registerTextRules(sqlite3* database);

} // namespace ado
