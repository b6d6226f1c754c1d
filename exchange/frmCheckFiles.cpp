// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/frmCheckFiles.h"

#include "core/base/busy.h"
#include "core/base/failure.h"
#include "core/base/gblGlobal.h"
#include "core/base/progress.h"
#include "core/base/shell.h"
#include "exchange/checkedfilesmodel.h"
#include "exchange/checkmarks.h"
#include "exchange/droppedfiles.h"
#include "exchange/files/filenames.h"
#include "exchange/files/surveychecker.h"
#include "exchange/frmCompareAnswers.h"
#include "exchange/reading.h"
#include "exchange/toggleticks.h"
#include "platform/forms/msgbox.h"
#include "ui_frmCheckFiles.h"

#include <QSortFilterProxyModel>

using namespace Qt::StringLiterals;
namespace style = forms::style;

namespace {

constexpr int helpContext = 211;

} // namespace

frmCheckFiles::frmCheckFiles()
    : DefaultForm(Kind::SubWindow), ui(std::make_unique<Ui::frmCheckFiles>()),
      files(new CheckedFilesModel(this)), sorted(new QSortFilterProxyModel(this)) {
    ui->setupUi(this);
    setUpList();
    connect(ui->cmdAddFiles, &QPushButton::clicked, this, &frmCheckFiles::cmdAddFiles_Click);
    connect(ui->cmdAddFolder, &QPushButton::clicked, this, &frmCheckFiles::cmdAddFolder_Click);
    connect(ui->cmdRemove, &QPushButton::clicked, this, &frmCheckFiles::cmdRemove_Click);
    connect(ui->cmdImportTicked, &QPushButton::clicked, this, &frmCheckFiles::cmdImportTicked_Click);
    connect(ui->cmdHelp, &QPushButton::clicked, this, [] { showHelpTopic(helpContext); });
    connect(ui->cmdClose, &QPushButton::clicked, this, [this] { Unload(); });
    connect(ui->lsvFiles, &QTreeView::doubleClicked, this, &frmCheckFiles::compareAnswers);
    connect(files, &CheckedFilesModel::ticksChanged, this, &frmCheckFiles::showSummary);
    new DropTarget(*this, [this](const QStringList& paths) { checkFiles(paths); });
}

frmCheckFiles::~frmCheckFiles() = default;

void frmCheckFiles::onLoad() {
    toCenterForm(*this);
    showSummary();
}

void frmCheckFiles::setUpList() {
    sorted->setSourceModel(files);
    sorted->setSortRole(CheckedFilesModel::sortRole);
    sorted->setSortCaseSensitivity(Qt::CaseInsensitive);
    sorted->setSortLocaleAware(true);
    ui->lsvFiles->setModel(sorted);
    ui->lsvFiles->setIconSize({markSize, markSize});
    QHeaderView* head = ui->lsvFiles->header();
    head->setSortIndicator(-1, Qt::AscendingOrder); // in the order of adding until a head is clicked
    ui->lsvFiles->setSortingEnabled(true);
    constexpr int margins = 14; // pixels
    constexpr int tickWidth = 26;
    const std::pair<CheckedFilesModel::Column, QStringView> widest[] = {
        {CheckedFilesModel::File, u"Returned by Ann.xls"},
        {CheckedFilesModel::Customer, u"Acme Trading Ltd"},
        {CheckedFilesModel::Respondent, u"Ann Respondent"},
        {CheckedFilesModel::Date, u"88/88/8888"},
        {CheckedFilesModel::Judgement, u"changes stored answers"},
        {CheckedFilesModel::New, u"New"},
        {CheckedFilesModel::Same, u"Same"},
        {CheckedFilesModel::Changed, u"Changed"},
        {CheckedFilesModel::LeftOut, u"Left Out"}};
    head->resizeSection(CheckedFilesModel::Tick, tickWidth);
    for (const auto& [column, text] : widest) {
        const int mark = column == CheckedFilesModel::Judgement ? markSize + margins : 0;
        head->resizeSection(column, fontMetrics().horizontalAdvance(text.toString()) + mark + margins);
    }
}

bool frmCheckFiles::onKeyDown(int key) {
    if (!ui->lsvFiles->hasFocus())
        return DefaultForm::onKeyDown(key);
    switch (key) {
    case Qt::Key_Space:
        toggleTicks(*ui->lsvFiles, CheckedFilesModel::Tick);
        return true;
    case Qt::Key_Delete:
        cmdRemove_Click();
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        compareAnswers(ui->lsvFiles->currentIndex().siblingAtColumn(CheckedFilesModel::File));
        return true;
    default:
        return DefaultForm::onKeyDown(key);
    }
}

void frmCheckFiles::cmdAddFiles_Click() {
    guardedWithDescription([this] {
        cmnDlg.Filter = u"All Files (*.xls)|*.xls"_s + returnedFilter;
        cmnDlg.Flags = forms::AllowMultiselect;
        cmnDlg.ShowOpen();
        checkFiles(cmnDlg.FileName.split(u'\n', Qt::SkipEmptyParts));
    });
}

void frmCheckFiles::cmdAddFolder_Click() {
    const QString folder = forms::openFolderHook();
    if (folder.isEmpty())
        return;
    const QStringList found = findReturnedFiles(folder);
    if (found.isEmpty())
        forms::msgBox(u"There are no survey files in this folder."_s, style::information);
    checkFiles(found);
}

void frmCheckFiles::cmdRemove_Click() {
    const int shownRow = ui->lsvFiles->currentIndex().row();
    files->remove(chosenRows());
    notice.clear();
    showSummary();
    chooseRow(qMin(shownRow, sorted->rowCount() - 1));
}

void frmCheckFiles::cmdImportTicked_Click() {
    std::vector<ReturnedFile> ticked;
    QStringList paths;
    for (const CheckedFile& file : files->ticked()) {
        ticked.emplace_back(file.path, file.hash);
        paths << file.path;
    }
    if (ticked.empty()) {
        forms::msgBox(u"Tick one or more files to import"_s, style::information);
        return;
    }
    {
        const Busy busy(*this, u"Importing Survey File(s)......"_s);
        Progress progress(*this, int(ticked.size()));
        readChosenFiles(
            ticked, [&](const QString& title, qsizetype) { return progress.step(u"Importing "_s + title); });
    }
    checkFiles(paths);
    forms::msgBox(u"Import Done...."_s, style::information);
}

void frmCheckFiles::checkFiles(const QStringList& paths) {
    if (paths.isEmpty())
        return;
    std::vector<CheckedFile> checked;
    bool isCancelled = false;
    guarded([&] {
        const Busy busy(*this, u"Checking Survey File(s)......"_s);
        SurveyChecker checker;
        Progress progress(*this, int(paths.size()));
        for (const QString& path : paths) {
            isCancelled = !progress.step(u"Checking "_s + path.section(u'/', -1));
            if (isCancelled)
                return;
            checked.push_back(checker.check(path));
        }
    });
    notice = isCancelled ? u" Cancelled: %1 not checked."_s.arg(paths.size() - qsizetype(checked.size()))
                         : QString();
    const int shownRow = ui->lsvFiles->currentIndex().row();
    files->put(std::move(checked));
    showSummary();
    chooseRow(qMax(0, qMin(shownRow, sorted->rowCount() - 1)));
}

void frmCheckFiles::compareAnswers(const QModelIndex& shown) {
    if (!shown.isValid() || shown.column() == CheckedFilesModel::Tick)
        return;
    const CheckedFile& file = files->file(sorted->mapToSource(shown).row());
    if (file.answers.empty()) {
        forms::msgBox(u"The answers of this file cannot be compared: "_s + wordOf(file.verdict) + u"\r\n" +
                          file.remark,
                      style::information);
        return;
    }
    frmCompareAnswers::instance().compare(file);
    frmCompareAnswers::instance().ShowModal();
}

void frmCheckFiles::showSummary() {
    ui->lblSummary->setText(files->summary() + notice);
}

std::vector<int> frmCheckFiles::chosenRows() const {
    std::vector<int> rows;
    for (const QModelIndex& index : ui->lsvFiles->selectionModel()->selectedRows())
        rows.push_back(sorted->mapToSource(index).row());
    std::sort(rows.begin(), rows.end());
    return rows;
}

void frmCheckFiles::chooseRow(int shownRow) {
    ui->lsvFiles->setCurrentIndex(sorted->index(shownRow, CheckedFilesModel::File));
}
