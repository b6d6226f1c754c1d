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

/// What differs between the grids that are edited in place. Columns from 1 to lastColumn are editable, column
/// 1 is the mandatory one.
struct GridEditorRules {
    enum class AtEnd { Stay, Command, CommandThenLastRow, AppendRow };
    enum class NeedsText { Never, OnLastRow, Always };

    int lastColumn;
    bool sideways;            ///< Left and Right leave the cell at the ends of its text
    int lastColumnForRight;   ///< Right acts from the columns before this one
    AtEnd enterAtEnd;         ///< Enter in the last column of the last row
    NeedsText enterNeedsText; ///< Enter in the last column does nothing while column 1 is empty
    bool downAppends;         ///< Down on the last row appends a row, unsaved, when column 1 is filled
    bool upOnFirstRow;        ///< Up on row 1 lays the box anew
    int maxLength;            ///< of the box's text, in characters
    int readOnlyColumn = 0;   ///< its texts are shown from their beginning; 0 for none
    int firstMarkColumn = 0;  ///< from here to the next the text of a cell that is entered is selected, so
    int lastMarkColumn = -1;  ///< that typing replaces it; Left and Right leave it then
};

namespace gridrules {
using AtEnd = GridEditorRules::AtEnd;
using NeedsText = GridEditorRules::NeedsText;
inline constexpr int noLimit = 32767;

//                                            last  side  right  Enter on the last cell     needs text Down Up
//                                            length
inline constexpr GridEditorRules customer{4, true, 4, AtEnd::Command, NeedsText::Never, true, false, noLimit};
inline constexpr GridEditorRules respondent{3,    true, 3,      AtEnd::Command, NeedsText::Never,
                                            true, true, noLimit};
inline constexpr GridEditorRules parameter{1,    false, 1,  AtEnd::CommandThenLastRow, NeedsText::OnLastRow,
                                           true, false, 255};
inline constexpr GridEditorRules question{2, true, 2, AtEnd::AppendRow, NeedsText::Always, true, false, 255};
inline constexpr GridEditorRules feedback{4, true, 4, AtEnd::Stay, NeedsText::Never, false, false, noLimit,
                                          1, 2,    3};
} // namespace gridrules

/// Edits a grid in place: one text box, laid over the grid's current cell, copies its text into the cell at
/// each change that the user makes. Enter and the arrow keys move it from cell to cell; the grid itself never
/// receives typing. A block of cells from the clipboard fills cells and rows from the current cell on, whole
/// or, when a cell does not fit, not at all.
class GridEditor : public QObject {
    Q_OBJECT

public:
    enum class RowMove { Enter, Down, Appended, Up };

    GridEditor(const GridEditorRules& rules, forms::MSHFlexGrid* grid, QLineEdit* box);

    /// Called when a key has moved the cursor to another row, before the box is laid there.
    std::function<void(RowMove)> onRowChange;
    /// Called after the box is laid on another row.
    std::function<void(RowMove)> afterRowChange;
    /// Enter on the last cell.
    std::function<void()> enterCommand;
    /// Takes the box's text after each change that the user makes, not after a move to another cell; writes
    /// it into the current cell unless it is replaced.
    std::function<void(const QString&)> onChange;
    /// What a cell takes of a pasted text; nothing when it refuses it. Everything unless it is replaced.
    std::function<std::optional<QString>(int row, int col, const QString& text)> fit;
    /// Whether a character that is typed, by key or input method, may enter the box.
    std::function<bool(QChar)> accepts;

    /// Moves the cursor to the cell, copies its text into the box and lays the box over it. Focus is the
    /// caller's.
    void setEdit(int col, int row);
    /// The box shows the current cell's text again.
    void copyCell();
    /// Focus for the box, when it is in sight.
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
    void layBox();

    const GridEditorRules rule;
    bool waitsForClick = false; // after a click on the head row
    bool laying = false;        // a scroll is part of a move of the box
    bool forwarding = false;    // a key of the grid is on its way to the box
};
