// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/dategroups.h"
#include "analysis/indexbasis.h"
#include "analysis/indextargets.h"
#include "analysis/linetable.h"
#include "platform/forms/form.h"
#include "platform/tables/table.h"

#include <QDate>

#include <map>
#include <memory>
#include <vector>

namespace Ui {
class frmSatisfactionIndex;
}

namespace chart {
class DataArray;
}

/// Computes the Satisfaction Index of the chosen parameters on each survey date of a customer and plots one
/// line for each parameter. Changing the parameters or dates hides the chart, since it no longer matches the
/// choice.
class frmSatisfactionIndex : public forms::DefaultForm<frmSatisfactionIndex> {
    Q_OBJECT

public:
    ~frmSatisfactionIndex() override;

    void toFillCustomername();
    void toFillParameterName();
    void toFillSurveyDateList();

    /// Rebuilds linetable: one row for each chosen parameter and survey date from dtFrom to dtTo, both
    /// included, with the index of all answers to the parameter's questions on that date.
    void toFillTable();
    /// Returns whether linetable has an index other than 0.
    bool toCheckIndexRecords();
    /// Rebuilds surveydateorder: the dates with an index other than 0, numbered from 1 for the earliest.
    void toFillSurveyDateOrder();
    /// Fills lstParameter from mscharttry. Throws Failure.
    void toFillParameters();

    /// Adds an empty row to the chart for each date in surveydateorder.
    void toPrepareChartRows();
    /// Fills the chart from linetable: one column for each chosen parameter, even if it has no index.
    void toDrawChart();
    /// Shows what stands behind the points of the chart, when that is switched on.
    void toShowBasis();
    /// Shows the targets in the chart, when that is switched on.
    void toShowTargets();

private:
    friend class DefaultForm<frmSatisfactionIndex>;
    frmSatisfactionIndex();
    void onLoad() override;
    void connectEvents();

    void cmdCustomerName_Click();
    void lstParameter_DblClick();
    void cmdView();
    void cmdPrint();
    void mschart_PointActivated(int series, int point);

    void chkBasis();
    void chkTargets();
    void collapse();
    tables::Table pointTable() const;
    void expand();
    QString customer() const;
    QStringList selectedParameters() const;
    void fillLines() const;
    void drawSeries(const QString& parameter, const std::vector<LinePoint>& line,
                    const std::map<QDate, int>& places, int series, chart::DataArray& cells);
    void labelChart();
    void setMarkers();

    AnswerChoice shown;                    ///< what linetable was filled for
    std::vector<DateGroup> groups;         ///< of linetable
    std::vector<IndexBasis::Point> points; ///< of the chart
    IndexBasis basis;
    IndexTargets targets;
    int filledOn = 0; ///< the connection of the work tables
    std::unique_ptr<Ui::frmSatisfactionIndex> ui;
};
