// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <functional>
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
