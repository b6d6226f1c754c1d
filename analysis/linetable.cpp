// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/linetable.h"

#include "core/store/store.h"
#include "core/store/textlookup.h"

using namespace Qt::StringLiterals;

std::map<QDate, int> dateOrder() {
    std::map<QDate, int> places;
    ado::Recordset order(u"select * from surveydateorder"_s, *cnnMain);
    for (; !order.Eof(); order.MoveNext())
        places.try_emplace(order["sdate"].Value().toDate(), order["roworder"].Value().toInt());
    return places;
}

std::vector<std::vector<LinePoint>> linesOf(const QStringList& parameters) {
    std::map<QString, std::vector<LinePoint>> points;
    const auto read = [](const QString& condition, const auto& take) {
        ado::Recordset line(
            u"select * from linetable where "_s + condition + u"sindex <> 0 order by sdate asc", *cnnMain);
        for (; !line.Eof(); line.MoveNext())
            take(line["Parameter"].Text(),
                 LinePoint{line["sdate"].Value().toDate(), line["sindex"].Value().toFloat()});
    };
    QStringList names = parameters;
    read({}, [&](const QString& parameter, const LinePoint& point) {
        points[parameter].push_back(point);
        names << parameter;
    });
    const bool isClear = !areConfusable(names);
    std::vector<std::vector<LinePoint>> lines;
    for (const QString& parameter : parameters) {
        lines.emplace_back();
        if (isClear)
            lines.back() = points[parameter];
        else
            read(u"parameter='"_s + parameter + u"' and ",
                 [&](const QString&, const LinePoint& point) { lines.back().push_back(point); });
    }
    return lines;
}
