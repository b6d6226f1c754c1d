// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/frmCleanUp.h"

#include "core/base/backup.h"
#include "core/base/busy.h"
#include "core/base/gblGlobal.h"
#include "core/base/progress.h"
#include "core/base/shell.h"
#include "core/privacy/erasure.h"
#include "core/privacy/erasureprotocol.h"
#include "platform/forms/clock.h"
#include "platform/forms/msgbox.h"
#include "ui_frmCleanUp.h"

#include <QFileInfo>
#include <QLocale>

using namespace Qt::StringLiterals;
namespace style = forms::style;

namespace {

constexpr int helpContext = 222;

QString linesOf(const OrphanResult& result, const QString& separator) {
    QStringList lines;
    for (const Orphans& orphans : result.found) {
        if (orphans.rows > 0)
            lines << orphans.line();
    }
    return lines.join(separator);
}

QString counted(int rows) {
    return rows == 1 ? u"1 row"_s : QLocale::c().toString(rows) + u" rows";
}

/// Megabytes, at least 1.
qint64 megabytesOf(const QString& path) {
    constexpr qint64 megabyte = 1'000'000;
    return (QFileInfo(path).size() + megabyte - 1) / megabyte;
}

} // namespace

frmCleanUp::frmCleanUp() : DefaultForm(Kind::SubWindow), ui(std::make_unique<Ui::frmCleanUp>()) {
    ui->setupUi(this);
    ui->lsvOrphans->setColumns({{u"What"_s, 0.5}, {u"Table"_s, 0.32}, {u"Rows"_s, 0.18}});
    connect(ui->cmdSearch, &QPushButton::clicked, this, &frmCleanUp::cmdSearch_Click);
    connect(ui->cmdRemove, &QPushButton::clicked, this, &frmCleanUp::cmdRemove_Click);
    connect(ui->cmdRewrite, &QPushButton::clicked, this, &frmCleanUp::cmdRewrite_Click);
    connect(ui->cmdHelp, &QPushButton::clicked, this, [] { showHelpTopic(helpContext); });
    connect(ui->cmdClose, &QPushButton::clicked, this, [this] { Unload(); });
}

frmCleanUp::~frmCleanUp() = default;

void frmCleanUp::onLoad() {
    toCenterForm(*this);
    show({});
    ui->lblDone->setText(u"Search looks through the whole store."_s);
    ui->cmdRewrite->setEnabled(lookedUp([] { return cnnMain->IsFile(); }));
    ui->cmdSearch->setFocus();
}

bool frmCleanUp::onKeyDown(int key) {
    return pressOnEnter(key, *ui->cmdSearch) || DefaultForm::onKeyDown(key);
}

void frmCleanUp::show(const OrphanResult& result) {
    found = result;
    std::vector<QStringList> rows;
    for (const Orphans& orphans : found.found)
        rows.push_back({orphans.what, orphans.table, QLocale::c().toString(orphans.rows)});
    ui->lsvOrphans->setItems(std::move(rows));
    ui->cmdRemove->setEnabled(found.rows() > 0);
}

void frmCleanUp::cmdSearch_Click() {
    OrphanResult result;
    const bool isDone = guarded([&] {
        const Busy searching(*this, u"Searching......"_s);
        Progress progress(*this, countOrphanSteps());
        result = countOrphans([&](const QString& what) { return progress.step(what); });
    });
    if (!isDone)
        return;
    if (result.isCancelled) {
        ui->lblDone->setText(u"Cancelled."_s);
        return;
    }
    show(result);
    ui->lblDone->setText(found.rows() == 0 ? u"Nothing has been left behind."_s
                                           : counted(found.rows()) + u" can be removed.");
}

/// False when the user has cancelled.
bool frmCleanUp::copyBefore() {
    Progress progress(*this, 0);
    progress.step(u"Copying the store"_s);
    return copyStore(*cnnMain, strDatabasePath,
                     [&](const QString& table) { return progress.stepOrGoOn(table); });
}

void frmCleanUp::cmdRemove_Click() {
    if (forms::msgBox(
            u"Remove this for good? The store is copied before.\r\n\r\n"_s + linesOf(found, u"\r\n"_s),
            style::yesNo + style::information + style::secondButton, titleWithVersion) != forms::Answer::Yes)
        return;
    OrphanResult removed;
    const bool isDone = guarded([&] {
        const Busy removing(*this, u"Cleaning up......"_s);
        removed.isCancelled = !copyBefore();
        if (removed.isCancelled)
            return;
        Progress progress(*this, countOrphanSteps());
        removed = removeOrphans([&](const QString& what) { return progress.step(what); }, forms::nowHook());
    });
    if (isDone && removed.isCancelled)
        ui->lblDone->setText(u"Cancelled. Nothing has been removed."_s);
    else if (isDone)
        showRemoved(removed);
}

void frmCleanUp::showRemoved(const OrphanResult& removed) {
    const QDateTime now = forms::nowHook();
    const QString protocol = u"Clean up\n"_s + now.toString(u"dd/MM/yyyy hh:mm:ss"_s) +
                             u"\n\nRows removed\n  " + linesOf(removed, u"\n  "_s) + u'\n';
    QString path;
    guardedWithDescription([&] { path = saveProtocol(protocol, u"Clean Up"_s, now); });
    OrphanResult none = removed;
    for (Orphans& orphans : none.found)
        orphans.rows = 0;
    show(none);
    ui->lblDone->setText(counted(removed.rows()) + u" removed." +
                         (path.isEmpty() ? QString() : u" Protocol: "_s + path));
    if (!removed.files.isEmpty())
        forms::msgBox(
            u"These survey files are in the register no more. Delete them yourself:\r\n"_s +
                removed.files.mid(0, 20).join(u"\r\n"_s) +
                (removed.files.size() > 20 ? u"\r\nand %1 more"_s.arg(removed.files.size() - 20) : QString()),
            style::information, titleWithVersion);
}

void frmCleanUp::cmdRewrite_Click() {
    if (forms::msgBox(
            u"Write the file of the store anew? It becomes as small as it can be, and nothing of what "
            "was deleted is left in it. This takes a while with a large store."_s,
            style::yesNo + style::information + style::secondButton, titleWithVersion) != forms::Answer::Yes)
        return;
    const qint64 before = megabytesOf(strDatabasePath);
    bool isWritten = false;
    if (guarded([&] {
            const Busy rewriting(*this, u"Writing the file......"_s);
            Progress progress(*this, 0);
            progress.step(u"Writing the file anew"_s);
            isWritten = rewriteStore([&] { return progress.goOn(); });
        }))
        ui->lblDone->setText(
            isWritten ? u"The file has %1 MB, before %2 MB."_s.arg(megabytesOf(strDatabasePath)).arg(before)
                      : u"Cancelled."_s);
}
