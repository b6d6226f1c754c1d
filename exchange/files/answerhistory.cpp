// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/files/answerhistory.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

void appendField(QString& json, const QVariant& field) {
    if (!field.isValid()) {
        json += u"null"_s;
        return;
    }
    if (field.userType() != QMetaType::QString) {
        json += QString::number(field.toLongLong());
        return;
    }
    const QString words = field.toString();
    const bool isPlain = std::none_of(words.begin(), words.end(), [](QChar c) {
        return c < u' ' || c == u'"' || c == u'\\' || c.isSurrogate();
    });
    if (isPlain)
        json += u'"' + words + u'"';
    else
        json += QString::fromUtf8(QJsonDocument(QJsonArray{words}).toJson(QJsonDocument::Compact))
                    .sliced(1)
                    .chopped(1);
}

void appendState(QString& json, const std::optional<AnswerState>& state) {
    if (!state) {
        json += u"null"_s;
        return;
    }
    for (const auto& [before, field] :
         {std::pair(u'[', &state->surveyid), {u',', &state->weightage}, {u',', &state->content}}) {
        json += before;
        appendField(json, *field);
    }
    json += u']';
}

QVariant fieldFromJson(const QJsonValue& value) {
    return value.isNull() ? QVariant() : value.toVariant();
}

std::optional<AnswerState> stateFromJson(const QJsonValue& value) {
    if (!value.isArray())
        return std::nullopt;
    const QJsonArray fields = value.toArray();
    return AnswerState{fieldFromJson(fields.at(0)), fieldFromJson(fields.at(1)), fieldFromJson(fields.at(2))};
}

} // namespace

/// Put together as text: QJsonArray would take a tenth of the reading of a file.
QString toJson(const std::vector<AnswerChange>& changes) {
    constexpr qsizetype usualLength = 40; // of an answer without words
    QString json = u"["_s;
    json.reserve(qsizetype(changes.size()) * usualLength);
    for (const AnswerChange& change : changes) {
        json += json.size() > 1 ? u",["_s : u"["_s;
        json += QString::number(change.questionid);
        json += change.isScore ? u",true,"_s : u",false,"_s;
        appendState(json, change.before);
        if (change.after != change.before) {
            json += u',';
            appendState(json, change.after);
        }
        json += u']';
    }
    return json + u']';
}

std::vector<AnswerChange> changesFromJson(const QString& json) {
    std::vector<AnswerChange> changes;
    for (const QJsonValue& entry : QJsonDocument::fromJson(json.toUtf8()).array()) {
        const QJsonArray fields = entry.toArray();
        const auto before = stateFromJson(fields.at(2));
        changes.push_back({fields.at(0).toInt(), fields.at(1).toBool(), before,
                           fields.size() > 3 ? stateFromJson(fields.at(3)) : before});
    }
    return changes;
}
