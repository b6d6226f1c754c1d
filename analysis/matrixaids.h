// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/figures/quadrants.h"

#include <QDate>
#include <QStringList>

#include <map>
#include <optional>

namespace chart {
class MSChart;
}
namespace forms {
class ListView;
}

/// What helps to read the Performance Matrix, as the user has switched it on.
struct AidChoice {
    bool hasNames = false;    ///< a number and the parameter beside each point, and a legend
    bool hasGaps = false;     ///< the list by gap
    bool hasDiagonal = false; ///< a line where weightage and score are equal
    CrossHair crossHair = CrossHair::Middle;
    MatrixMeans own; ///< for CrossHair::Own
    QDate compared;  ///< arrows from or to another survey date; invalid: none
};

/// Shows it in the chart, and lists the points by their gap. Points are numbered from 1 as the details are
/// sorted.
class MatrixAids {
public:
    /// Takes the points of a survey date from `figures`, the chart with the parameters and unmoved figures of
    /// `drawn`, and reads the date compared with. Throws Failure.
    void show(chart::MSChart& drawn, chart::MSChart& figures, const AidChoice& choice,
              const QString& customer, const QDate& date);
    void clear(chart::MSChart& drawn);

    /// The points by their gap, the widest first, with the quadrants in words.
    void list(forms::ListView& view) const;
    /// Rebuilds reporttable with the same list, in order of wt: the number and name of the parameter, the
    /// weightage in responname, the score in question, the gap in tablename and the quadrant in Type. Throws
    /// Failure.
    void fillReport() const;
    /// The row of the chart in a row of the list; 0 for none.
    int chartRow(int listRow) const;

    /// "means: score 4.05, weightage 4.30"; empty in the middle of the scale.
    QString crossHairText() const;
    /// How an improvement action on a point begins; empty for a point that is not there.
    QString actionText(int chartRow) const;

private:
    struct Point {
        int row = 0; ///< of the chart
        int number = 0;
        QString parameter;
        MatrixMeans means;
        std::optional<MatrixMeans> compared;
    };

    void takePoints(chart::MSChart& figures, int rows);
    void compare(const QString& customer);
    void draw(chart::MSChart& drawn) const;
    QString titleText() const;
    QStringList listed(const Point& point) const;
    bool isComparedEarlier() const { return choice.compared < date; }

    AidChoice choice;
    QDate date;
    MatrixMeans crossHair;
    std::vector<Point> points; ///< by their gap
};
