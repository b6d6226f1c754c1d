// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/figures/satisfactionindex.h"
#include "platform/forms/form.h"

#include <QDate>

#include <memory>
#include <vector>

namespace Ui {
class frmSatisfactionIndex;
}

namespace chart {
class DataArray;
}

/// The answers to one parameter's questions on one date.
struct DateGroup {
    QString parameter;
    QDate surveydate;
    std::vector<RatedAnswer> answers;
};

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
    /// The number of a date in surveydateorder; 0 if it is not there or on an error, which is shown.
    int toGetRowOrder(const QDate& sdate);
    /// Fills lstParameter from mscharttry. Throws Failure.
    void toFillParameters();

    /// Adds an empty row to the chart for each date in surveydateorder.
    void toPrepareChartRows();
    /// Fills the chart from linetable: one column for each chosen parameter, even if it has no index.
    void toDrawChart();

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

    void collapse();
    void expand();
    QString customer() const;
    void fillGroupsOf(const QString& parameter);
    void fillLines(const std::vector<DateGroup>& groups);
    void drawSeries(const QString& parameter, int series, chart::DataArray& cells);
    void labelChart();
    void setMarkers();

    int filledOn = 0; ///< the connection of the work tables
    std::unique_ptr<Ui::frmSatisfactionIndex> ui;
};
