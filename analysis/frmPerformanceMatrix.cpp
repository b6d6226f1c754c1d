// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/frmPerformanceMatrix.h"

#include "analysis/chartmenu.h"
#include "analysis/choices.h"
#include "analysis/figures/performancematrix.h"
#include "analysis/matrixgroups.h"
#include "core/base/busy.h"
#include "core/base/failure.h"
#include "core/base/gblGlobal.h"
#include "core/base/reports.h"
#include "core/base/shell.h"
#include "core/store/worktable.h"
#include "platform/desktop/windowstate.h"
#include "platform/forms/msgbox.h"
#include "ui_frmPerformanceMatrix.h"

#include <QAction>

using namespace Qt::StringLiterals;

namespace {

constexpr int helpContext = 12;
constexpr int designHeight = 7140; // twips, like tall and titleBar
constexpr int tall = 7215;
constexpr int titleBar = 350;
constexpr int roomForChart = 340; // pixels; minimum for a readable chart
constexpr int roomForLists = 130; // pixels
constexpr auto basisSwitch = "frmPerformanceMatrix/chkBasis";
constexpr QSize printedSize{690, 436};
constexpr QColor grey{0xC0, 0xC0, 0xC0};

QString twoDecimals(double value) {
    return QString::number(value, 'f', 2);
}

} // namespace

frmPerformanceMatrix::frmPerformanceMatrix()
    : DefaultForm(Kind::SubWindow), ui(std::make_unique<Ui::frmPerformanceMatrix>()) {
    ui->setupUi(this);
    ui->layout->setAlignment(ui->Frame1, Qt::AlignTop);
    ui->mschart->setCategoryTitle(u"Score"_s);
    ui->mschart->setValueTitle(u"Weightage"_s);
    const chart::Scale scale{.Minimum = 0, .Maximum = 10, .MajorDivision = 2, .MinorDivision = 5};
    ui->mschart->setCategoryScale(scale);
    ui->mschart->setValueScale(scale);
    ui->mschart->setChartType(chart::MSChart::xy);
    ui->mschart->tipText = [this](int series, int point) { // after an error mschart may have more points
        return point <= ui->mschartHidden->RowCount() ? pointText(series, point) : QString();
    };
    keepRoom(*ui->cmdPrint);
    addChartMenu(*ui->mschart, printedSize, [this] { return pointTable(); });
    addNewAction();
    ui->chkBasis->setChecked(desktop::isSwitchedOn(basisSwitch));
    connectEvents();
}

frmPerformanceMatrix::~frmPerformanceMatrix() = default;

void frmPerformanceMatrix::connectEvents() {
    using This = frmPerformanceMatrix;
    connect(ui->cmdCustomerName, &forms::ComboBox::Click, this, &This::cmdCustomerName_Click);
    connect(ui->lstSurveyDates, &forms::ListBox::Click, this, &This::lstSurveyDates_Click);
    connect(ui->cmdView, &QPushButton::clicked, this, &This::cmdView);
    connect(ui->cmdPrint, &QPushButton::clicked, this, &This::cmdPrint);
    connect(ui->cmdClose, &QPushButton::clicked, this, [this] { Unload(); });
    connect(ui->cmdHelp, &QPushButton::clicked, this, [] { showHelpTopic(helpContext); });
    connect(ui->mschart, &chart::MSChart::PointActivated, this, &This::mschart_PointActivated);
    connect(ui->chkBasis, &QCheckBox::toggled, this, &This::chkBasis);
    connect(ui->aids, &AidPanel::Changed, this, &This::toShowAids);
}

void frmPerformanceMatrix::onLoad() {
    filledOn = connectionNumber;
    setLeft(0);
    setTop(0);
    toFillCustomername();
    if (ui->cmdCustomerName->ListCount() > 0)
        ui->cmdCustomerName->setListIndex(0);
    else
        shorten(frameHeight() + titleBar);
}

int frmPerformanceMatrix::frameHeight() const {
    return forms::toTwips(ui->Frame1->sizeHint().height());
}

/// At least high enough to show the whole choice.
void frmPerformanceMatrix::shorten(int twips) {
    ui->mschart->hide();
    ui->Frame3->hide();
    ui->lsvBasis->hide();
    ui->lsvGaps->hide();
    setHeight(qMax(twips, frameHeight() + titleBar));
}

void frmPerformanceMatrix::expand() {
    ui->mschart->show();
    ui->Frame3->show();
    ui->lsvBasis->setVisible(ui->chkBasis->isChecked());
    ui->lsvGaps->setVisible(ui->aids->choice().hasGaps);
    const bool hasList = ui->chkBasis->isChecked() || ui->aids->choice().hasGaps;
    const int lists = hasList ? forms::toTwips(roomForLists) : 0;
    setHeight(qMax(tall, frameHeight() + titleBar + forms::toTwips(roomForChart)) + lists);
}

QString frmPerformanceMatrix::customer() const {
    return ui->cmdCustomerName->List(ui->cmdCustomerName->ListIndex());
}

void frmPerformanceMatrix::toFillCustomername() {
    const Busy busy(*this);
    guarded([this] { listCustomers(*ui->cmdCustomerName); });
}

void frmPerformanceMatrix::toFillSurveyDateList() {
    guarded([this] { listSurveyDates(*ui->lstSurveyDates, customer()); });
}

void frmPerformanceMatrix::cmdCustomerName_Click() {
    ui->cmdPrint->hide();
    if (ui->cmdCustomerName->ListCount() == 0)
        return;
    toFillSurveyDateList();
    shorten(qRound((designHeight - frameHeight()) / 2.6));
}

void frmPerformanceMatrix::lstSurveyDates_Click() {
    if (ui->lstSurveyDates->ListCount() == 0)
        return;
    cmdView();
    ui->MSHFlexGrid1->setUpdatesEnabled(true); // setGrid leaves it off on an error
}

void frmPerformanceMatrix::cmdView() {
    if (ui->lstSurveyDates->ListCount() == 0)
        return;
    const Busy busy(*this, u"Saving to View Performance Matrix...."_s);
    toFillTable();
    toDrawChart();
    toDrawOnHiddenChart();
    toShowAids();
    toShowBasis();
}

void frmPerformanceMatrix::chkBasis() {
    desktop::rememberSwitch(basisSwitch, ui->chkBasis->isChecked());
    if (ui->mschart->isVisible())
        cmdView();
}

void frmPerformanceMatrix::toShowBasis() {
    basis.clear(*ui->mschart);
    ui->lsvBasis->Clear();
    if (ui->chkBasis->isChecked() && ui->mschart->isVisible() && isDrawn)
        guarded([this] {
            basis.show(*ui->mschart, *ui->mschartHidden, *ui->lsvBasis, customer(),
                       toDate(ui->lstSurveyDates->Text()));
        });
}

void frmPerformanceMatrix::toShowAids() {
    aids.clear(*ui->mschart);
    ui->lsvGaps->Clear();
    if (!ui->mschart->isVisible() || !isDrawn)
        return;
    if (ui->lsvGaps->isHidden() == ui->aids->choice().hasGaps)
        expand();
    const bool isShown = guarded([this] {
        requireFilledOn(filledOn);
        QStringList dates;
        for (int i = 0; i < ui->lstSurveyDates->ListCount(); ++i)
            dates << ui->lstSurveyDates->List(i);
        ui->aids->setDates(dates, ui->lstSurveyDates->Text());
        aids.show(*ui->mschart, *ui->mschartHidden, ui->aids->choice(), customer(),
                  toDate(ui->lstSurveyDates->Text()));
        if (ui->aids->choice().hasGaps)
            aids.list(*ui->lsvGaps);
    });
    if (!isShown)
        aids.clear(*ui->mschart);
}

void frmPerformanceMatrix::toFillTable() {
    guarded([this] {
        filledOn = connectionNumber;
        fillWorkTable([this] {
            cnnMain->Execute(u"delete * from scattertable"_s);
            for (int i = 0; i < ui->lstSurveyDates->ListCount(); ++i) {
                if (ui->lstSurveyDates->Selected(i))
                    fillMeans();
            }
        });
    });
}

void frmPerformanceMatrix::fillMeans() {
    const std::vector<MatrixGroup> groups = readMatrixGroups(customer(), toDate(ui->lstSurveyDates->Text()));
    ado::Recordset scatter(u"select * from scattertable"_s, *cnnMain, ado::Recordset::Lock::BatchOptimistic);
    for (const MatrixGroup& group : groups) {
        const std::optional<MatrixMeans> means = matrixMeans(group.answers);
        if (!means)
            continue;
        scatter.AddNew();
        scatter["custname"] = customer();
        scatter["Parameter"] = group.parameter;
        scatter["wt"] = means->weightage;
        scatter["sc"] = means->score;
        scatter.Update();
    }
}

void frmPerformanceMatrix::toDrawChart() {
    isDrawn = guarded([this] {
        ado::Recordset scatter(u"select * from scattertable order by sc"_s, *cnnMain);
        if (scatter.Eof()) {
            forms::msgBox(u"No record(s) present to view Performance Matrix"_s, forms::style::information,
                          titleWithVersion);
            shorten(frameHeight() + 200);
            ui->cmdPrint->hide();
            return;
        }
        expand();
        ui->cmdPrint->show();
        ui->mschart->Refresh();
        setGrid();
        chart::DataArray points(scatter.RecordCount(), 2);
        MatrixPlaces places;
        for (int row = 1; !scatter.Eof(); scatter.MoveNext(), ++row) {
            const MatrixMeans means{.weightage = scatter["wt"].Value().toDouble(),
                                    .score = scatter["sc"].Value().toDouble()};
            toColorGridRow(means.score, means.weightage, row);
            const MatrixMeans place = places.next(means);
            points.at(row, 1) = place.score;
            points.at(row, 2) = static_cast<float>(place.weightage);
        }
        ui->MSHFlexGrid1->moveTo(1, 0); // back to the top
        ui->mschart->setChartData(points);
        toSetPoint();
    });
}

void frmPerformanceMatrix::toSetPoint() {
    ui->mschart->setChartType(chart::MSChart::xy);
    for (int k = 1; k <= ui->mschart->SeriesCount(); ++k) {
        chart::Series& series = ui->mschart->SeriesItem(k);
        series.ShowLine = false;
        series.SeriesMarker = {.Auto = false, .Show = true};
        series.Marker.Visible = true;
        series.Marker.Size = 150;
        series.Marker.Style = chart::FilledMarker;
        series.Marker.FillColor = {.Automatic = false, .Value = QColor(0, 0, 255)};
    }
}

/// A database error is shown twice: here, and by guarded.
void frmPerformanceMatrix::toDrawOnHiddenChart() {
    const bool isFilled = guarded([this] {
        try {
            fillHiddenChart();
        } catch (const Failure& failure) {
            forms::msgBox(QString::number(failure.number()) + u" : " + failure.text());
            throw;
        }
    });
    isDrawn = isDrawn && isFilled;
}

void frmPerformanceMatrix::fillHiddenChart() {
    ado::Recordset scatter(u"select * from scattertable order by sc"_s, *cnnMain);
    if (scatter.Eof())
        return;
    chart::MSChart& figures = *ui->mschartHidden;
    chart::DataArray points(scatter.RecordCount(), 2);
    figures.setRowCount(points.rows());
    for (int row = 1; !scatter.Eof(); scatter.MoveNext(), ++row) {
        points.at(row, 1) = scatter["sc"].Value().toDouble();
        points.at(row, 2) = scatter["wt"].Value().toFloat();
        figures.setRow(row);
        figures.setRowLabel(scatter["Parameter"].Text());
    }
    figures.setChartData(points);
}

void frmPerformanceMatrix::setGrid() {
    ado::Recordset details(u"select CustName,Parameter,Wt,Sc from ScatterTable Order by PARAMETER"_s,
                           *cnnMain);
    const QStringList headings{u"Customer"_s, u"Parameter"_s, u"Wt"_s, u"Sc"_s};
    forms::MSHFlexGrid& grid = *ui->MSHFlexGrid1;
    grid.setUpdatesEnabled(false);
    grid.setRows(1);
    grid.setRows(details.RecordCount() + 1);
    grid.setCols(details.FieldCount(), 0);
    for (const auto& [column, share] : {std::pair(0, 0.2), {1, 0.5}, {2, 0.12}, {3, 0.12}})
        grid.setColWidth(column, static_cast<int>(share * grid.gridWidth()));
    for (int column = 0; column < grid.Cols(); ++column) {
        grid.setTextMatrix(0, column, headings[column]);
        grid.moveTo(0, column);
        grid.setCellFontBold(true);
    }
    for (int row = 1; !details.Eof(); details.MoveNext(), ++row) {
        for (int column = 0; column < grid.Cols(); ++column) {
            const bool figure = column >= 2;
            grid.setTextMatrix(row, column,
                               figure ? twoDecimals(details.FieldAt(column).Value().toDouble())
                                      : details.FieldAt(column).Text());
            grid.moveTo(row, column);
            if (column % 2 == 0)
                grid.setCellBackColor(grey);
        }
    }
    for (int row = 0; row < grid.Rows(); ++row) {
        for (int column = 2; column < grid.Cols(); ++column) {
            grid.moveTo(row, column);
            grid.setCellAlignment(forms::MSHFlexGrid::centred);
        }
    }
    grid.setUpdatesEnabled(true);
}

void frmPerformanceMatrix::toColorGridRow(double score, double weightage, int row) {
    const QColor color = quadrantColor(score, weightage);
    if (!color.isValid())
        return;
    for (const int column : {2, 3}) {
        ui->MSHFlexGrid1->moveTo(row, column);
        ui->MSHFlexGrid1->setCellBackColor(color);
    }
}

/// The tip of a point: parameter and unmoved figures, from the hidden chart.
QString frmPerformanceMatrix::pointText(int series, int point) const {
    chart::MSChart& figures = *ui->mschartHidden;
    figures.setRow(point);
    const double score = figures.GetData(point, series).value_or(0);
    const double weightage = figures.GetData(point, series + 1).value_or(0);
    return u"Parameter  : "_s + figures.RowLabel() + u"\r\nWeightage : " + twoDecimals(weightage) +
           u"\r\nScore         : " + twoDecimals(score) + basis.textOf(point);
}

/// Parameters and unmoved figures, as pointText.
tables::Table frmPerformanceMatrix::pointTable() const {
    tables::Table table{{u"Parameter"_s, u"Score"_s, u"Weightage"_s}, {}};
    chart::MSChart& figures = *ui->mschartHidden;
    for (int row = 1; row <= figures.RowCount(); ++row) {
        figures.setRow(row);
        if (figures.GetData(row, 1) && figures.GetData(row, 2))
            table.rows.push_back({figures.RowLabel(), *figures.GetData(row, 1), *figures.GetData(row, 2)});
    }
    return table;
}

void frmPerformanceMatrix::mschart_PointActivated(int series, int point) {
    guarded([&] { forms::msgBox(pointText(series, point), forms::style::information, titleWithVersion); });
}

/// In the menus of the chart and of the list by gap.
void frmPerformanceMatrix::addNewAction() {
    auto* ofPoint = new QAction(u"&New Action..."_s, ui->mschart);
    ofPoint->setObjectName(u"newAction"_s);
    ui->mschart->addAction(ofPoint);
    connect(ui->mschart, &chart::MSChart::MenuAboutToOpen, ofPoint, [ofPoint](int, int point) {
        ofPoint->setEnabled(point > 0);
        ofPoint->setData(point);
    });
    connect(ofPoint, &QAction::triggered, this, [this, ofPoint] { newAction(ofPoint->data().toInt()); });
    auto* ofRow = new QAction(u"&New Action..."_s, ui->lsvGaps);
    ofRow->setObjectName(u"newAction"_s);
    ui->lsvGaps->addAction(ofRow);
    connect(ofRow, &QAction::triggered, this,
            [this] { newAction(aids.chartRow(ui->lsvGaps->CurrentRow())); });
}

void frmPerformanceMatrix::newAction(int chartRow) {
    const QString text = aids.actionText(chartRow);
    if (!text.isEmpty())
        Shell::current()->startAction({customer(), text});
}

void frmPerformanceMatrix::cmdPrint() {
    Busy busy(*this);
    if (!guarded([this] { requireFilledOn(filledOn); }))
        return;
    guardedWithNumber(u":"_s, [&] {
        if (ui->cmdCustomerName->ListCount() > 0)
            busy.say(u"Generating Report...."_s);
        savePictureForReport(*ui->mschart, u"perform.bmp"_s, printedSize);
        const bool hasGaps = ui->lsvGaps->ListCount() > 0;
        if (hasGaps)
            aids.fillReport();
        startReport(Shell::current()->report(), hasGaps ? u"matrixgaps.rpt"_s : u"scatter.rpt"_s,
                    u"companyname"_s, u"Performance Matrix Report"_s, {},
                    {u"Customer='"_s + customer() + u'\'',
                     u"SurveyDate='"_s + ui->lstSurveyDates->Text() + u'\'',
                     u"CrossHair='"_s + aids.crossHairText() + u'\''});
    });
}
