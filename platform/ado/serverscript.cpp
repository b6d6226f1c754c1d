// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ado/serverscript.h"

#include <QRegularExpression>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace ado {
namespace {

QRegularExpression pattern(const QString& text) {
    return QRegularExpression(text, QRegularExpression::CaseInsensitiveOption);
}

/// Where the literal, name or comment that begins at `start` ends; `start` for anything else.
qsizetype endOfWhole(QStringView text, qsizetype start) {
    const QChar c = text[start];
    qsizetype end = start;
    if (c == u'\'' || c == u'"')
        end = text.indexOf(c, start + 1) + 1;
    else if (text.sliced(start).startsWith(u"--"))
        end = text.indexOf(u'\n', start);
    else
        return start;
    return end <= start ? text.size() : end;
}

QString serverTable(QString sql) {
    const QString texts = u"MEDIUMTEXT COLLATE "_s;
    const std::pair<QString, QString> types[] = {
        {u"\\bINTEGER PRIMARY KEY AUTOINCREMENT"_s, u"INTEGER AUTO_INCREMENT PRIMARY KEY"_s},
        {u"\\bTEXT COLLATE UNICODE_CI PRIMARY KEY"_s,
         u"VARCHAR(255) COLLATE "_s + serverCollation + u" NOT NULL UNIQUE"},
        {u"\\bTEXT COLLATE UNICODE_CI"_s, texts + serverCollation},
        {u"\\bTEXT\\b(?! COLLATE)"_s, texts + u"utf8mb4_nopad_bin"},
        {u"\\bYESNO\\b"_s, u"TINYINT"_s},
        {u"\\bSINGLE\\b"_s, u"FLOAT"_s},
        {u"\\bDECIMAL\\s*\\([^)]*\\)"_s, u"DOUBLE"_s}, // a file keeps all digits
        {u"\\blength\\("_s, u"char_length("_s}};
    for (const auto& [sqlite, server] : types)
        sql.replace(pattern(sqlite), server);
    if (!sql.contains(u"PRIMARY KEY"_s, Qt::CaseInsensitive))
        sql.insert(sql.indexOf(u'(') + 1, u"rowid BIGINT INVISIBLE AUTO_INCREMENT PRIMARY KEY,"_s);
    return sql + u" ENGINE=InnoDB DEFAULT CHARSET=utf8mb4 COLLATE="_s + serverCollation;
}

QString serverIndex(const QRegularExpressionMatch& index, const IsText& isText) {
    QStringList columns;
    for (QString column : index.captured(3).split(u',')) {
        column = column.trimmed();
        const bool text = isText(index.captured(2), QString(column).remove(u'"'));
        columns << (text ? column + u"(255)" : column);
    }
    return u"CREATE INDEX "_s + index.captured(1) + u" ON " + index.captured(2) + u" (" +
           columns.join(u", "_s) + u')';
}

} // namespace

QString serverSettings() {
    return u"set session sql_mode='ANSI_QUOTES,PIPES_AS_CONCAT,NO_BACKSLASH_ESCAPES,STRICT_ALL_TABLES,"
           "NO_ENGINE_SUBSTITUTION', collation_connection='"_s +
           serverCollation +
           u"', autocommit=1, innodb_lock_wait_timeout=2, lock_wait_timeout=2, join_cache_level=0";
}

QList<ScriptStatement> scriptStatements(const QByteArray& script) {
    const QString text = QString::fromUtf8(script);
    QList<ScriptStatement> result;
    ScriptStatement current;
    int line = 1;
    for (qsizetype i = 0; i < text.size();) {
        const qsizetype whole = endOfWhole(text, i);
        const QStringView part = QStringView(text).sliced(i, whole > i ? whole - i : 1);
        if (part == u";") {
            result << current;
            current = {};
        } else if (!part.startsWith(u"--") && !(current.sql.isEmpty() && part[0].isSpace())) {
            if (current.sql.isEmpty())
                current.line = line;
            current.sql += part;
        }
        line += static_cast<int>(part.count(u'\n'));
        i += part.size();
    }
    current.sql = current.sql.trimmed();
    if (!current.sql.isEmpty())
        result << current;
    return result;
}

QString serverStatement(const QString& sqlite, const IsText& isText) {
    static const QRegularExpression version = pattern(u"^PRAGMA user_version\\s*=\\s*(\\d+)"_s);
    static const QRegularExpression index =
        pattern(u"(?s)^CREATE INDEX (\\S+)\\s+ON\\s+(\\S+)\\s*\\((.*)\\)\\s*$"_s);
    static const QRegularExpression crossJoin = pattern(u"\\bCROSS\\s+JOIN\\b"_s);
    if (const auto found = version.match(sqlite); found.hasMatch())
        return u"CREATE OR REPLACE SQL SECURITY INVOKER VIEW "_s + versionView + u" AS SELECT " +
               found.captured(1) + u" AS version";
    if (sqlite.startsWith(u"PRAGMA", Qt::CaseInsensitive))
        return {};
    if (sqlite.startsWith(u"CREATE TABLE", Qt::CaseInsensitive))
        return serverTable(sqlite);
    if (const auto found = index.match(sqlite); found.hasMatch())
        return serverIndex(found, isText);
    if (!sqlite.startsWith(u"CREATE VIEW", Qt::CaseInsensitive))
        return sqlite;
    // Read with the rights of the user who reads, so that it outlives the account that made it.
    return u"CREATE SQL SECURITY INVOKER"_s + QString(sqlite).replace(crossJoin, u"STRAIGHT_JOIN"_s).mid(6);
}

} // namespace ado
