// SPDX-License-Identifier: GPL-3.0-or-later
#include "reference/gridpaste.h"

namespace {

/// Reads the quoted cell at a position and moves the position past it. Returns false and reads nothing if the
/// quotes do not enclose the whole cell.
bool takeQuoted(const QString& text, qsizetype& at, QString& cell) {
    QString content;
    for (qsizetype i = at + 1; i < text.size(); ++i) {
        if (text[i] != u'"') {
            content += text[i];
        } else if (i + 1 < text.size() && text[i + 1] == u'"') {
            content += text[i++];
        } else {
            if (i + 1 < text.size() && text[i + 1] != u'\t' && text[i + 1] != u'\n')
                return false;
            cell = content;
            at = i + 1;
            return true;
        }
    }
    return false;
}

} // namespace

std::vector<QStringList> cellsOfBlock(const QString& block) {
    QString text = block;
    text.replace(QLatin1StringView("\r\n"), QLatin1StringView("\n")).replace(u'\r', u'\n');
    if (text.endsWith(u'\n'))
        text.chop(1);
    std::vector<QStringList> rows{{}};
    QString cell;
    for (qsizetype at = 0;; ++at) {
        const bool begins = cell.isEmpty() && at < text.size() && text[at] == u'"';
        if (begins)
            takeQuoted(text, at, cell);
        if (at < text.size() && text[at] != u'\t' && text[at] != u'\n') {
            cell += text[at];
            continue;
        }
        rows.back() << cell;
        cell.clear();
        if (at >= text.size())
            return rows;
        if (text[at] == u'\n')
            rows.emplace_back();
    }
}

QString withoutControlCharacters(const QString& text) {
    QString clean;
    bool inRun = false;
    for (const QChar c : text) {
        const bool control = c.category() == QChar::Other_Control || c == QChar::LineSeparator ||
                             c == QChar::ParagraphSeparator;
        if (!control)
            clean += c;
        else if (!inRun)
            clean += u' ';
        inRun = control;
    }
    return clean;
}
