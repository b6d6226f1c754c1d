// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/frmBackups.h"

#include "core/MDIMain.h"
#include "core/base/backup.h"
#include "core/base/busy.h"
#include "core/base/gblGlobal.h"
#include "core/base/progress.h"
#include "core/base/shell.h"
#include "core/restart.h"
#include "core/store/storechoice.h"
#include "platform/forms/msgbox.h"
#include "ui_frmBackups.h"

#include <QFileInfo>
#include <QLocale>

using namespace Qt::StringLiterals;
namespace style = forms::style;

namespace {

constexpr int helpContext = 223;

QString shownSize(qint64 bytes) {
    constexpr double megabyte = 1e6;
    return QLocale::c().toString(double(bytes) / megabyte, 'f', 1) + u" MB";
}

} // namespace

frmBackups::frmBackups() : DefaultForm(Kind::SubWindow), ui(std::make_unique<Ui::frmBackups>()) {
    ui->setupUi(this);
    ui->lsvCopies->setColumns({{u"Made"_s, 0.26}, {u"Size"_s, 0.14}, {u"Check"_s, 0.2}, {u"File"_s, 0.4}});
    connect(ui->cmdBackUp, &QPushButton::clicked, this, &frmBackups::cmdBackUp_Click);
    connect(ui->cmdCheck, &QPushButton::clicked, this, &frmBackups::cmdCheck_Click);
    connect(ui->cmdRestore, &QPushButton::clicked, this, &frmBackups::cmdRestore_Click);
    connect(ui->cmdHelp, &QPushButton::clicked, this, [] { showHelpTopic(helpContext); });
    connect(ui->cmdClose, &QPushButton::clicked, this, [this] { Unload(); });
}

frmBackups::~frmBackups() = default;

void frmBackups::onLoad() {
    toCenterForm(*this);
    const bool isFile =
        cnnMain && cnnMain->State() == ado::StateOpen ? cnnMain->IsFile() : !storeInUse().choice.isServer();
    ui->cmdRestore->setEnabled(isFile);
    ui->lblServer->setVisible(!isFile);
    ui->cmdBackUp->setFocus();
}

void frmBackups::onActivate() {
    fillCopies();
}

void frmBackups::fillCopies() {
    const int row = std::max(0, ui->lsvCopies->CurrentRow());
    copies = findStoreCopies();
    std::vector<QStringList> rows;
    for (const StoreCopy& copy : copies)
        rows.push_back(
            {copy.date(), shownSize(copy.size), checked[copy.path], QFileInfo(copy.path).fileName()});
    ui->lsvCopies->setItems(std::move(rows));
    ui->lsvCopies->setCurrentRow(row);
    ui->lsvCopies->setSelected(row, true);
}

void frmBackups::cmdBackUp_Click() {
    bool isCopied = false;
    const bool isDone = guarded([&] {
        const Busy copying(*this, u"Copying the store......"_s);
        Progress progress(*this, 0);
        progress.step(u"Copying the store"_s);
        isCopied = copyStore(*cnnMain, strDatabasePath,
                             [&](const QString& table) { return progress.stepOrGoOn(table); });
    });
    fillCopies();
    if (isDone && !isCopied)
        ui->lblDone->setText(u"Cancelled."_s);
    if (!isCopied || copies.empty())
        return;
    ui->lsvCopies->setCurrentRow(0);
    ui->lsvCopies->setSelected(0, true);
    ui->lblDone->setText(u"Copied to "_s + copies.front().path);
}

const StoreCopy* frmBackups::chosen() {
    const std::vector<int> rows = ui->lsvCopies->SelectedRows();
    if (!rows.empty() && std::size_t(rows.front()) < copies.size())
        return &copies[std::size_t(rows.front())];
    forms::msgBox(u"Choose a copy first."_s, style::information, titleWithVersion);
    return nullptr;
}

bool frmBackups::check(const StoreCopy& copy) {
    const Busy checking(*this, u"Checking the copy......"_s);
    Progress progress(*this, 0);
    progress.step(QFileInfo(copy.path).fileName());
    const CopyFault fault = checkCopy(copy.path, [&] { return progress.goOn(); });
    if (!fault.isCancelled)
        checked[copy.path] = fault.words.isEmpty() ? u"good"_s : fault.words;
    return !fault.isCancelled && fault.words.isEmpty();
}

void frmBackups::cmdCheck_Click() {
    if (const StoreCopy* copy = chosen()) {
        check(*copy);
        fillCopies();
    }
}

void frmBackups::cmdRestore_Click() {
    const StoreCopy* wanted = chosen();
    if (!wanted)
        return;
    const StoreCopy copy = *wanted;
    const bool isAlone = guarded([this] {
        if (!MDIMain::instance().isOnlyForm(*this))
            throw Refusal(u"Close the other windows first: they show rows of the store in use."_s);
    });
    if (!isAlone)
        return;
    const bool isGood = check(copy);
    fillCopies();
    if (!isGood && !checked[copy.path].isEmpty())
        forms::msgBox(u"This copy cannot be used: "_s + checked[copy.path] + u'.', style::critical,
                      titleWithVersion);
    if (isGood && askRestore(copy) && restore(copy))
        endAndStartAgain();
}

bool frmBackups::askRestore(const StoreCopy& copy) {
    const int erased = countErasedSince(copy.made);
    const QString erasures =
        erased == 0
            ? QString()
            : u"\r\n\r\nPersons erased since then: %1. They come back and have to be erased again; the "
              "folder protocols has their numbers."_s.arg(erased);
    return forms::msgBox(
               u"Go back to the copy of %1? What has been saved since is not in it. The present store is "
               "copied before. Then the program ends and starts again."_s.arg(copy.date()) +
                   erasures,
               style::yesNo + style::critical + style::secondButton, titleWithVersion) == forms::Answer::Yes;
}

bool frmBackups::restore(const StoreCopy& copy) {
    bool isDamaged = !cnnMain || cnnMain->State() != ado::StateOpen;
    bool isRestored = false;
    const auto replaces = [&](const std::function<bool(const ado::Step&)>& work) {
        return guardedUnconnected(u"Error : "_s,
                                  [&] {
                                      const Busy restoring(*this, u"Restoring the copy......"_s);
                                      Progress progress(*this, 0);
                                      progress.step(u"Restoring the copy"_s);
                                      isRestored = work([&] { return progress.goOn(); });
                                      if (!isRestored && !isDamaged)
                                          ui->lblDone->setText(u"Cancelled. Nothing has been changed."_s);
                                  }) &&
               isRestored;
    };
    if (!isDamaged)
        replaces([&](const ado::Step& step) {
            isDamaged = isPresentDamaged(step);
            return !isDamaged && step() && restoreCopy(copy.path, step);
        });
    if (isDamaged)
        isRestored =
            forms::msgBox(u"The present store is damaged and cannot be copied. Go back to the copy all "
                          "the same? The damaged file is kept beside the copies."_s,
                          style::yesNo + style::critical + style::secondButton,
                          titleWithVersion) == forms::Answer::Yes &&
            replaces([&](const ado::Step&) { return !replaceDamagedStore(copy.path).isEmpty(); });
    if (!isRestored)
        reconnect();
    return isRestored;
}
