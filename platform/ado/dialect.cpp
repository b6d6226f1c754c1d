// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ado/dialect.h"

#include "platform/ado/error.h"

#include <QDate>

#include <array>
#include <vector>

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
    throw Failure({number, description});
}

class Scanner {
public:
    explicit Scanner(QStringView source) : text(source) {}

    std::vector<Token> tokens() {
        std::vector<Token> result;
        while (position < text.size())
            result.push_back(token());
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

    /// A literal or name from its opening mark to its closing one; a doubled closing mark stands for itself.
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
std::vector<Token> statementTokens(QStringView text) {
    std::vector<Token> tokens = Scanner(text).tokens();
    std::size_t end = 0;
    while (end < tokens.size() && !tokens[end].is(";"_L1))
        ++end;
    for (std::size_t i = end + 1; i < tokens.size(); ++i) {
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
    return date.toString(Qt::ISODate);
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

/// The tokens that are no blanks, as their indices.
std::vector<std::size_t> significant(const std::vector<Token>& tokens) {
    std::vector<std::size_t> result;
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        if (tokens[i].kind != Kind::Space)
            result.push_back(i);
    }
    return result;
}

} // namespace

Statement translate(const QString& text) {
    const std::vector<Token> tokens = statementTokens(text);
    const std::vector<std::size_t> at = significant(tokens);
    const bool deleteAll = at.size() > 2 && tokens[at[0]].is("delete"_L1) && tokens[at[1]].is("*"_L1) &&
                           tokens[at[2]].is("from"_L1);
    Statement result;
    QStringView before; // the last token that is no blank
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        const Token& token = tokens[i];
        QVariant parameter;
        if (token.kind == Kind::Text)
            parameter = unquoted(token.text);
        else if (token.kind == Kind::Date)
            parameter = isoDate(token.text);
        else if (token.kind == Kind::Number && isComparison(before))
            parameter = numberOf(token.text);

        if (parameter.isValid()) {
            result.parameters.append(parameter);
            result.sql += u'?';
        } else if (token.kind == Kind::Word && before == u".") {
            result.sql += u'"' + token.text + u'"';
        } else if (token.is("true"_L1)) {
            result.sql += u"-1";
        } else if (token.is("false"_L1)) {
            result.sql += u"0";
        } else if (!(deleteAll && i == at[1])) {
            result.sql += token.text;
        }
        if (token.kind != Kind::Space)
            before = token.text;
    }
    return result;
}

QString writableTable(const QString& text) {
    const std::vector<Token> tokens = statementTokens(text);
    const std::vector<std::size_t> at = significant(tokens);
    const auto is = [&](std::size_t i, QLatin1StringView word) {
        return i < at.size() && tokens[at[i]].is(word);
    };
    if (!is(0, "select"_L1) || !is(1, "*"_L1) || !is(2, "from"_L1) || at.size() < 4)
        return {};
    if (tokens[at[3]].kind != Kind::Word || (at.size() > 4 && !is(4, "where"_L1) && !is(4, "order"_L1)))
        return {};
    return tokens[at[3]].text.toString();
}

} // namespace ado
