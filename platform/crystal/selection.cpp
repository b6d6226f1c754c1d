// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/crystal/selection.h"

#include "platform/crystal/reportfailure.h"

#include <QDate>

using namespace Qt::StringLiterals;

namespace crystal {
namespace {

class Parser {
public:
    Parser(const QString& formula, const QString& source) : text(formula), file(source) {}

    std::vector<Condition> conditions() {
        std::vector<Condition> result;
        skipBlanks();
        if (atEnd())
            return result;
        result.push_back(condition());
        while (!atEnd()) {
            require(u"and");
            result.push_back(condition());
        }
        return result;
    }

private:
    Condition condition() {
        Condition result;
        require(u"{");
        result.table = upTo(u'.', u"a table's name and a point"_s);
        result.field = upTo(u'}', u"a field's name and }"_s);
        for (const QString& sign : {u">="_s, u"<="_s, u"="_s}) {
            if (result.comparison.isEmpty() && accept(sign))
                result.comparison = sign;
        }
        if (result.comparison.isEmpty())
            refuse(u"=, >= or <= is expected"_s);
        if (accept(u"date"))
            result.value = date();
        else if (result.comparison != u"=")
            refuse(u"a date is expected"_s);
        else
            result.value = quotedText();
        return result;
    }

    QDate date() {
        require(u"(");
        const qsizetype start = position;
        const int year = whole();
        require(u",");
        const int month = whole();
        require(u",");
        const int day = whole();
        const QString parts = text.mid(start, position - start);
        require(u")");
        const QDate result(year, month, day);
        if (!result.isValid())
            refuse(u"'"_s + parts + u"' is not a date: year, month and day are expected");
        return result;
    }

    QString quotedText() {
        const bool listed = accept(u"[");
        require(u"'");
        // Blanks at the beginning of the text belong to it.
        position = text.lastIndexOf(u'\'', position - 1) + 1;
        QString result = upTo(u'\'', u"a closing apostrophe"_s);
        if (listed)
            require(u"]");
        return result;
    }

    int whole() {
        const qsizetype start = position;
        while (!atEnd() && text[position] >= u'0' && text[position] <= u'9')
            ++position;
        bool valid = false;
        const int result = text.mid(start, position - start).toInt(&valid);
        if (!valid)
            refuse(u"a whole number is expected"_s);
        skipBlanks();
        return result;
    }

    QString upTo(QChar end, const QString& expected) {
        const qsizetype found = text.indexOf(end, position);
        if (found < 0)
            refuse(expected + u" is expected");
        QString result = text.mid(position, found - position);
        position = found + 1;
        skipBlanks();
        return result;
    }

    bool accept(QStringView token) {
        if (!QStringView(text).sliced(position).startsWith(token))
            return false;
        position += token.size();
        skipBlanks();
        return true;
    }
    void require(QStringView token) {
        if (!accept(token))
            refuse(u"'"_s + token + u"' is expected");
    }
    void skipBlanks() {
        while (!atEnd() && text[position].isSpace())
            ++position;
    }
    bool atEnd() const { return position >= text.size(); }

    [[noreturn]] void refuse(const QString& reason) const {
        const QString place = atEnd() ? u"its end"_s : u"'"_s + text.mid(position, 20) + u"'";
        throw reportFailure(
            file, 0,
            u"The selection formula cannot be read at %1: %2. The formula is: %3"_s.arg(place, reason, text));
    }

    const QString& text;
    const QString& file;
    qsizetype position = 0;
};

} // namespace

std::vector<Condition> parseSelection(const QString& formula, const QString& file) {
    return Parser(formula, file).conditions();
}

} // namespace crystal
