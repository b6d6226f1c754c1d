// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/frmReading.h"

#include "core/base/busy.h"
#include "core/base/failure.h"
#include "core/base/gblGlobal.h"
#include "core/base/shell.h"
#include "exchange/droppedfiles.h"
#include "exchange/files/filenames.h"
#include "exchange/frmCheckFiles.h"
#include "exchange/reading.h"
#include "platform/forms/msgbox.h"
#include "ui_frmReading.h"

using namespace Qt::StringLiterals;
namespace style = forms::style;

namespace {

constexpr int helpContext = 200;

/// The name of a file without its folder.
QString titleOf(const QString& path) {
    return path.section(u'/', -1);
}

} // namespace

frmReading::frmReading() : DefaultForm(Kind::SubWindow), ui(std::make_unique<Ui::frmReading>()) {
    ui->setupUi(this);
    connect(ui->cmdBrowse, &QPushButton::clicked, this, &frmReading::cmdBrowse_Click);
    connect(ui->lstXlsFiles, &forms::ListBox::Click, this, &frmReading::lstXlsFiles_Click);
    connect(ui->cmdImport, &QPushButton::clicked, this, &frmReading::cmdImport_Click);
    connect(ui->cmdHelp, &QPushButton::clicked, this, [] { showHelpTopic(helpContext); });
    connect(ui->cmdClose, &QPushButton::clicked, this, [this] { Unload(); });
    connect(ui->cmdCheck, &QPushButton::clicked, this, &frmReading::cmdCheck_Click);
    new DropTarget(*this, [this](const QStringList& paths) { addFiles(paths); });
}

frmReading::~frmReading() = default;

void frmReading::onLoad() {
    toCenterForm(*this);
}

void frmReading::blankLabels() {
    ui->lblCustName->clear();
    ui->lblRespName->clear();
    ui->lblSDate->clear();
}

void frmReading::cmdBrowse_Click() {
    blankLabels();
    guardedWithDescription([this] {
        cmnDlg.Filter = u"All Files (*.xls)|*.xls"_s + returnedFilter;
        cmnDlg.Flags = forms::AllowMultiselect;
        cmnDlg.ShowOpen();
        if (cmnDlg.FileName.trimmed().isEmpty())
            return;
        ui->lstXlsFiles->Clear();
        for (const QString& path : cmnDlg.FileName.split(u'\n', Qt::SkipEmptyParts)) {
            if (titleOf(path).trimmed() != u"Template.xls")
                ui->lstXlsFiles->AddItem(path);
        }
    });
}

void frmReading::lstXlsFiles_Click() {
    blankLabels();
    if (ui->lstXlsFiles->SelCount() != 1)
        return;
    guarded([this] {
        ado::Recordset log(u"select * from log where "_s +
                               conditionOfTitle(findRegisteredTitle(titleOf(ui->lstXlsFiles->Text()))),
                           *cnnMain);
        if (log.Eof())
            return;
        ui->lblCustName->setText(log["custname"].Text());
        ui->lblRespName->setText(log["respname"].Text());
        ui->lblSDate->setText(log["sdate"].Text());
    });
}

void frmReading::cmdImport_Click() {
    Busy busy(*this);
    if (ui->lstXlsFiles->ListCount() == 0) {
        forms::msgBox(u"No Xls files present in the List to Import"_s, style::information);
    } else if (ui->lstXlsFiles->SelCount() == 0) {
        forms::msgBox(u"Select one or more file(s) to import"_s, style::information);
    } else {
        busy.say(u"Importing Survey File(s)......"_s);
        toreadFromXlsFile();
        forms::msgBox(u"Import Done...."_s, style::information);
    }
}

void frmReading::toreadFromXlsFile() {
    std::vector<ReturnedFile> files;
    for (int line = 0; line < ui->lstXlsFiles->ListCount(); ++line) {
        if (ui->lstXlsFiles->Selected(line))
            files.emplace_back(ui->lstXlsFiles->List(line));
    }
    const std::map<QString, QString> reasons =
        readChosenFiles(files, [](const QString& title, qsizetype left) {
            showStatus(u"Importing Survey File(s)......"_s + title + u", %1 left"_s.arg(left));
            return true;
        });
    noteReasons(reasons);
}

/// At the files that were to be read.
void frmReading::noteReasons(const std::map<QString, QString>& reasons) {
    for (int line = 0; line < ui->lstXlsFiles->ListCount(); ++line) {
        if (!ui->lstXlsFiles->Selected(line))
            continue;
        const auto reason = reasons.find(ui->lstXlsFiles->List(line));
        ui->lstXlsFiles->setNote(line, reason == reasons.end() ? QString() : reason->second.simplified());
    }
}

void frmReading::cmdCheck_Click() {
    QStringList all;
    QStringList chosen;
    for (int line = 0; line < ui->lstXlsFiles->ListCount(); ++line) {
        all << ui->lstXlsFiles->List(line);
        if (ui->lstXlsFiles->Selected(line))
            chosen << all.last();
    }
    frmCheckFiles::instance().Show();
    frmCheckFiles::instance().checkFiles(chosen.isEmpty() ? all : chosen);
}

void frmReading::addFiles(const QStringList& paths) {
    QStringList listed;
    for (int line = 0; line < ui->lstXlsFiles->ListCount(); ++line) {
        listed << ui->lstXlsFiles->List(line);
        ui->lstXlsFiles->setSelected(line, false);
    }
    for (const QString& path : paths) {
        if (!listed.contains(path)) {
            listed << path;
            ui->lstXlsFiles->AddItem(path);
        }
        ui->lstXlsFiles->setSelected(int(listed.indexOf(path)), true);
    }
}
