// SPDX-License-Identifier: GPL-3.0-or-later
#include "feedback/marks/markrules.h"

#include "core/store/store.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int highestMark = 10;

bool isMark(const QString& text) {
    return ado::isWhole(text, INT16_MIN, highestMark);
}

} // namespace

Judgement judgeChange(int column, const QString& type, const QString& text) {
    const bool blank = text.trimmed().isEmpty();
    switch (column) {
    case feedbackcolumn::weightage:
        return !blank && isMark(text) ? Judgement::Take : Judgement::Blank;
    case feedbackcolumn::score:
        if (type != scoreType)
            return Judgement::SetBack;
        return blank || isMark(text) ? Judgement::Take : Judgement::Blank;
    case feedbackcolumn::description:
        return type == descriptiveType ? Judgement::Take : Judgement::SetBack;
    default:
        return Judgement::SetBack;
    }
}

bool acceptsCharacter(int column, QChar character) {
    const bool isMarkColumn = column == feedbackcolumn::weightage || column == feedbackcolumn::score;
    return !isMarkColumn || (character >= u'0' && character <= u'9');
}

QString shownMark(const QString& stored) {
    return stored == u"0" ? QString() : stored;
}

std::optional<QString> markForStore(const QString& cell, bool isNew) {
    if (!cell.trimmed().isEmpty())
        return cell;
    if (isNew)
        return std::nullopt;
    return u"0"_s;
}

std::optional<QString> descriptionForStore(const QString& cell) {
    if (cell.isEmpty())
        return std::nullopt;
    return toFilterApostrophe(cell.trimmed()).value_or(cell);
}
