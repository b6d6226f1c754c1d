// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tests/support/files.h"

#include <QRegularExpression>
#include <QStringList>

/// The text of each page of a PDF as read by pdftotext, with runs of blanks collapsed.
inline QStringList pdfPages(const QString& file) {
    const QByteArray text = outputOf(u"pdftotext"_s, {u"-layout"_s, u"-enc"_s, u"UTF-8"_s, file, u"-"_s});
    QStringList pages = QString::fromUtf8(text).split(u'\f');
    pages.removeLast(); // each page ends with a form feed
    for (QString& page : pages)
        page = page.simplified();
    return pages;
}

/// Fails unless the text contains the words in that order.
inline void expectInOrder(const QString& text, const QStringList& words) {
    qsizetype place = 0;
    for (const QString& word : words) {
        const qsizetype found = text.indexOf(word, place);
        ASSERT_GE(found, 0) << "'" << word << "' is missing or out of order in:\n" << text;
        place = found + word.size();
    }
}
