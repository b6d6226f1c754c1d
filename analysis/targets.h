// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/base/changedrow.h"

#include <QStringList>

#include <map>
#include <optional>
#include <vector>

// Targets of the Satisfaction Index, from 0 to 10 with two decimals at most. They are kept by parameter, for
// one customer or for all customers without a target of their own. A target of a deleted parameter or
// customer is left behind and shown nowhere. These throw Failure.

/// custid of the targets for all customers.
inline constexpr int allCustomers = 0;

/// A file of version 1 that could not be upgraded has none.
bool hasTargetTable();

using Target = std::optional<double>;

/// The targets for this customer, or for all, by paramid.
std::map<int, double> readTargets(int custid);

/// The target that holds for each of these parameters of a customer, by the parameter's name in small
/// letters: the customer's own before the one for all.
std::map<QString, double> targetsThatHold(const QString& customer, const QStringList& parameters);

/// "8.00"; empty without a target.
QString targetText(const Target& target);
/// The target of a typed text, with a point or a comma; none for a blank one. Nullopt for any other text.
std::optional<Target> targetOf(const QString& text);

/// Whether an index is below a target as both are shown, with two decimals.
bool isBelow(double index, double target);

/// What a user has changed.
struct TargetChange {
    int paramid = 0;
    QString parameter;
    Target before;
    Target mine;
};

/// Notes the targets that someone else has changed as well.
void findChangedTargets(int custid, const std::vector<TargetChange>& changes, Settlement& settlement);

/// Writes the changes in one transaction. Those of a deleted parameter are left out. Throws Refusal when the
/// customer has been deleted, and when a target is not as the settlement tells.
void saveTargets(int custid, const std::vector<TargetChange>& changes, const Settlement& settlement);
