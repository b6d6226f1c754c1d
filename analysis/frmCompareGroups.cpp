// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/frmCompareGroups.h"

#include "analysis/chartmenu.h"
#include "core/base/busy.h"
#include "core/base/failure.h"
#include "core/base/gblGlobal.h"
#include "core/base/progress.h"
#include "core/base/reports.h"
#include "core/base/shell.h"
#include "core/store/segments.h"
#include "platform/chart/markerpicture.h"
#include "platform/chart/mschart.h"
#include "platform/desktop/windowstate.h"
#include "platform/forms/clock.h"
#include "platform/forms/msgbox.h"
#include "ui_frmCompareGroups.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;
namespace style = forms::style;

namespace {

constexpr int helpContext = 220;
constexpr auto basisSwitch = "frmCompareGroups/chkBasis";
constexpr QSize printedSize{690, 377}; // pixels

QStringList chosenTexts(const forms::ListBox& list) {
    QStringList texts;
    for (int i = 0; i < list.ListCount(); ++i) {
        if (list.Selected(i))
            texts << list.List(i);
    }
    return texts;
}

/// Replaces the entries where they differ. Those that were chosen stay so; without any, all are.
bool refill(forms::ListBox& list, const QStringList& texts) {
    QStringList before;
    for (int i = 0; i < list.ListCount(); ++i)
        before << list.List(i);
    if (before == texts)
        return false;
    const QStringList chosen = chosenTexts(list);
    const bool isAnyLeft =
        std::any_of(texts.begin(), texts.end(), [&](const QString& text) { return chosen.contains(text); });
    list.Clear();
    list.addItems(texts);
    for (int i = 0; i < list.ListCount(); ++i)
        list.setSelected(i, !isAnyLeft || chosen.contains(texts[i]));
    return true;
}

/// The first survey in the store.
QDate firstSurvey() {
    return ado::Recordset(u"select min(sdate) from survey"_s, *cnnMain).FieldAt(0).Value().toDate();
}

} // namespace

frmCompareGroups::frmCompareGroups()
    : DefaultForm(Kind::SubWindow), ui(std::make_unique<Ui::frmCompareGroups>()) {
    ui->setupUi(this);
    setUpPeriods();
    keepRoom(*ui->cmdPrint);
    addChartMenu(*ui->mschart, printedSize, [this] { return shown.table(); });
    ui->chkBasis->setChecked(desktop::isSwitchedOn(basisSwitch));
    setResultVisible(false);
    connectEvents();
}

frmCompareGroups::~frmCompareGroups() = default;

void frmCompareGroups::setUpPeriods() {
    for (const auto& [text, period] : {std::pair(u"each survey date"_s, Period::SurveyDate),
                                       {u"month"_s, Period::Month},
                                       {u"quarter"_s, Period::Quarter},
                                       {u"year"_s, Period::Year}})
        ui->cboPeriod->addItem(text, int(period));
    ui->cboPeriod->setCurrentIndex(ui->cboPeriod->findData(int(Period::Quarter)));
    for (const QString& view : {u"Index, a line for each group"_s, u"Matrix, a colour for each group"_s})
        ui->cboView->AddItem(view);
    ui->cboView->setListIndex(0);
}

void frmCompareGroups::connectEvents() {
    using This = frmCompareGroups;
    const auto hide = [this] { setResultVisible(false); };
    connect(ui->cboKind, &forms::ComboBox::Click, this, [this] {
        setResultVisible(false); // two kinds may have groups of the same names
        fillGroups();
    });
    connect(ui->cboView, &forms::ComboBox::Click, this, &This::cboView_Click);
    connect(ui->cboPeriod, &forms::ComboBox::Click, this, hide);
    for (forms::ListBox* list : {ui->lstGroups, ui->lstParameters}) {
        connect(list, &forms::ListBox::Click, this, hide);
        connect(list, &forms::ListBox::DblClick, this, &This::cmdView_Click);
    }
    connect(ui->dtFrom, &forms::DTPicker::Change, this, hide);
    connect(ui->dtTo, &forms::DTPicker::Change, this, hide);
    connect(ui->mschart, &chart::MSChart::PointActivated, this, [this](int series, int row) {
        ui->lsvFigures->clearSelection();
        ui->lsvFigures->setCurrentRow(shown.listRow(series, row));
        ui->lsvFigures->setSelected(shown.listRow(series, row), true);
    });
    connect(ui->chkBasis, &QCheckBox::toggled, this, [this](bool isOn) {
        desktop::rememberSwitch(basisSwitch, isOn);
        if (ui->mschart->isVisible())
            cmdView_Click();
    });
    connect(ui->cmdView, &QPushButton::clicked, this, &This::cmdView_Click);
    connect(ui->cmdPrint, &QPushButton::clicked, this, &This::cmdPrint);
    connect(ui->cmdHelp, &QPushButton::clicked, this, [] { showHelpTopic(helpContext); });
    connect(ui->cmdClose, &QPushButton::clicked, this, [this] { Unload(); });
}

void frmCompareGroups::onLoad() {
    setLeft(0);
    setTop(0);
    ui->dtTo->setValue(forms::today());
    guarded([this] {
        if (!hasSegmentTable())
            throw Refusal(u"This database could not be updated to this version of the program: it has no "
                          "groups. See the help, topic Segments."_s);
        ui->dtFrom->setValue(firstSurvey());
    });
}

/// Another form may have changed the groups.
void frmCompareGroups::onActivate() {
    guarded([this] {
        if (!hasSegmentTable())
            return;
        fillParameters();
        fillKinds();
        fillGroups();
    });
}

bool frmCompareGroups::onKeyDown(int key) {
    return (!ui->mschart->hasFocus() && pressOnEnter(key, *ui->cmdView)) || DefaultForm::onKeyDown(key);
}

void frmCompareGroups::fillKinds() {
    const QString before = ui->cboKind->currentText();
    const QStringList kinds = readSegmentKinds();
    ui->cboKind->clear();
    ui->cboKind->addItems(kinds);
    ui->cboKind->setCurrentIndex(int(qMax(qsizetype{0}, kinds.indexOf(before))));
}

void frmCompareGroups::fillGroups() {
    guarded([this] {
        const QString chosen = ui->cboKind->currentText();
        std::map<int, QString> read = groupsOfRespondents(readSegmentRows(chosen));
        QStringList groups;
        for (const auto& [respondentid, group] : read)
            groups << group;
        listedKind = chosen;
        const bool hasOthers = std::exchange(members, std::move(read)) != members;
        if (refill(*ui->lstGroups, sortedOnce(groups)) || hasOthers)
            setResultVisible(false);
    });
    ui->cboKind->setCurrentIndex(ui->cboKind->findText(listedKind));
}

void frmCompareGroups::fillParameters() {
    QStringList names;
    decltype(parameters) read; // taken as a whole, since the list on show has as many
    ado::Recordset stored(u"select * from parameter order by paramid"_s, *cnnMain);
    for (; !stored.Eof(); stored.MoveNext()) {
        names << stored["parametername"].Text();
        read.emplace_back(names.last(), stored["paramid"].Value().toInt());
    }
    const bool hasOthers = std::exchange(parameters, std::move(read)) != parameters;
    if (refill(*ui->lstParameters, names) || hasOthers)
        setResultVisible(false);
}

void frmCompareGroups::cboView_Click() {
    for (QWidget* widget : {static_cast<QWidget*>(ui->lblPeriod), static_cast<QWidget*>(ui->cboPeriod)})
        widget->setVisible(!isMatrix());
    setResultVisible(false);
}

bool frmCompareGroups::isMatrix() const {
    return ui->cboView->ListIndex() == 1;
}

GroupChoice frmCompareGroups::choice() const {
    GroupChoice choice{.kind = listedKind,
                       .groups = chosenTexts(*ui->lstGroups),
                       .paramids = {},
                       .first = ui->dtFrom->Value(),
                       .last = ui->dtTo->Value(),
                       .period = isMatrix() ? Period::Whole : Period(ui->cboPeriod->currentData().toInt()),
                       .isPerParameter = isMatrix(),
                       .isWithAsked = ui->chkBasis->isChecked()};
    for (int i = 0; i < ui->lstParameters->ListCount(); ++i) {
        if (ui->lstParameters->Selected(i))
            choice.paramids.push_back(parameters[std::size_t(i)].second);
    }
    return choice;
}

void frmCompareGroups::cmdView_Click() {
    if (!forms::DTPicker::requireDates({ui->dtFrom, ui->dtTo}))
        return;
    if (ui->lstGroups->ListCount() == 0)
        forms::msgBox(u"There are no groups yet. Put customers and respondents into groups with Tools, "
                      "Segments."_s,
                      style::information, titleWithVersion);
    else if (ui->lstGroups->SelCount() == 0 || ui->lstParameters->SelCount() == 0)
        forms::msgBox(u"Choose groups and parameters first."_s, style::information, titleWithVersion);
    else
        view();
}

void frmCompareGroups::view() {
    setResultVisible(false);
    const GroupChoice chosen = choice();
    std::optional<std::vector<GroupPoint>> points;
    const bool isRead = guarded([&] {
        const Busy busy(*this, u"Reading the answers......"_s);
        std::optional<Progress> progress;
        points = readGroupPoints(chosen, [&](int done, int all) {
            if (!progress)
                progress.emplace(*this, all / done + 1);
            return progress->step(done > all ? u"Questionnaires"_s
                                             : u"Respondent %1 of %2"_s.arg(done).arg(all));
        });
    });
    if (!isRead || !points)
        return;
    std::map<int, QString> names;
    for (const auto& [name, paramid] : parameters)
        names[paramid] = name;
    const auto view = isMatrix() ? GroupChart::View::Matrix : GroupChart::View::Index;
    if (shown.show(*ui->mschart, *ui->lsvFigures, view, chosen, *points, names))
        setResultVisible(true);
    else
        forms::msgBox(u"There are no rated answers of these groups between these dates."_s,
                      style::information, titleWithVersion);
}

void frmCompareGroups::cmdPrint() {
    const Busy busy(*this, u"Generating Report...."_s);
    if (!guarded([this] { shown.fillReport(); }))
        return;
    guardedWithNumber(u":"_s, [this] {
        savePictureForReport(*ui->mschart, u"groups.bmp"_s, printedSize);
        const QStringList chosen = chosenTexts(*ui->lstParameters);
        const bool areAll = chosen.size() == ui->lstParameters->ListCount();
        startReport(Shell::current()->report(), isMatrix() ? u"groupmatrix.rpt"_s : u"groupindex.rpt"_s,
                    u"companyname"_s, u"Compare Groups Report"_s, {},
                    {u"Kind='"_s + listedKind + u'\'',
                     u"Dates='"_s + ado::toText(ui->dtFrom->Value()) + u" to " +
                         ado::toText(ui->dtTo->Value()) + u'\'',
                     u"Parameters='"_s + (areAll ? u"all"_s : chosen.join(u", "_s)) + u'\''});
    });
}

void frmCompareGroups::setResultVisible(bool isVisible) {
    ui->lblHint->setVisible(!isVisible);
    ui->mschart->setVisible(isVisible);
    ui->lblFigures->setVisible(isVisible);
    ui->lsvFigures->setVisible(isVisible);
    ui->cmdPrint->setVisible(isVisible);
    markGroups(isVisible);
}

/// The groups in the list have the markers of their points, since a matrix has no legend.
void frmCompareGroups::markGroups(bool areDrawn) {
    const int side = fontMetrics().height();
    ui->lstGroups->setIconSize({side, side});
    int number = 0;
    for (int i = 0; i < ui->lstGroups->ListCount(); ++i) {
        QIcon marker;
        if (areDrawn && ui->lstGroups->Selected(i)) {
            ++number;
            const QPixmap picture =
                chart::markerPicture(ui->mschart->SeriesItem(number), number, side, devicePixelRatioF());
            for (const QIcon::Mode mode : {QIcon::Normal, QIcon::Selected}) // in its own colour in both
                marker.addPixmap(picture, mode);
        }
        ui->lstGroups->item(i)->setIcon(marker);
    }
}
