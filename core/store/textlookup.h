// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

#include <map>
#include <optional>
#include <vector>

/// Whether the store could take two of these different texts for equal, as it does with "On time?" and "on
/// TIME?". Some texts for which it is true differ in the store.
bool areConfusable(const QStringList& texts);

/// The texts in quotes with commas between, for use after `in`. None has an apostrophe.
QString toSqlTexts(const QStringList& texts);

/// Finds records by their texts, many by one select. Where the store's way to compare texts could matter,
/// each is looked up by a select of its own.
class TextLookup {
public:
    /// The records of a table or saved query by the texts of these fields. The condition may be empty,
    /// and may end with their order.
    TextLookup(QString table, std::vector<const char*> fields, QString condition, const char* wanted);

    /// Reads the records for what `find` will be asked, each a text for each field. Throws Failure.
    void readAll(const std::vector<QStringList>& keys);
    /// The wanted field of the first record with these texts, as text; empty without one. Throws Failure.
    QString find(const QStringList& texts) const;

private:
    QString select(const QString& textCondition) const;
    bool readTogether(const std::vector<QStringList>& keys);

    QString table;
    std::vector<const char*> fields;
    QString condition;
    const char* wanted;
    std::optional<std::map<QStringList, QString>> known; ///< those read together
};
