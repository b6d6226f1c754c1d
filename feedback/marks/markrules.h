// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <optional>

/// Columns of the grid of answers.
namespace feedbackcolumn {
inline constexpr int question = 1;
inline constexpr int weightage = 2;
inline constexpr int score = 3;
inline constexpr int description = 4;
inline constexpr int type = 5; ///< hidden; the texts below
} // namespace feedbackcolumn

/// How the type of a question stands in the grid: "True" and "False".
inline constexpr QStringView scoreType = u"True";
inline constexpr QStringView descriptiveType = u"False";

enum class Judgement {
    Take,    ///< the cell takes the box's text
    Blank,   ///< cell and box are blanked
    SetBack, ///< the box shows the cell's text again
};

/// What becomes of a text that has been typed or pasted into the box over a cell of that column, in the row
/// of a question of that type. A mark is a whole number of 10 at most after rounding, a negative one
/// included; any other text that is not blank blanks the cell.
Judgement judgeChange(int column, const QString& type, const QString& text);

/// Whether a character may be typed into a cell of that column.
bool acceptsCharacter(int column, QChar character);

/// A stored mark as its cell shows it: "0" is not rated and shows blank.
QString shownMark(const QString& stored);

/// What a mark's cell stores. A blank cell takes a stored mark back to "0" and leaves a new record its
/// default: nothing is written.
std::optional<QString> markForStore(const QString& cell, bool isNew);

/// What a description's cell stores; an empty cell leaves what is stored. A text with apostrophes is trimmed
/// and gets typographic ones, any other is stored as it stands.
std::optional<QString> descriptionForStore(const QString& cell);
