// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/frmReading.h"

#include "core/MDIMain.h"
#include "core/failure.h"
#include "core/gblGlobal.h"
#include "exchange/reader.h"
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

/// Names the files that were not read to their end, the first ones when they are many.
void toNameBadFiles(const QStringList& bad) {
    constexpr qsizetype mostNamed = 15;
    QString text = u"Not read to the end:\r\n"_s + bad.first(qMin(bad.size(), mostNamed)).join(u"\r\n"_s);
    if (bad.size() > mostNamed)
        text += u"\r\nand %1 more"_s.arg(bad.size() - mostNamed);
    forms::msgBox(text, style::information);
}

} // namespace

frmReading::frmReading() : DefaultForm(Kind::SubWindow), ui(std::make_unique<Ui::frmReading>()) {
    ui->setupUi(this);
    connect(ui->cmdBrowse, &QPushButton::clicked, this, &frmReading::cmdBrowse_Click);
    connect(ui->lstXlsFiles, &forms::ListBox::Click, this, &frmReading::lstXlsFiles_Click);
    connect(ui->cmdImport, &QPushButton::clicked, this, &frmReading::cmdImport_Click);
    connect(ui->cmdHelp, &QPushButton::clicked, this, [] { toShowHelpTopic(helpContext); });
    connect(ui->cmdClose, &QPushButton::clicked, this, [this] { Unload(); });
}

frmReading::~frmReading() = default;

void frmReading::onLoad() {
    toCenterForm(*this);
}

void frmReading::toBlankLabels() {
    ui->lblCustName->clear();
    ui->lblRespName->clear();
    ui->lblSDate->clear();
}

void frmReading::cmdBrowse_Click() {
    constexpr int severalFiles = 512;
    toBlankLabels();
    guardedWithDescription([this] {
        cmnDlg.Filter = u"All Files (*.xls)|*.xls"_s;
        cmnDlg.Flags = severalFiles;
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
    toBlankLabels();
    if (ui->lstXlsFiles->SelCount() != 1)
        return;
    guarded({.form = this}, [this] {
        toReconnect();
        ado::Recordset log;
        log.Open(u"select * from log where xlsfilename='"_s + toStoredText(titleOf(ui->lstXlsFiles->Text())) +
                     u"'",
                 *cnnMain);
        if (log.Eof())
            return;
        ui->lblCustName->setText(log["custname"].Text());
        ui->lblRespName->setText(log["respname"].Text());
        ui->lblSDate->setText(log["sdate"].Text());
    });
}

void frmReading::cmdImport_Click() {
    setMousePointer(forms::Hourglass);
    if (ui->lstXlsFiles->ListCount() == 0) {
        forms::msgBox(u"No Xls files present in the List to Import"_s, style::information);
    } else if (ui->lstXlsFiles->SelCount() == 0) {
        forms::msgBox(u"Select one or more file(s) to import"_s, style::information);
    } else {
        toShowStatus(u"Importing Survey File(s)......"_s);
        toreadFromXlsFile();
        forms::msgBox(u"Import Done...."_s, style::information);
        toShowStatus({});
    }
    setMousePointer(forms::DefaultPointer);
}

void frmReading::toreadFromXlsFile() {
    QStringList paths;
    for (int line = 0; line < ui->lstXlsFiles->ListCount(); ++line) {
        if (ui->lstXlsFiles->Selected(line))
            paths << ui->lstXlsFiles->List(line);
    }
    const QStringList bad = SurveyReader().readAll(paths, [](const QString& title, qsizetype left) {
        toShowStatus(u"Importing Survey File(s)......"_s + title + u", %1 left"_s.arg(left));
    });
    if (paths.size() > 1 && !bad.isEmpty())
        toNameBadFiles(bad);
}
