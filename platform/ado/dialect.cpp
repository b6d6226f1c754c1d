// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ado/dialect.h"

#include "platform/ado/error.h"
#include "platform/ado/value.h"

#include <QDate>
#include <QVarLengthArray>

#include <array>

using namespace Qt::StringLiterals;

namespace ado {
namespace {

enum class Kind { Space, Word, Number, Text, Quoted, Date, Symbol };

struct Token {
    Kind kind;
    QStringView text;

    bool is(QLatin1StringView word) const {
        return kind != Kind::Text && text.compare(word, Qt::CaseInsensitive) == 0;
    }
};

[[noreturn]] void refuse(int number, const QString& description) {
    throw Failure(number, description);
}

/// On the stack for most statements: each look-up of the program is translated.
using Tokens = QVarLengthArray<Token, 96>;

class Scanner {
public:
    explicit Scanner(QStringView source) : text(source) {}

    Tokens tokens() {
        Tokens result;
        while (position < text.size())
            result.append(token());
        return result;
    }

private:
    Token token() {
        const QChar c = text[position];
        if (c.isSpace())
            return take(Kind::Space, [](QChar d) { return d.isSpace(); });
        if (c.isLetter() || c == u'_')
            return take(Kind::Word, [](QChar d) { return d.isLetterOrNumber() || d == u'_'; });
        if (c.isDigit())
            return take(Kind::Number, [](QChar d) { return d.isLetterOrNumber() || d == u'.'; });
        switch (c.unicode()) {
        case u'\'':
            return closed(Kind::Text, u'\'', u"Syntax error in string in query expression"_s);
        case u'#':
            return closed(Kind::Date, u'#', u"Syntax error in date in query expression"_s);
        case u'"':
        case u'`':
            return closed(Kind::Quoted, c, u"Syntax error: a name in quotes is not closed"_s);
        case u'[':
            return closed(Kind::Quoted, u']', u"Syntax error: a name in brackets is not closed"_s);
        default:
            return symbol();
        }
    }

    template <class Belongs> Token take(Kind kind, Belongs belongs) {
        const qsizetype start = position;
        while (position < text.size() && belongs(text[position]))
            ++position;
        return {kind, text.sliced(start, position - start)};
    }

    /// A literal or name from its opening to its closing mark; a doubled closing mark is a literal one.
    Token closed(Kind kind, QChar mark, const QString& complaint) {
        const qsizetype start = position++;
        for (;;) {
            const qsizetype end = text.indexOf(mark, position);
            if (end < 0)
                refuse(number::syntax, complaint + u" '" + text.sliced(start) + u"'.");
            position = end + 1;
            if (kind == Kind::Date || position >= text.size() || text[position] != mark)
                return {kind, text.sliced(start, position - start)};
            ++position;
        }
    }

    Token symbol() {
        const QStringView two = text.sliced(position, qMin<qsizetype>(2, text.size() - position));
        if (two == u"--" || two == u"/*")
            refuse(number::syntax, u"Syntax error: comments are not allowed in a statement."_s);
        const bool pair = two == u"<=" || two == u">=" || two == u"<>" || two == u"!=" || two == u"==";
        const qsizetype length = pair ? 2 : 1;
        const Token result{Kind::Symbol, text.sliced(position, length)};
        position += length;
        return result;
    }

    QStringView text;
    qsizetype position = 0;
};

/// The tokens of the one statement, without the semicolon that may end it.
Tokens statementTokens(QStringView text) {
    Tokens tokens = Scanner(text).tokens();
    qsizetype end = 0;
    while (end < tokens.size() && !tokens[end].is(";"_L1))
        ++end;
    for (qsizetype i = end + 1; i < tokens.size(); ++i) {
        if (tokens[i].kind != Kind::Space)
            refuse(number::afterEnd, u"Characters found after end of SQL statement."_s);
    }
    tokens.resize(end);
    return tokens;
}

/// The date of M/d/yyyy, with or without leading zeros.
QDate americanDate(QStringView text) {
    const QList<QStringView> parts = text.split(u'/');
    if (parts.size() != 3 || parts[0].size() > 2 || parts[1].size() > 2 || parts[2].size() != 4)
        return {};
    std::array<int, 3> numbers{};
    for (std::size_t i = 0; i < 3; ++i) {
        for (const QChar c : parts[static_cast<qsizetype>(i)]) {
            if (c < u'0' || c > u'9')
                return {};
            numbers[i] = numbers[i] * 10 + c.unicode() - u'0';
        }
    }
    return {numbers[2], numbers[0], numbers[1]};
}

QString isoDate(QStringView literal) {
    const QDate date = americanDate(literal.sliced(1, literal.size() - 2).trimmed());
    if (!date.isValid())
        refuse(number::syntax, u"Syntax error in date in query expression '" + literal + u"'.");
    return toIso(date);
}

QString unquoted(QStringView literal) {
    return literal.sliced(1, literal.size() - 2).toString().replace(u"''"_s, u"'"_s);
}

bool isComparison(QStringView symbol) {
    return symbol == u"=" || symbol == u"<" || symbol == u">" || symbol == u"<=" || symbol == u">=" ||
           symbol == u"<>";
}

QVariant numberOf(QStringView literal) {
    bool whole = false;
    const qlonglong value = literal.toLongLong(&whole);
    if (whole)
        return value;
    bool real = false;
    const double fraction = literal.toDouble(&real);
    return real ? QVariant(fraction) : QVariant();
}

/// The first words and symbols of a statement, as the indices of their tokens.
class Beginning {
public:
    explicit Beginning(const Tokens& statement) : tokens(statement) {
        for (qsizetype i = 0; i < tokens.size() && count < at.size(); ++i) {
            if (tokens[i].kind != Kind::Space)
                at[count++] = i;
        }
    }
    bool reads(std::size_t place, QLatin1StringView word) const {
        return place < count && tokens[at[place]].is(word);
    }
    /// The star of "delete * from"; -1 for any other statement.
    qsizetype starToDrop() const {
        return reads(0, "delete"_L1) && reads(1, "*"_L1) && reads(2, "from"_L1) ? at[1] : -1;
    }
    /// The table of "select * from TABLE [where ...] [order by ...]"; empty for any other statement.
    QStringView selectedTable() const {
        const bool all = count > 3 && reads(0, "select"_L1) && reads(1, "*"_L1) && reads(2, "from"_L1);
        const bool one = all && tokens[at[3]].kind == Kind::Word &&
                         (count == 4 || reads(4, "where"_L1) || reads(4, "order"_L1));
        return one ? tokens[at[3]].text : QStringView();
    }
    bool selectsWholeTable() const { return count == 4 && !selectedTable().isEmpty(); }

private:
    const Tokens& tokens;
    std::array<qsizetype, 5> at{};
    std::size_t count = 0;
};

QVariant parameterOf(const Token& token, QStringView before, Target target) {
    if (token.kind == Kind::Text) {
        const bool escapes = target == Target::MariaDb && before.compare("like"_L1, Qt::CaseInsensitive) == 0;
        return escapes ? unquoted(token.text).replace(u"\\"_s, u"\\\\"_s) : unquoted(token.text);
    }
    if (token.kind == Kind::Date)
        return isoDate(token.text);
    if (token.kind == Kind::Number && isComparison(before))
        return numberOf(token.text);
    return {};
}

void appendWord(QString& sql, const Token& word, QStringView before, Target target) {
    if (before == u".")
        sql += u'"' + word.text + u'"';
    else if (word.is("true"_L1))
        sql += u"-1";
    else if (word.is("false"_L1))
        sql += u"0";
    else if (target == Target::MariaDb)
        sql += word.text.toString().toLower();
    else
        sql += word.text;
}

/// Appends the engine's text for a token that is no parameter.
void append(QString& sql, const Token& token, QStringView before, Target target) {
    if (token.kind == Kind::Word)
        appendWord(sql, token, before, target);
    else if (token.kind == Kind::Quoted && token.text.startsWith(u'['))
        sql += quoted(token.text.sliced(1, token.text.size() - 2).toString());
    else if (token.kind == Kind::Symbol && token.text == u"==")
        sql += u'=';
    else
        sql += token.text;
}

} // namespace

QString quoted(const QString& name) {
    return u'"' + QString(name).replace(u'"', u"\"\""_s) + u'"';
}

Statement translate(const QString& text, Target target) {
    const Tokens tokens = statementTokens(text);
    const Beginning beginning(tokens);
    const qsizetype dropped = beginning.starToDrop();
    Statement result{.table = beginning.selectedTable().toString(),
                     .isWholeTable = beginning.selectsWholeTable()};
    if (target == Target::MariaDb)
        result.table = result.table.toLower();
    result.sql.reserve(text.size());
    QStringView before; // the last token that is no blank
    for (qsizetype i = 0; i < tokens.size(); ++i) {
        const Token& token = tokens[i];
        if (const QVariant parameter = parameterOf(token, before, target); parameter.isValid()) {
            result.parameters.append(parameter);
            result.sql += u'?';
        } else if (i != dropped) {
            append(result.sql, token, before, target);
        }
        if (token.kind != Kind::Space)
            before = token.text;
    }
    return result;
}

} // namespace ado
