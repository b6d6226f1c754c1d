// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLineEdit>
#include <QObject>
#include <QPointer>

#include <functional>
#include <optional>
#include <vector>

namespace forms {
class MSHFlexGrid;
}

/// The rules of one editable grid. Columns 1 to lastColumn are editable; column 1 is mandatory.
struct GridEditorRules {
    enum class AtEnd { Stay, Command, CommandThenLastRow, AppendRow };
    enum class NeedsText { Never, OnLastRow, Always };

    int lastColumn = 1;
    bool sideways = true;                        ///< Left and Right leave the cell at the ends of its text
    AtEnd enterAtEnd = AtEnd::Stay;              ///< Enter in the last column of the last row
    NeedsText enterNeedsText = NeedsText::Never; ///< rows in which Enter requires column 1
    bool downAppends = true;                     ///< Down on the last row appends a row if column 1 is filled
    bool upOnFirstRow = false;                   ///< Up on row 1 reloads the box
    int maxLength = 32767;                       ///< of the box's text, in characters
    int readOnlyColumn = 0;                      ///< its text is shown from the start; 0 for none
    /// The mark columns; none by default. On entering a mark cell its text is selected, so typing replaces it
    /// and Left and Right leave the cell.
    int firstMarkColumn = 0;
    int lastMarkColumn = -1;
};

namespace gridrules {
using AtEnd = GridEditorRules::AtEnd;
using NeedsText = GridEditorRules::NeedsText;

inline constexpr GridEditorRules customer{
    .lastColumn = 4,
    .enterAtEnd = AtEnd::Command,
};
inline constexpr GridEditorRules respondent{
    .lastColumn = 3,
    .enterAtEnd = AtEnd::Command,
    .upOnFirstRow = true,
};
inline constexpr GridEditorRules parameter{
    .lastColumn = 1,
    .sideways = false,
    .enterAtEnd = AtEnd::CommandThenLastRow,
    .enterNeedsText = NeedsText::OnLastRow,
    .maxLength = 255,
};
inline constexpr GridEditorRules question{
    .lastColumn = 2,
    .enterAtEnd = AtEnd::AppendRow,
    .enterNeedsText = NeedsText::Always,
    .maxLength = 255,
};
inline constexpr GridEditorRules feedback{
    .lastColumn = 4,
    .downAppends = false,
    .readOnlyColumn = 1,
    .firstMarkColumn = 2,
    .lastMarkColumn = 3,
};
} // namespace gridrules

/// Edits a grid in place with one text box over the current cell. Each user change is copied to the cell.
/// Enter and the arrow keys move the box from cell to cell. A block of cells pasted from the clipboard fills
/// the grid from the current cell on; if any cell does not fit, nothing is pasted.
class GridEditor : public QObject {
    Q_OBJECT

public:
    enum class RowMove { Enter, Down, Appended, Up };

    GridEditor(const GridEditorRules& rules, forms::MSHFlexGrid* grid, QLineEdit* box);

    /// Called when a key has moved the cursor to another row, before the box moves there.
    std::function<void(RowMove)> onRowChange;
    /// Called after the box has moved to another row.
    std::function<void(RowMove)> afterRowChange;
    /// Called by Enter on the last cell; required for AtEnd::Command and CommandThenLastRow.
    std::function<void()> enterCommand;
    /// Called with the box's text after each user change. Default: copies it to the current cell.
    std::function<void(const QString&)> onChange;
    /// Converts a pasted text for a cell; nullopt rejects it. Default: accepts any text.
    std::function<std::optional<QString>(int row, int col, const QString& text)> fit;
    /// Returns whether a character may be typed. Unset: all are accepted.
    std::function<bool(QChar)> accepts;

    /// Moves the cursor to a cell and shows the box there. Does not set the focus.
    void setEdit(int col, int row);
    /// Copies the current cell's text to the box.
    void copyCell();
    /// Focuses the box if it is visible.
    void focusBox();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

    forms::MSHFlexGrid* grid;
    QLineEdit* box;

private:
    void mouseDown();
    bool boxKey(int key);
    bool gridKey(QKeyEvent* event);
    void enter();
    void goToRow(int row, int col, RowMove move);
    void appendRow(int col, RowMove move);
    bool hasText(int row) const;
    bool acceptsAll(const QString& typed) const;
    bool isMark(int col) const;
    bool boxEvent(QEvent* event);
    void textEdited(const QString& text);
    void showMenu(const QPoint& globalPosition);
    void paste(const QString& text);
    void pasteBlock(const std::vector<QStringList>& rows);
    bool mayReplace(const std::vector<QStringList>& block) const;
    std::optional<QString> fitting(int row, int col, const QString& text) const;
    void placeBox();

    const GridEditorRules rule;
    bool waitsForClick = false; ///< after a click on the header row
    bool isPlacing = false;     ///< ignore scrolling caused by moving the box
    bool isForwarding = false;  ///< a key of the grid is being sent to the box
};
