// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/indextargets.h"

#include "core/store/store.h"
#include "core/store/worktable.h"
#include "platform/chart/mschart.h"

using namespace Qt::StringLiterals;

void IndexTargets::show(chart::MSChart& drawn, std::map<QString, double> targets,
                        const QStringList& parameters, const std::vector<IndexBasis::Point>& points) {
    known = std::move(targets);
    names = parameters;
    for (int number = 1; number <= drawn.SeriesCount(); ++number) {
        if (const Target target = targetOf(names.value(number - 1)))
            drawn.SeriesItem(number).ComparedWith = {*target, targetText(target),
                                                     u"Target: "_s + targetText(target)};
    }
    for (const IndexBasis::Point& point : points) {
        const Target target = targetOf(point.parameter);
        if (target && isBelow(point.index, *target))
            drawn.SeriesItem(point.series).MarkedRows.insert(point.row);
    }
}

void IndexTargets::clear(chart::MSChart& drawn) {
    known.clear();
    names.clear();
    for (int number = 1; number <= drawn.SeriesCount(); ++number) {
        drawn.SeriesItem(number).ComparedWith.reset();
        drawn.SeriesItem(number).MarkedRows.clear();
    }
}

Target IndexTargets::targetOf(const QString& parameter) const {
    const auto found = known.find(parameter.toLower());
    return found == known.end() ? Target() : found->second;
}

QString IndexTargets::textOf(int series) const {
    const Target target = targetOf(names.value(series - 1));
    return target ? u"\r\nTarget: "_s + targetText(target) : QString();
}

void IndexTargets::fillReport() const {
    fillWorkTable([this] {
        cnnMain->Execute(u"delete * from reporttable"_s);
        ado::Recordset lines(u"select * from linetable order by parameter, sdate"_s, *cnnMain);
        ado::Recordset rows(u"select * from reporttable"_s, *cnnMain, ado::Recordset::Lock::BatchOptimistic);
        for (; !lines.Eof(); lines.MoveNext()) {
            const double index = lines["sindex"].Value().toDouble();
            const Target target = targetOf(lines["Parameter"].Text());
            rows.AddNew();
            rows["responname"] = lines["custname"].Value();
            rows["Parameter"] = lines["Parameter"].Value();
            rows["sdate"] = lines["sdate"].Value();
            rows["tablename"] = index == 0 ? u"not rated"_s : QString::number(index, 'f', 2);
            rows["question"] = targetText(target);
            if (target && index != 0)
                rows["Type"] = isBelow(index, *target) ? u"below target"_s : u"target met"_s;
            rows.Update();
        }
    });
}
