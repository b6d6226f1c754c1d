// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/matrixaids.h"
#include "analysis/matrixbasis.h"
#include "platform/forms/form.h"
#include "platform/tables/table.h"

#include <memory>

namespace Ui {
class frmPerformanceMatrix;
}

/// Plots each parameter of one survey date as a point (x: mean score, y: mean weightage) in four quadrants
/// and lists the figures in a grid. Before there is a result, the form is short and shows the choice only.
class frmPerformanceMatrix : public forms::DefaultForm<frmPerformanceMatrix> {
    Q_OBJECT

public:
    ~frmPerformanceMatrix() override;

    void toFillCustomername();
    void toFillSurveyDateList();

    /// Rebuilds scattertable: one row for each parameter with a rating on the chosen date.
    void toFillTable();
    /// Shows scattertable in the chart and the grid; equal points are moved slightly apart.
    void toDrawChart();
    /// Sets the chart's type and markers.
    void toSetPoint();
    /// Fills the hidden chart with the parameter names and unmoved figures, for the tips of mschart.
    void toDrawOnHiddenChart();
    /// Fills the grid from scattertable, sorted by parameter. Throws Failure.
    void setGrid();
    /// Colours the figures of a row by the quadrant of a point. Rows are sorted by parameter but points by
    /// score, so the colour usually belongs to another parameter.
    void toColorGridRow(double score, double weightage, int row);
    /// Shows what stands behind the points, when that is switched on.
    void toShowBasis();
    /// Draws the chosen reading aids, and lists the points by their gap when that is switched on.
    void toShowAids();

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

    void chkBasis();
    void newAction(int chartRow);
    void addNewAction();
    void shorten(int twips);
    void expand();
    QString customer() const;
    int frameHeight() const;
    void fillMeans();
    void fillHiddenChart();
    QString pointText(int series, int point) const;
    tables::Table pointTable() const;

    MatrixAids aids;
    MatrixBasis basis;
    bool isDrawn = false; ///< both charts show the same points
    int filledOn = 0;     ///< the connection of the work tables
    std::unique_ptr<Ui::frmPerformanceMatrix> ui;
};
