// SPDX-License-Identifier: GPL-3.0-or-later
#include "reference/grideditor.h"

#include "core/base/gblGlobal.h"
#include "platform/forms/celltip.h"
#include "platform/forms/flexgrid.h"
#include "platform/forms/msgbox.h"
#include "platform/forms/readernames.h"
#include "reference/gridpaste.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QScopedValueRollback>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// Mixes base and highlight colour, so that the current cell is visible in any theme.
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
    : QObject(edited), grid(edited), box(editor), rule(rules) {
    grid->setMarksRow(true);
    box->setParent(grid->viewport());
    QWidget::setTabOrder(grid, box);
    box->setFrame(false);
    tintBox(box);
    box->setMaxLength(rule.maxLength);
    box->setAccessibleName(grid->accessibleName());
    box->setAcceptDrops(false); // a drop would bypass the checks of typed and pasted text
    box->hide();
    box->installEventFilter(this);
    grid->installEventFilter(this);
    grid->viewport()->installEventFilter(this);
    onChange = [this](const QString& text) { grid->setTextMatrix(grid->Row(), grid->Col(), text); };
    fit = [](int, int, const QString& text) { return text; };
    connect(box, &QLineEdit::textEdited, this, &GridEditor::textEdited);
    connect(grid, &forms::MSHFlexGrid::MouseDown, this, &GridEditor::mouseDown);
    connect(grid, &forms::MSHFlexGrid::Scroll, this, [this] {
        if (isPlacing)
            return;
        if (box->hasFocus())
            grid->setFocus(); // the next key shows the box again
        box->hide();
    });
    connect(grid->horizontalHeader(), &QHeaderView::sectionResized, this, &GridEditor::placeBox);
}

void GridEditor::setEdit(int col, int row) {
    const QScopedValueRollback placing(isPlacing, true);
    const bool focused = box->hasFocus();
    box->hide();
    waitsForClick = false;
    grid->moveTo(row, col);
    grid->showCell();
    copyCell();
    if (grid->Col() < 1 || grid->Col() > rule.lastColumn || grid->cellRect().isEmpty())
        return;
    box->setGeometry(grid->cellRect());
    forms::nameEditor(*box, *grid, grid->currentIndex());
    box->show();
    if (focused)
        box->setFocus();
}

void GridEditor::copyCell() {
    box->setText(grid->Text());
    if (grid->Col() == rule.readOnlyColumn)
        box->home(false);
    else if (isMark(grid->Col()))
        box->selectAll();
}

bool GridEditor::isMark(int col) const {
    return col >= rule.firstMarkColumn && col <= rule.lastMarkColumn;
}

void GridEditor::textEdited(const QString& text) {
    const QString clean = withoutControlCharacters(text);
    if (clean != text) {
        const int caret = box->cursorPosition();
        box->setText(clean);
        box->setCursorPosition(caret);
    }
    onChange(clean);
}

void GridEditor::focusBox() {
    if (box->isVisible())
        box->setFocus();
}

void GridEditor::placeBox() {
    if (box->isHidden())
        return;
    const QScopedValueRollback placing(isPlacing, true);
    grid->showCell();
    box->setGeometry(grid->cellRect());
}

void GridEditor::mouseDown() {
    if (grid->MouseRow() == 0) {
        if (box->hasFocus())
            grid->setFocus(); // hiding it would move the focus to another control
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
    if (event->type() == QEvent::Resize && watched == grid->viewport()) {
        placeBox();
        QMetaObject::invokeMethod(this, &GridEditor::placeBox,
                                  Qt::QueuedConnection); // the last column follows
    }
    if (watched == box)
        return boxEvent(event);
    if (watched != grid || event->type() != QEvent::KeyPress)
        return false;
    // Keys that the box ignores propagate to the grid; do not send them back.
    return box->hasFocus() || isForwarding || gridKey(static_cast<QKeyEvent*>(event));
}

/// Returns true if the box must not handle the event.
bool GridEditor::boxEvent(QEvent* event) {
    switch (event->type()) {
    case QEvent::ToolTip: { // the box covers its cell
        const auto* help = static_cast<QHelpEvent*>(event);
        forms::showCutText(*grid,
                           QHelpEvent(QEvent::ToolTip, box->mapToParent(help->pos()), help->globalPos()));
        return true;
    }
    case QEvent::InputMethod:
        return !acceptsAll(static_cast<QInputMethodEvent*>(event)->commitString());
    case QEvent::ContextMenu:
        showMenu(static_cast<QContextMenuEvent*>(event)->globalPos());
        return true;
    case QEvent::MouseButtonRelease:
        if (static_cast<QMouseEvent*>(event)->button() != Qt::MiddleButton)
            return false;
        if (QGuiApplication::clipboard()->supportsSelection())
            paste(QGuiApplication::clipboard()->text(QClipboard::Selection));
        return true;
    case QEvent::KeyPress: {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->matches(QKeySequence::Paste)) {
            paste(QGuiApplication::clipboard()->text());
            return true;
        }
        if ((key->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier && boxKey(key->key()))
            return true;
        return !acceptsAll(key->text());
    }
    default:
        return false;
    }
}

/// Shows the standard context menu, with Paste using our own paste().
void GridEditor::showMenu(const QPoint& globalPosition) {
    QMenu* menu = box->createStandardContextMenu();
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (QAction* action : menu->actions()) {
        if (action->objectName() != u"edit-paste")
            continue;
        action->disconnect(box);
        connect(action, &QAction::triggered, this, [this] { paste(QGuiApplication::clipboard()->text()); });
    }
    menu->popup(globalPosition);
}

void GridEditor::paste(const QString& text) {
    const std::vector<QStringList> rows = cellsOfBlock(text);
    if (rows.size() > 1 || rows.front().size() > 1) {
        pasteBlock(rows);
        return;
    }
    const QString clean = withoutControlCharacters(rows.front().front());
    const qsizetype length = box->text().size() - box->selectedText().size() + clean.size();
    if (length > box->maxLength())
        forms::msgBox(u"With the pasted text the cell would hold %1 characters; it takes %2. Nothing has "
                      "been pasted."_s.arg(QString::number(length), QString::number(box->maxLength())),
                      forms::style::information, titleWithVersion);
    else
        box->insert(clean);
}

std::optional<QString> GridEditor::fitting(int row, int col, const QString& text) const {
    const bool isCell = col <= rule.lastColumn && (row < grid->Rows() || rule.downAppends);
    const QString clean = withoutControlCharacters(text);
    return isCell && clean.size() <= rule.maxLength ? fit(row, col, clean) : std::nullopt;
}

/// Asks before a block replaces texts other than the current cell's, since any text of two lines is a block.
/// Marks are replaced without asking.
bool GridEditor::mayReplace(const std::vector<QStringList>& block) const {
    int replaced = 0;
    for (int row = grid->Row(); const QStringList& texts : block) {
        for (int col = grid->Col(); const QString& text : texts) {
            const QString held = grid->TextMatrix(row, col).trimmed();
            const bool isCurrent = row == grid->Row() && col == grid->Col();
            replaced += !isCurrent && !isMark(col) && !held.isEmpty() && held != text.trimmed() ? 1 : 0;
            ++col;
        }
        ++row;
    }
    return replaced == 0 ||
           forms::msgBox(
               u"Other cells whose texts the pasted block would replace: %1. Replace them?"_s.arg(replaced),
               forms::style::yesNo + forms::style::secondButton + forms::style::information,
               titleWithVersion) == forms::Answer::Yes;
}

void GridEditor::pasteBlock(const std::vector<QStringList>& rows) {
    const int firstRow = grid->Row();
    const int firstCol = grid->Col();
    std::vector<QStringList> fittingRows;
    for (const QStringList& cells : rows) {
        QStringList& texts = fittingRows.emplace_back();
        const int row = firstRow + static_cast<int>(fittingRows.size()) - 1;
        for (const QString& cell : cells) {
            const std::optional<QString> text = fitting(row, firstCol + static_cast<int>(texts.size()), cell);
            if (!text) {
                forms::msgBox(u"The pasted cells do not fit from here on: “%1” has no place in row %2, "
                              "column %3. Nothing has been pasted."_s.arg(
                                  withoutControlCharacters(cell).left(80), QString::number(row),
                                  QString::number(firstCol + texts.size())),
                              forms::style::information, titleWithVersion);
                return;
            }
            texts << *text;
        }
    }
    if (!mayReplace(fittingRows))
        return;
    grid->setRows(qMax(grid->Rows(), firstRow + static_cast<int>(rows.size())));
    for (int row = 0; const QStringList& texts : fittingRows) {
        for (int col = 0; const QString& text : texts)
            grid->setTextMatrix(firstRow + row, firstCol + col++, text);
        ++row;
    }
    setEdit(firstCol, firstRow);
    focusBox();
}

/// Control characters are commands and always accepted.
bool GridEditor::acceptsAll(const QString& typed) const {
    return !accepts || std::all_of(typed.begin(), typed.end(), [this](QChar character) {
        return character.category() == QChar::Other_Control || accepts(character);
    });
}

/// Handles a key pressed while the box is hidden: shows the box and sends it the key.
bool GridEditor::gridKey(QKeyEvent* event) {
    const bool pastes = event->matches(QKeySequence::Paste);
    const bool movesOn = event->key() == Qt::Key_Tab || event->key() == Qt::Key_Backtab ||
                         event->key() == Qt::Key_Escape || isModifier(event->key()) ||
                         ((event->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) && !pastes);
    if (movesOn)
        return false;
    if (waitsForClick)
        return true;
    setEdit(grid->Col(), grid->Row());
    focusBox();
    const QScopedValueRollback forwarding(isForwarding, true);
    if (box->isVisible())
        QCoreApplication::sendEvent(box, event);
    return true;
}

/// Handles the keys that leave the cell. Returns true if the box must not handle the key.
bool GridEditor::boxKey(int key) {
    const int row = grid->Row();
    const int col = grid->Col();
    const bool selected = box->hasSelectedText();
    const bool whole = isMark(col) && selected && box->selectedText() == box->text();
    const bool atEnd = !selected && box->cursorPosition() == box->text().size();
    const bool atStart = !selected && box->cursorPosition() == 0;
    switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        enter();
        break;
    case Qt::Key_Right:
        if (!rule.sideways || !(atEnd || whole) || col >= rule.lastColumn)
            return false;
        setEdit(col + 1, row);
        break;
    case Qt::Key_Left:
        if (!rule.sideways || !(atStart || whole) || col < 2)
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
        const int last = grid->Rows() - 1;
        if (rule.enterAtEnd == AtEnd::Command)
            setEdit(grid->Col(), grid->Row());
        else if (grid->Row() == last)
            setEdit(1, last);
        else
            goToRow(last, 1, RowMove::Enter); // the command has moved to another row
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
