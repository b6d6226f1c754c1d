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
inline constexpr int type = 5; ///< hidden; one of the texts below
} // namespace feedbackcolumn

/// The type of a question as text in the grid.
inline constexpr QStringView scoreType = u"True";
inline constexpr QStringView descriptiveType = u"False";

enum class Judgement {
    Take,    ///< the cell takes the box's text
    Blank,   ///< cell and box are blanked
    SetBack, ///< the box shows the cell's text again
};

/// Decides on a text typed or pasted into the box over a cell of that column, for a question of that type. A
/// mark is a whole number of 10 at most after rounding, a negative one included; any other text that is not
/// blank blanks the cell.
Judgement judgeChange(int column, const QString& type, const QString& text);

/// Whether a character may be typed into a cell of that column.
bool acceptsCharacter(int column, QChar character);

/// A stored mark as shown in its cell: "0" means not rated and is shown blank.
QString shownMark(const QString& stored);

/// The value to store for a mark's cell. A blank cell sets a stored mark to "0"; in a new record nothing is
/// written, so that it gets the default.
std::optional<QString> markForStore(const QString& cell, bool isNew);

/// The value to store for a description's cell; nothing for an empty cell, which keeps the stored text. A
/// text with apostrophes is trimmed and gets typographic ones; any other is stored unchanged.
std::optional<QString> descriptionForStore(const QString& cell);
