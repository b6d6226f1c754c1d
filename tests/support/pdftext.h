// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QProcess>
#include <QRegularExpression>
#include <QStringList>
#include <gtest/gtest.h>

/// The text of each page of a PDF, blanks run together, as another program reads it.
inline QStringList pdfPages(const QString& file) {
    QProcess reader;
    reader.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), QStringLiteral("-enc"),
                                               QStringLiteral("UTF-8"), file, QStringLiteral("-")});
    EXPECT_TRUE(reader.waitForFinished()) << "pdftotext (poppler-utils) is missing";
    EXPECT_EQ(reader.exitCode(), 0) << reader.readAllStandardError().toStdString();
    QStringList pages = QString::fromUtf8(reader.readAllStandardOutput()).split(u'\f');
    pages.removeLast(); // each page ends with a form feed
    for (QString& page : pages)
        page = page.simplified();
    return pages;
}

/// The words stand in the text, in that order.
inline void expectInOrder(const QString& text, const QStringList& words) {
    qsizetype place = 0;
    for (const QString& word : words) {
        const qsizetype found = text.indexOf(word, place);
        ASSERT_GE(found, 0) << "'" << word.toStdString() << "' is missing or out of order in:\n"
                            << text.toStdString();
        place = found + word.size();
    }
}
