// SPDX-License-Identifier: GPL-3.0-or-later
#include "reference/grideditor.h"

#include "platform/forms/celltip.h"
#include "platform/forms/flexgrid.h"

#include <QApplication>
#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>

#include <algorithm>

namespace {

/// A shade between the cells' ground and the highlight, so that the cell in hand stands out in any theme.
void tintBox(QLineEdit* box) {
    QPalette palette = box->palette();
    const QColor ground = palette.color(QPalette::Base);
    const QColor highlight = palette.color(QPalette::Highlight);
    const auto mixed = [](int a, int b) { return (a * 4 + b) / 5; };
    palette.setColor(QPalette::Base,
                     QColor(mixed(ground.red(), highlight.red()), mixed(ground.green(), highlight.green()),
                            mixed(ground.blue(), highlight.blue())));
    box->setPalette(palette);
}

bool isModifier(int key) {
    return key >= Qt::Key_Shift && key <= Qt::Key_ScrollLock;
}

} // namespace

GridEditor::GridEditor(const GridEditorRules& rules, forms::MSHFlexGrid* edited, QLineEdit* editor)
    : QObject(edited), rule(rules), grid(edited), box(editor) {
    box->setParent(grid->viewport());
    QWidget::setTabOrder(grid, box);
    box->setFrame(false);
    tintBox(box);
    box->setMaxLength(rule.maxLength);
    box->setAccessibleName(grid->accessibleName());
    box->hide();
    box->installEventFilter(this);
    grid->installEventFilter(this);
    grid->viewport()->installEventFilter(this);
    onChange = [this](const QString& text) { grid->setTextMatrix(grid->Row(), grid->Col(), text); };
    connect(box, &QLineEdit::textChanged, this, [this](const QString& text) { onChange(text); });
    connect(grid, &forms::MSHFlexGrid::MouseDown, this, &GridEditor::mouseDown);
    connect(grid, &forms::MSHFlexGrid::Scroll, this, [this] {
        if (box->hasFocus())
            grid->setFocus(); // the next key brings the box back
        box->hide();
    });
    connect(grid->horizontalHeader(), &QHeaderView::sectionResized, this, &GridEditor::layBox);
}

void GridEditor::setEdit(int col, int row) {
    const bool focused = box->hasFocus();
    box->hide();
    waitsForClick = false;
    grid->moveTo(row, col);
    copyCell();
    if (grid->Col() < 1 || grid->Col() > rule.lastColumn || grid->cellRect().isEmpty())
        return;
    box->setGeometry(grid->cellRect());
    box->show();
    if (focused)
        box->setFocus();
}

void GridEditor::copyCell() {
    box->setText(grid->Text());
    if (grid->Col() == rule.readOnlyColumn)
        box->home(false);
}

void GridEditor::focusBox() {
    if (box->isVisible())
        box->setFocus();
}

void GridEditor::layBox() {
    if (box->isVisible())
        box->setGeometry(grid->cellRect());
}

void GridEditor::mouseDown() {
    if (grid->MouseRow() == 0) {
        if (box->hasFocus())
            grid->setFocus(); // else it would go on to another control
        box->hide();
        waitsForClick = true;
        return;
    }
    if (grid->Row() < 1 || grid->Col() < 1 || grid->Col() > rule.lastColumn)
        return;
    setEdit(grid->Col(), grid->Row());
    focusBox();
}

bool GridEditor::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize && watched == grid->viewport())
        layBox();
    if (event->type() == QEvent::ToolTip && watched == box) { // the box covers its cell
        const auto* help = static_cast<QHelpEvent*>(event);
        forms::showCutText(*grid,
                           QHelpEvent(QEvent::ToolTip, box->mapToParent(help->pos()), help->globalPos()));
        return true;
    }
    if (event->type() == QEvent::InputMethod && watched == box)
        return !acceptsAll(static_cast<QInputMethodEvent*>(event)->commitString());
    if (event->type() != QEvent::KeyPress)
        return false;
    auto* key = static_cast<QKeyEvent*>(event);
    if (watched == grid) // what the box has no use for ends here and does not come back to it
        return box->hasFocus() || gridKey(key);
    if (watched != box)
        return false;
    if ((key->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier && boxKey(key->key()))
        return true;
    return !acceptsAll(key->text());
}

/// Control characters are commands and pass.
bool GridEditor::acceptsAll(const QString& typed) const {
    return !accepts || std::all_of(typed.begin(), typed.end(), [this](QChar character) {
        return character.category() == QChar::Other_Control || accepts(character);
    });
}

/// A key for the grid, whose box is out of sight: brings the box back and goes on there.
bool GridEditor::gridKey(QKeyEvent* event) {
    const bool movesOn = event->key() == Qt::Key_Tab || event->key() == Qt::Key_Backtab ||
                         event->key() == Qt::Key_Escape || isModifier(event->key()) ||
                         (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier));
    if (movesOn)
        return false;
    if (waitsForClick)
        return true;
    setEdit(grid->Col(), grid->Row());
    focusBox();
    if (box->isVisible())
        QCoreApplication::sendEvent(box, event);
    return true;
}

/// The keys that leave the cell. True when the box is not to see the key.
bool GridEditor::boxKey(int key) {
    const int row = grid->Row();
    const int col = grid->Col();
    const bool selected = box->hasSelectedText();
    switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        enter();
        break;
    case Qt::Key_Right:
        if (!rule.sideways || selected || box->cursorPosition() < box->text().size() ||
            col >= rule.lastColumnForRight)
            return false;
        setEdit(col + 1, row);
        break;
    case Qt::Key_Left:
        if (!rule.sideways || selected || box->cursorPosition() > 0 || col < 2)
            return false;
        setEdit(col - 1, row);
        break;
    case Qt::Key_Down:
        if (row < grid->Rows() - 1)
            goToRow(row + 1, col, RowMove::Down);
        else if (rule.downAppends && hasText(row))
            appendRow(col, RowMove::Appended);
        break;
    case Qt::Key_Up:
        if (row >= 2)
            goToRow(row - 1, col, RowMove::Up);
        else if (rule.upOnFirstRow)
            setEdit(col, row);
        break;
    default:
        return false;
    }
    focusBox();
    return true;
}

void GridEditor::enter() {
    using AtEnd = GridEditorRules::AtEnd;
    using NeedsText = GridEditorRules::NeedsText;
    const int row = grid->Row();
    const bool lastRow = row == grid->Rows() - 1;
    if (grid->Col() < rule.lastColumn) {
        setEdit(grid->Col() + 1, row);
        return;
    }
    const bool needsText =
        rule.enterNeedsText == NeedsText::Always || (rule.enterNeedsText == NeedsText::OnLastRow && lastRow);
    if (needsText && !hasText(row))
        return;
    if (!lastRow) {
        goToRow(row + 1, 1, RowMove::Enter);
    } else if (rule.enterAtEnd == AtEnd::AppendRow) {
        appendRow(1, RowMove::Enter);
    } else if (rule.enterAtEnd != AtEnd::Stay) {
        enterCommand();
        if (rule.enterAtEnd == AtEnd::Command)
            setEdit(grid->Col(), grid->Row());
        else
            setEdit(1, grid->Rows() - 1);
    }
}

void GridEditor::goToRow(int row, int col, RowMove move) {
    grid->moveTo(row, col);
    if (onRowChange)
        onRowChange(move);
    setEdit(col, row);
    if (afterRowChange)
        afterRowChange(move);
}

void GridEditor::appendRow(int col, RowMove move) {
    grid->setRows(grid->Rows() + 1);
    goToRow(grid->Rows() - 1, col, move);
}

bool GridEditor::hasText(int row) const {
    return !grid->TextMatrix(row, 1).isEmpty();
}
