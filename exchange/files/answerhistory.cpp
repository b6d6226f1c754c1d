// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/files/answerhistory.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace {

QJsonValue stateToJson(const std::optional<AnswerState>& state) {
    if (!state)
        return {};
    return QJsonArray{QJsonValue::fromVariant(state->surveyid), QJsonValue::fromVariant(state->weightage),
                      QJsonValue::fromVariant(state->content)};
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

QString toJson(const std::vector<AnswerChange>& changes) {
    QJsonArray all;
    for (const AnswerChange& change : changes)
        all.append(QJsonArray{change.questionid, change.isScore, stateToJson(change.before),
                              stateToJson(change.after)});
    return QString::fromUtf8(QJsonDocument(all).toJson(QJsonDocument::Compact));
}

std::vector<AnswerChange> changesFromJson(const QString& json) {
    std::vector<AnswerChange> changes;
    for (const QJsonValue& entry : QJsonDocument::fromJson(json.toUtf8()).array()) {
        const QJsonArray fields = entry.toArray();
        changes.push_back({fields.at(0).toInt(), fields.at(1).toBool(), stateFromJson(fields.at(2)),
                           stateFromJson(fields.at(3))});
    }
    return changes;
}
