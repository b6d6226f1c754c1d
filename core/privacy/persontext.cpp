// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/privacy/persontext.h"

#include "platform/failure/failure.h"

#include <QSaveFile>

using namespace Qt::StringLiterals;

namespace {

QString cell(const QString& tag, const QString& text) {
    return u"<%1 align=\"left\" valign=\"top\">"_s.arg(tag) + text.toHtmlEscaped().replace(u'\n', u"<br>"_s) +
           u"</" + tag + u'>';
}

QString rowOf(const PersonPart& part, const QVariantList& row) {
    QString cells;
    for (qsizetype i = 0; i < part.table.headings.size(); ++i)
        cells += cell(u"td"_s, tables::shownText(row.value(i)));
    return u"<tr>"_s + cells + u"</tr>\n";
}

QString tableOf(const PersonPart& part) {
    if (part.table.rows.empty())
        return u"<p>Nothing is stored.</p>\n"_s;
    QString page = u"<table border=\"1\" cellspacing=\"0\" cellpadding=\"3\">\n<tr>"_s;
    for (const QString& heading : part.table.headings)
        page += cell(u"th"_s, heading);
    page += u"</tr>\n"_s;
    for (const QVariantList& row : part.table.rows)
        page += rowOf(part, row);
    return page + u"</table>\n";
}

} // namespace

QString toPage(const Person& person, const std::vector<PersonPart>& parts, const QDate& day) {
    const QString title = u"What is stored about %1"_s.arg(person.title()).toHtmlEscaped();
    QString page = u"<!DOCTYPE html>\n<html><head><meta charset=\"utf-8\"><title>"_s + title +
                   u"</title></head>\n<body>\n<h2>" + title + u"</h2>\n<p>On " +
                   tables::shownText(day).toHtmlEscaped() + u".</p>\n";
    for (std::size_t i = 0; i < parts.size(); ++i)
        page += u"<h3><a name=\"%1\">"_s.arg(i) + parts[i].title.toHtmlEscaped() +
                u"</a></h3>\n<p><small>Searched: " + parts[i].searched.toHtmlEscaped() + u"</small></p>\n" +
                tableOf(parts[i]);
    return page + u"</body></html>\n";
}

tables::Table toOneTable(const std::vector<PersonPart>& parts) {
    tables::Table all{{u"Part"_s, u"Row"_s, u"Field"_s, u"Value"_s}, {}};
    for (const PersonPart& part : parts) {
        int number = 0;
        for (const QVariantList& row : part.table.rows) {
            ++number;
            for (qsizetype i = 0; i < row.size(); ++i)
                all.rows.push_back({part.title, number, part.table.headings[i], row[i]});
        }
    }
    return all;
}

void saveOwnersText(const QString& text, const QString& path) {
    QSaveFile file(path);
    const QByteArray bytes = text.toUtf8();
    if (!file.open(QIODevice::WriteOnly) ||
        !file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner) ||
        file.write(bytes) != bytes.size() || !file.commit())
        throw Failure(Failure::fileAccess, u"'%1' cannot be written: %2"_s.arg(path, file.errorString()));
}
