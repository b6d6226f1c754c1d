// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/files/answerhistory.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

QString fieldToJson(const QVariant& field) {
    if (!field.isValid())
        return u"null"_s;
    if (field.userType() != QMetaType::QString)
        return QString::number(field.toLongLong());
    const QString words = field.toString();
    const bool isPlain = std::none_of(words.begin(), words.end(), [](QChar c) {
        return c < u' ' || c == u'"' || c == u'\\' || c.isSurrogate();
    });
    if (isPlain)
        return u'"' + words + u'"';
    const QByteArray array = QJsonDocument(QJsonArray{words}).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(array).sliced(1).chopped(1);
}

QString stateToJson(const std::optional<AnswerState>& state) {
    if (!state)
        return u"null"_s;
    return u'[' + fieldToJson(state->surveyid) + u',' + fieldToJson(state->weightage) + u',' +
           fieldToJson(state->content) + u']';
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
    QString json;
    for (const AnswerChange& change : changes) {
        json += json.isEmpty() ? u'[' : u',';
        json += u'[' + QString::number(change.questionid) + (change.isScore ? u",true,"_s : u",false,"_s) +
                stateToJson(change.before);
        if (change.after != change.before)
            json += u',' + stateToJson(change.after);
        json += u']';
    }
    return json.isEmpty() ? u"[]"_s : json + u']';
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
