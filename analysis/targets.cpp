// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/targets.h"

#include "core/store/refusal.h"
#include "core/store/store.h"
#include "core/store/textlookup.h"
#include "core/store/transaction.h"

#include <QRegularExpression>

#include <cmath>

using namespace Qt::StringLiterals;
using Lock = ado::Recordset::Lock;

namespace {

/// The store keeps single precision.
Target storedTarget(ado::Recordset& record) {
    constexpr double hundredths = 100;
    if (record["target"].IsNull())
        return {};
    return std::round(record["target"].Value().toDouble() * hundredths) / hundredths;
}

QString ofChoice(int custid) {
    return custid == allCustomers ? u"custid is null"_s : u"custid="_s + QString::number(custid);
}

/// The records for this customer, or for all.
QString selectOf(int custid) {
    return u"select * from target where "_s + ofChoice(custid);
}

ChangedRow changedMeanwhile(const TargetChange& change, const Target& stored) {
    ChangedRow row{u"Parameter Name: "_s + change.parameter, {}};
    addIfChanged(row, {u"Target"_s, targetText(change.before), targetText(stored), targetText(change.mine)});
    return row;
}

/// The places of the records by parameter, the first of each.
std::map<int, std::size_t> placesOf(ado::Recordset& records) {
    std::map<int, std::size_t> places;
    for (; !records.Eof(); records.MoveNext())
        places.try_emplace(records["paramid"].Value().toInt(), records.Bookmark());
    return places;
}

std::map<int, double> storedTargets(const QString& sql) {
    std::map<int, double> targets;
    ado::Recordset records(sql, *cnnMain);
    for (; !records.Eof(); records.MoveNext()) {
        if (const Target target = storedTarget(records))
            targets.try_emplace(records["paramid"].Value().toInt(), *target);
    }
    return targets;
}

} // namespace

bool hasTargetTable() {
    return !cnnMain->IsFile() || cnnMain->SchemaVersion() > 1;
}

std::map<int, double> readTargets(int custid) {
    return storedTargets(selectOf(custid));
}

std::map<QString, double> targetsThatHold(const QString& customer, const QStringList& parameters) {
    std::map<QString, double> targets;
    if (parameters.isEmpty() || !hasTargetTable())
        return targets;
    ado::Recordset records(u"select parametername, target.custid, target from target "
                           "join parameter on parameter.paramid=target.paramid where parametername in ("_s +
                               toSqlTexts(parameters) + u") and (custid is null or custid=" +
                               QString::number(findCustomer(customer)) + u") order by custid desc",
                           *cnnMain);
    for (; !records.Eof(); records.MoveNext()) { // those for all customers come last
        if (const Target target = storedTarget(records))
            targets.try_emplace(records["parametername"].Text().toLower(), *target);
    }
    return targets;
}

QString targetText(const Target& target) {
    return target ? QString::number(*target, 'f', 2) : QString();
}

std::optional<Target> targetOf(const QString& text) {
    static const QRegularExpression number(u"^\\d{1,2}([.,]\\d{0,2})?$"_s);
    constexpr double highest = 10;
    const QString typed = text.trimmed();
    if (typed.isEmpty())
        return Target();
    const double target = QString(typed).replace(u',', u'.').toDouble();
    if (!number.match(typed).hasMatch() || target > highest)
        return std::nullopt;
    return Target(target);
}

bool isBelow(double index, double target) {
    constexpr double hundredths = 100;
    return std::round(index * hundredths) < std::round(target * hundredths);
}

void findChangedTargets(int custid, const std::vector<TargetChange>& changes, Settlement& settlement) {
    const std::map<int, double> stored = readTargets(custid);
    settlement.clear();
    for (const TargetChange& change : changes) {
        const auto found = stored.find(change.paramid);
        settlement.note(QString::number(change.paramid),
                        changedMeanwhile(change, found == stored.end() ? Target() : found->second));
    }
}

void saveTargets(int custid, const std::vector<TargetChange>& changes, const Settlement& settlement) {
    Transaction transaction;
    if (custid != allCustomers && !hasRecords(u"select * from customer where "_s + ofChoice(custid)))
        throw Refusal(u"The customer has been deleted meanwhile. Nothing has been saved."_s);
    ado::Recordset stored(selectOf(custid), *cnnMain, Lock::BatchOptimistic);
    const std::map<int, std::size_t> places = placesOf(stored);
    ado::Recordset parameters(u"select paramid from parameter"_s, *cnnMain);
    const std::map<int, std::size_t> known = placesOf(parameters);
    ado::Recordset added(u"select * from target"_s, *cnnMain, Lock::BatchOptimistic);
    QStringList removed;
    for (const TargetChange& change : changes) {
        const auto place = places.find(change.paramid);
        if (place != places.end())
            stored.setBookmark(place->second);
        const QString key = QString::number(change.paramid);
        settlement.require(key,
                           changedMeanwhile(change, place == places.end() ? Target() : storedTarget(stored)));
        if (settlement.isLeft(key, u"Target"_s) || !known.contains(change.paramid))
            continue;
        if (!change.mine) {
            removed << key;
        } else if (place != places.end()) {
            stored["target"] = *change.mine;
            stored.Update();
        } else {
            added.AddNew();
            added["paramid"] = change.paramid;
            if (custid != allCustomers)
                added["custid"] = custid;
            added["target"] = *change.mine;
            added.Update();
        }
    }
    cnnMain->UpdateBatch();
    if (!removed.isEmpty())
        cnnMain->Execute(u"delete * from target where paramid in ("_s + removed.join(u',') + u") and " +
                         ofChoice(custid));
    transaction.Commit();
}
