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

/// The answers to a parameter's questions on one date.
struct DateGroup {
    QString parameter;
    QDate surveydate;
    std::vector<RatedAnswer> answers;
};

/// Computes the Satisfaction Index of the chosen parameters on each survey date of a customer and shows it as
/// one line a parameter. Collapsed, the form shows the choice only; expanded, the chart below it. A change of
/// the parameters or dates collapses it, so that a chart never stands beside a choice that it does not show.
class frmSatisfactionIndex : public forms::DefaultForm<frmSatisfactionIndex> {
    Q_OBJECT

public:
    ~frmSatisfactionIndex() override;

    void toFillCustomername();
    void toFillParameterName();
    void toFillSurveyDateList();

    /// Rebuilds linetable: one row for each chosen parameter and each survey date between dtFrom and dtTo,
    /// both included, with the index of all answers to the parameter's questions on that date.
    void toFillTable();
    /// Whether linetable holds an index other than 0.
    bool toCheckIndexRecords();
    /// Rebuilds surveydateorder: the dates with an index other than 0, numbered from 1 for the earliest.
    void toFillSurveyDateOrder();
    /// The number of a date in surveydateorder; 0 when it has none.
    int toGetRowOrder(const QDate& sdate);
    /// Fills lstParameter from mscharttry; a failure is thrown.
    void toFillParameters();

    /// Gives the chart an empty row for each date of surveydateorder.
    void toPrepareChartRows();
    /// Fills the chart from linetable: a column for each chosen parameter, also for one without an index.
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

    std::unique_ptr<Ui::frmSatisfactionIndex> ui;
};
