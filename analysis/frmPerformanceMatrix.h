// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/forms/form.h"

#include <memory>

namespace Ui {
class frmPerformanceMatrix;
}

/// Shows every parameter of one survey date as a point, mean score across and mean weightage up, in four
/// quadrants, and lists the same figures in a grid. Short, the form shows the choice only; tall, chart and
/// grid below it.
class frmPerformanceMatrix : public forms::DefaultForm<frmPerformanceMatrix> {
    Q_OBJECT

public:
    ~frmPerformanceMatrix() override;

    void toFillCustomername();
    void toFillSurveyDateList();

    /// Rebuilds scattertable: a row for each parameter with a rating on the chosen date.
    void toFillTable();
    /// Shows scattertable in the chart and the grid; coinciding points are moved a little apart.
    void toDrawChart();
    /// The chart's type and markers.
    void toSetPoint();
    /// Keeps the unmoved figures and the names of the points for mschart's tips.
    void toDrawOnHiddenChart();
    /// Fills the grid from scattertable, by parameter. A failure is thrown.
    void setGrid();
    /// Colours the figures of a row by the quadrant of a point. The rows stand by parameter and the points
    /// come by score, so the colour of a row is as a rule another parameter's.
    void toColorGridRow(double score, double weightage, int row);

private:
    friend class DefaultForm<frmPerformanceMatrix>;
    frmPerformanceMatrix();
    void onLoad() override;
    void connectEvents();

    void cmdCustomerName_Click();
    void lstSurveyDates_Click();
    void cmdView();
    void cmdPrint();
    void mschart_PointActivated(int series, int point);

    void shorten(int twips);
    void expand();
    QString customer() const;
    int frameHeight() const;
    void fillMeans();
    void fillHiddenChart();
    QString pointText(int series, int point) const;

    std::unique_ptr<Ui::frmPerformanceMatrix> ui;
};
