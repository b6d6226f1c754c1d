// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <functional>
#include <map>
#include <vector>

/// A field that the user has changed and that someone else has changed as well since it was read. The texts
/// are those shown.
struct ChangedField {
    QString name;
    QString before; ///< as it was read
    QString stored;
    QString mine;
    bool operator==(const ChangedField&) const = default;
};

/// The fields of one row that two people have changed. Changes of different fields of a row do not conflict.
struct ChangedRow {
    QString name; ///< of the row, such as "Customer Name: Acme"
    std::vector<ChangedField> fields;
    bool operator==(const ChangedRow&) const = default;
};

/// What is to become of a changed row: the save is given up and nothing is lost, the stored texts stay, or
/// the user's are written.
enum class Keep { Both, Stored, Mine };

/// Asks the user, by default with frmChangedMeanwhile. Must not be called within a transaction. A test
/// replaces it.
extern std::function<Keep(const ChangedRow&)> changedHook;

/// The user's answers about the rows that a save would change and someone else has changed. First all rows
/// are compared and noted, then the user is asked, then they are written in a transaction, which compares
/// them again.
class Settlement {
public:
    /// Notes a row by a key of its own; one without fields is none.
    void note(const QString& key, const ChangedRow& row);
    /// Asks about each noted row; false when the user goes back to editing.
    bool ask();
    /// Throws Refusal when the row is not as the user was asked about.
    void require(const QString& key, const ChangedRow& row) const;
    /// Whether that field of the row stays as it is stored.
    bool isLeft(const QString& key, const QString& field) const;
    /// Whether any field does.
    bool leavesAny() const;
    void clear() { rows.clear(); }

private:
    struct Settled {
        ChangedRow row;
        Keep keep = Keep::Both;
    };
    std::map<QString, Settled> rows;
};

/// Adds a field to the row if the user has changed it and someone else has too, to another text.
void addIfChanged(ChangedRow& row, const ChangedField& field);
