// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/frmSatisfactionIndex.h"

#include "analysis/chartmenu.h"
#include "analysis/choices.h"
#include "analysis/figures/satisfactionindex.h"
#include "core/base/busy.h"
#include "core/base/failure.h"
#include "core/base/filllist.h"
#include "core/base/gblGlobal.h"
#include "core/base/reports.h"
#include "core/base/shell.h"
#include "core/store/worktable.h"
#include "platform/desktop/windowstate.h"
#include "platform/forms/clock.h"
#include "platform/forms/msgbox.h"
#include "ui_frmSatisfactionIndex.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int helpContext = 11;
constexpr int titleBar = 350;     // twips
constexpr int roomForChart = 360; // pixels; minimum for a readable chart
constexpr int roomForBasis = 150; // pixels
constexpr auto basisSwitch = "frmSatisfactionIndex/chkBasis";
constexpr auto targetSwitch = "frmSatisfactionIndex/chkTargets";
constexpr QSize printedSize{690, 377}; // pixels

} // namespace

frmSatisfactionIndex::frmSatisfactionIndex()
    : DefaultForm(Kind::SubWindow), ui(std::make_unique<Ui::frmSatisfactionIndex>()) {
    ui->setupUi(this);
    ui->layout->setAlignment(ui->Frame1, Qt::AlignTop);
    ui->mschart->setCategoryTitle(u"Survey Date"_s);
    ui->mschart->setValueTitle(u"Satisfaction Index"_s);
    ui->mschart->setValueScale({.Minimum = 0, .Maximum = 11, .MajorDivision = 11, .MinorDivision = 1});
    keepRoom(*ui->cmdPrint);
    addChartMenu(*ui->mschart, printedSize, [this] { return pointTable(); });
    ui->chkBasis->setChecked(desktop::isSwitchedOn(basisSwitch));
    ui->chkTargets->setChecked(desktop::isSwitchedOn(targetSwitch));
    connectEvents();
}

frmSatisfactionIndex::~frmSatisfactionIndex() = default;

void frmSatisfactionIndex::connectEvents() {
    using This = frmSatisfactionIndex;
    connect(ui->cmdCustomerName, &forms::ComboBox::Click, this, &This::cmdCustomerName_Click);
    connect(ui->lstParameter, &forms::ListBox::Click, this, &This::collapse);
    connect(ui->dtFrom, &forms::DTPicker::Change, this, &This::collapse);
    connect(ui->dtTo, &forms::DTPicker::Change, this, &This::collapse);
    connect(ui->lstParameter, &forms::ListBox::DblClick, this, &This::lstParameter_DblClick);
    connect(ui->lstParameter, &forms::ListBox::KeyDown, this, [this](int key) {
        if (key == Qt::Key_Return || key == Qt::Key_Enter)
            lstParameter_DblClick();
    });
    connect(ui->lstSurveyDates, &forms::ListBox::Validate, ui->lstSurveyDates,
            &forms::ListBox::clearSelection);
    connect(ui->cmdView, &QPushButton::clicked, this, &This::cmdView);
    connect(ui->cmdPrint, &QPushButton::clicked, this, &This::cmdPrint);
    connect(ui->cmdClose, &QPushButton::clicked, this, [this] { Unload(); });
    connect(ui->cmdHelp, &QPushButton::clicked, this, [] { showHelpTopic(helpContext); });
    connect(ui->mschart, &chart::MSChart::PointActivated, this, &This::mschart_PointActivated);
    connect(ui->chkBasis, &QCheckBox::toggled, this, &This::chkBasis);
    connect(ui->chkTargets, &QCheckBox::toggled, this, &This::chkTargets);
}

void frmSatisfactionIndex::onLoad() {
    filledOn = connectionNumber;
    setLeft(0);
    setTop(0);
    collapse();
    ui->dtTo->setValue(forms::today());
    toFillCustomername();
    if (ui->cmdCustomerName->ListCount() > 0) {
        ui->cmdCustomerName->setListIndex(0);
        toFillSurveyDateList();
    }
    if (ui->lstSurveyDates->ListCount() > 0)
        ui->dtFrom->setValue(toDate(ui->lstSurveyDates->List(0)));
    if (ui->lstParameter->ListCount() > 0)
        ui->lstParameter->setListIndex(0);
}

tables::Table frmSatisfactionIndex::pointTable() const {
    tables::Table table{{u"Parameter"_s, u"Survey Date"_s, u"Satisfaction Index"_s}, {}};
    chart::MSChart& drawn = *ui->mschart;
    for (int series = 1; series <= drawn.ColumnCount(); ++series) {
        drawn.setColumn(series);
        for (int row = 1; row <= drawn.RowCount(); ++row) {
            drawn.setRow(row);
            if (const std::optional<double> index = drawn.GetData(row, series))
                table.rows.push_back({drawn.ColumnLabel(), drawn.RowLabel(), *index});
        }
    }
    return table;
}

void frmSatisfactionIndex::collapse() {
    ui->cmdPrint->hide();
    ui->mschart->hide();
    ui->lsvBasis->hide();
    setHeight(forms::toTwips(ui->Frame1->sizeHint().height()) + titleBar);
}

void frmSatisfactionIndex::expand() {
    const int frame = forms::toTwips(ui->Frame1->sizeHint().height());
    ui->cmdPrint->show();
    ui->mschart->show();
    if (!desktop::isSwitchedOn("start/chart"))
        desktop::rememberSwitch("start/chart", true); // a first step of the main window
    ui->lsvBasis->setVisible(ui->chkBasis->isChecked());
    const int list = ui->chkBasis->isChecked() ? forms::toTwips(roomForBasis) : 0;
    setHeight(qMax(2 * frame + 2000, frame + titleBar + forms::toTwips(roomForChart)) + list);
}

QString frmSatisfactionIndex::customer() const {
    return ui->cmdCustomerName->List(ui->cmdCustomerName->ListIndex());
}

void frmSatisfactionIndex::toFillCustomername() {
    const Busy busy(*this);
    guarded([this] { listCustomers(*ui->cmdCustomerName); });
}

void frmSatisfactionIndex::toFillParameterName() {
    guarded([this] {
        fillList(*ui->lstParameter,
                 u"select distinct(parametername) from responquery where custname='"_s + customer() + u"'",
                 "parametername");
    });
}

void frmSatisfactionIndex::toFillSurveyDateList() {
    guarded([this] { listSurveyDates(*ui->lstSurveyDates, customer()); });
}

void frmSatisfactionIndex::toFillParameters() {
    fillList(*ui->lstParameter, u"select distinct(parameter) from mscharttry"_s, "Parameter");
}

void frmSatisfactionIndex::cmdCustomerName_Click() {
    if (ui->cmdCustomerName->ListCount() > 0)
        toFillParameterName();
}

void frmSatisfactionIndex::lstParameter_DblClick() {
    if (ui->lstParameter->ListCount() > 0)
        cmdView();
}

void frmSatisfactionIndex::cmdView() {
    if (!forms::DTPicker::requireDates({ui->dtFrom, ui->dtTo}))
        return;
    Busy busy(*this);
    toFillTable();
    if (toCheckIndexRecords()) {
        busy.say(u"Saving to view Satisfaction Index..."_s);
        toFillSurveyDateOrder();
        toPrepareChartRows();
        toDrawChart();
        toShowBasis();
        toShowTargets();
        expand();
    } else {
        forms::msgBox(u"No record(s) present to evaluates Satisfaction Index"_s, forms::style::information,
                      titleWithVersion);
        collapse();
    }
}

void frmSatisfactionIndex::cmdPrint() {
    Busy busy(*this);
    if (!guarded([this] { requireFilledOn(filledOn); }))
        return;
    guardedWithNumber(u":"_s, [&] {
        if (ui->lstParameter->ListCount() == 0)
            return;
        busy.say(u"Generating Report....."_s);
        if (ui->cmdCustomerName->ListCount() == 0)
            return;
        savePictureForReport(*ui->mschart, u"satis.bmp"_s, printedSize);
        if (ui->chkTargets->isChecked()) {
            targets.fillReport();
            startReport(Shell::current()->report(), u"indextargets.rpt"_s, u"companyname"_s,
                        u"Survey Report"_s, {},
                        {u"Marks='Dashed: target. Red, in a ring: below its target.'"_s});
        } else {
            startReport(Shell::current()->report(), u"satisfactionindex.rpt"_s, u"companyname"_s,
                        u"Survey Report"_s);
        }
    });
}

void frmSatisfactionIndex::mschart_PointActivated(int series, int point) {
    if (const std::optional<double> value = ui->mschart->GetData(point, series))
        forms::msgBox(u"Satisfaction Index : "_s + ado::toText(static_cast<float>(*value)) +
                      basis.textOf(series, point) + targets.textOf(series));
}

void frmSatisfactionIndex::chkBasis() {
    desktop::rememberSwitch(basisSwitch, ui->chkBasis->isChecked());
    if (ui->mschart->isVisible())
        cmdView();
}

void frmSatisfactionIndex::toShowBasis() {
    basis.clear();
    ui->lsvBasis->Clear();
    if (ui->chkBasis->isChecked())
        guarded(
            [this] { basis.show(*ui->mschart, *ui->lsvBasis, readPointBases(customer(), groups), points); });
}

void frmSatisfactionIndex::chkTargets() {
    desktop::rememberSwitch(targetSwitch, ui->chkTargets->isChecked());
    if (ui->mschart->isVisible())
        toShowTargets();
}

void frmSatisfactionIndex::toShowTargets() {
    targets.clear(*ui->mschart);
    if (ui->chkTargets->isChecked())
        guarded([this] {
            targets.show(*ui->mschart, targetsThatHold(shown.customer, shown.parameters), shown.parameters,
                         points);
        });
}

void frmSatisfactionIndex::toFillTable() {
    guarded([this] {
        filledOn = connectionNumber;
        fillWorkTable([this] {
            cnnMain->Execute(u"delete * from linetable"_s);
            groups.clear();
            shown = {customer(), selectedParameters(), ui->dtFrom->Value(), ui->dtTo->Value()};
            groups = readDateGroups(shown, ui->chkBasis->isChecked());
            fillLines();
        });
    });
}

QStringList frmSatisfactionIndex::selectedParameters() const {
    QStringList selected;
    for (int i = 0; i < ui->lstParameter->ListCount(); ++i) {
        if (ui->lstParameter->Selected(i))
            selected << ui->lstParameter->List(i);
    }
    return selected;
}

void frmSatisfactionIndex::fillLines() const {
    ado::Recordset line(u"select * from linetable"_s, *cnnMain, ado::Recordset::Lock::BatchOptimistic);
    for (const DateGroup& group : groups) {
        line.AddNew();
        line["custname"] = customer();
        line["Parameter"] = group.parameter;
        line["sindex"] = satisfactionIndex(group.answers);
        line["sdate"] = group.surveydate;
        line.Update();
    }
}

bool frmSatisfactionIndex::toCheckIndexRecords() {
    bool found = false;
    guarded([&] {
        ado::Recordset line(u"select * from linetable where sindex <> 0"_s, *cnnMain);
        found = !line.Eof();
    });
    return found;
}

void frmSatisfactionIndex::toFillSurveyDateOrder() {
    guarded([this] {
        const Busy busy(*this);
        fillWorkTable([] {
            cnnMain->Execute(u"delete * from surveydateorder"_s);
            ado::Recordset order(u"select * from surveydateorder"_s, *cnnMain,
                                 ado::Recordset::Lock::BatchOptimistic);
            ado::Recordset dates(
                u"select distinct(sdate) from linetable where sindex <> 0 order by sdate asc"_s, *cnnMain);
            for (int counter = 1; !dates.Eof(); dates.MoveNext(), ++counter) {
                order.AddNew();
                order["sdate"] = dates["sdate"].Value();
                order["roworder"] = counter;
                order.Update();
            }
        });
    });
}

void frmSatisfactionIndex::toPrepareChartRows() {
    guarded([this] {
        const Busy busy(*this);
        ado::Recordset order(u"select * from surveydateorder order by roworder asc"_s, *cnnMain);
        if (!order.Eof()) {
            ui->mschart->Refresh();
            ui->mschart->setRowCount(order.RecordCount());
            const int rows = ui->mschart->RowCount();
            if (rows != 1)
                ui->mschart->setChartData(chart::DataArray(rows, rows));
            for (int counter = 1; !order.Eof(); order.MoveNext(), ++counter) {
                ui->mschart->setRow(counter);
                ui->mschart->setRowLabel(order["sdate"].Text());
            }
        }
    });
}

void frmSatisfactionIndex::toDrawChart() {
    guardedWithNumber(u" : "_s, [this] {
        const Busy busy(*this);
        ui->mschart->Refresh();
        chart::DataArray cells(ui->mschart->RowCount(), ui->lstParameter->SelCount());
        const QStringList parameters = selectedParameters();
        const std::map<QDate, int> places = dateOrder();
        const std::vector<std::vector<LinePoint>> lines = linesOf(parameters);
        points.clear();
        for (int series = 1; series <= parameters.size(); ++series)
            drawSeries(parameters[series - 1], lines[std::size_t(series - 1)], places, series, cells);
        ui->mschart->setChartData(cells);
        labelChart();
        setMarkers();
    });
}

void frmSatisfactionIndex::drawSeries(const QString& parameter, const std::vector<LinePoint>& line,
                                      const std::map<QDate, int>& places, int series,
                                      chart::DataArray& cells) {
    if (line.empty())
        return;
    ui->mschart->setColumnCount(series);
    chart::Series& drawn = ui->mschart->SeriesItem(series);
    drawn.ShowLine = true;
    drawn.Whiskers.clear();
    drawn.HollowRows.clear();
    drawn.SeriesMarker = {.Auto = false, .Show = true};
    for (const LinePoint& point : line) {
        const auto place = places.find(point.date);
        ui->mschart->setRow(place != places.end() ? place->second : 0);
        cells.at(ui->mschart->Row(), series) = point.index;
        points.push_back({parameter, point.date, series, ui->mschart->Row(), point.index});
    }
}

/// Dates along the axis, parameters in the legend.
void frmSatisfactionIndex::labelChart() {
    ado::Recordset dates(u"select distinct(sdate) from surveydateorder order by sdate asc"_s, *cnnMain);
    for (int counter = 1; !dates.Eof(); dates.MoveNext(), ++counter) {
        ui->mschart->setRow(counter);
        ui->mschart->setRowLabel(dates["sdate"].Text());
    }
    int counter = 1;
    for (const QString& parameter : selectedParameters()) {
        ui->mschart->setColumn(counter++);
        ui->mschart->setColumnLabel(parameter);
    }
}

void frmSatisfactionIndex::setMarkers() {
    for (int i = 1; i <= ui->mschart->SeriesCount(); ++i) {
        chart::Series& series = ui->mschart->SeriesItem(i);
        series.SeriesMarker.Auto = false;
        series.Pen.Width = 20;
        series.Marker.Visible = true;
        series.Marker.Size = 140;
        series.Marker.Style = chart::FilledMarker;
        series.Marker.FillColor.Automatic = true;
    }
}
