// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/files/responsesettings.h"

#include "core/store/store.h"
#include "core/store/textlookup.h"
#include "platform/ado/session.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

QString ResponseSettings::defaultSubject() {
    return u"Reminder: our survey of {survey date}"_s;
}

QString ResponseSettings::defaultText() {
    return u"Dear {respondent},\n\n"
           "we have not received your answers to our survey of {survey date} yet. We hoped to have them by "
           "{due}. The questionnaire is attached once more; it takes a few minutes to fill in.\n\n"
           "If you have returned it already, please disregard this message.\n\n"
           "Thank you for your help.\n\n"
           "{company}"_s;
}

namespace {

/// The default for what is no number, as an entry by hand can be.
int numberOf(const QString& content, int least, int most, int standard) {
    bool isNumber = false;
    const int number = content.toInt(&isNumber);
    return isNumber ? qBound(least, number, most) : standard;
}

} // namespace

ResponseSettings readResponseSettings() {
    using namespace responsesetting;
    ResponseSettings settings;
    if (!cnnMain->session()->isTable(u"programsetting"_s))
        return settings;
    ado::Recordset stored(
        u"select * from programsetting where name in ("_s +
            toSqlTexts({days.toString(), target.toString(), subject.toString(), text.toString()}) + u')',
        *cnnMain);
    for (; !stored.Eof(); stored.MoveNext()) {
        const QString name = stored["name"].Text();
        const QString content = stored["content"].Text();
        if (name == days)
            settings.days = numberOf(content, 1, 365, settings.days);
        else if (name == target)
            settings.target = numberOf(content, 0, 100, settings.target);
        else if (!content.trimmed().isEmpty())
            (name == subject ? settings.subject : settings.text) = content;
    }
    return settings;
}

QStringList reminderFields() {
    return {u"respondent"_s, u"customer"_s, u"survey date"_s, u"due"_s, u"company"_s};
}

/// In one pass: a value may have braces of its own.
QString filledIn(const QString& text, const std::map<QString, QString>& values) {
    static const QRegularExpression field(u"\\{([^{}]*)\\}"_s);
    QString filled;
    qsizetype end = 0;
    for (const QRegularExpressionMatch& match : field.globalMatch(text)) {
        const auto value = values.find(match.captured(1));
        filled += text.mid(end, match.capturedStart() - end) +
                  (value == values.end() ? match.captured() : value->second);
        end = match.capturedEnd();
    }
    return filled + text.mid(end);
}
