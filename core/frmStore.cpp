// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/frmStore.h"

#include "core/MDIMain.h"
#include "core/Main.h"
#include "core/base/backup.h"
#include "core/base/busy.h"
#include "core/base/gblGlobal.h"
#include "core/base/progress.h"
#include "core/signin.h"
#include "core/store/openstore.h"
#include "core/store/programsetting.h"
#include "core/store/storecopy.h"
#include "core/storechange.h"
#include "core/storecheck.h"
#include "core/storeupgrade.h"
#include "platform/forms/msgbox.h"
#include "ui_frmStore.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;
namespace style = forms::style;

namespace {

constexpr int helpContext = 213;

/// Opens a server's store; a failure becomes a Refusal with its sentence.
void open(ado::Connection& store, const StoreAccess& access) {
    store.ConnectionString = connectionText(access);
    try {
        openStore(store);
    } catch (const Failure& failure) {
        throw Refusal(failure.text());
    }
}

/// Throws a Refusal for a server that cannot be asked.
int countCustomers(ado::Connection& server) {
    try {
        return ado::Recordset(u"select count(*) as customers from customer"_s, server)["customers"]
            .Value()
            .toInt();
    } catch (const Failure& failure) {
        throw Refusal(failure.text());
    }
}

/// The home directory's store, when a copy is to take its place, is copied to backup/ first.
void keepReplaced(const QString& path) {
    if (QFileInfo(path) != QFileInfo(homeDirectory() + u"/Tallywell.mdb") || !QFileInfo::exists(path))
        return;
    ado::Connection replaced;
    replaced.OpenReadOnly(path, storePassword());
    copyStore(replaced, path);
}

[[noreturn]] void copyFailed(const Failure& failure) {
    cnnMain->Errors().Clear(); // shown by this message
    throw Refusal(u"The copy has failed. "_s + failure.text());
}

} // namespace

frmStore::frmStore() : DefaultForm(Kind::SubWindow), ui(std::make_unique<Ui::frmStore>()) {
    ui->setupUi(this);
    connectButtons();
}

frmStore::~frmStore() = default;

void frmStore::connectButtons() {
    const auto browse = [](QLineEdit* line, const auto& ask) {
        return [line, ask] {
            if (const QString path = ask(); !path.isEmpty())
                line->setText(path);
        };
    };
    connect(ui->cmdBrowseAuthority, &QPushButton::clicked, this, browse(ui->txtAuthority, [] {
                forms::CommonDialog dialog;
                dialog.Filter = u"Certificates (*.pem *.crt)|*.pem *.crt|All Files (*)|*"_s;
                dialog.ShowOpen();
                return dialog.FileName;
            }));
    connect(ui->cmdBrowseFolder, &QPushButton::clicked, this,
            browse(ui->txtFolder, [] { return forms::openFolderHook(); }));
    for (QRadioButton* option : {ui->opnFile, ui->opnServer})
        connect(option, &QRadioButton::toggled, this, &frmStore::enableControls);
    for (QLineEdit* line : {ui->txtServer, ui->txtDatabase, ui->txtUser, ui->txtAuthority})
        connect(line, &QLineEdit::textChanged, this, &frmStore::enableControls);
    connect(ui->cmdMove, &QPushButton::clicked, this, &frmStore::cmdMove_Click);
    connect(ui->cmdCopy, &QPushButton::clicked, this, &frmStore::cmdCopy_Click);
    connect(ui->cmdOK, &QPushButton::clicked, this, &frmStore::cmdOK_Click);
    connect(ui->cmdCancel, &QPushButton::clicked, this, [this] { Unload(); });
    connect(ui->cmdHelp, &QPushButton::clicked, this, [] { showHelpTopic(helpContext); });
}

void frmStore::onLoad() {
    toCenterForm(*this);
    const StoreChoice& choice = storeInUse().choice;
    showChoice(choice);
    isKeptAsRead = choice.isServer() && !findKeptPassword(choice).isEmpty();
    ui->chkKeep->setChecked(isKeptAsRead);
    // Without a connection the folder is not known and stays as it is.
    folderAsRead =
        cnnMain && cnnMain->State() == ado::StateOpen ? lookedUp(readSurveyFolderSetting) : QString();
    ui->txtFolder->setText(folderAsRead);
    ui->txtFolder->setPlaceholderText(homeDirectory());
}

bool frmStore::onKeyDown(int key) {
    return pressOnEnter(key, *ui->cmdOK) || DefaultForm::onKeyDown(key);
}

void frmStore::showChoice(const StoreChoice& choice) {
    ui->opnFile->setChecked(!choice.isServer());
    ui->opnServer->setChecked(choice.isServer());
    ui->txtServer->setText(choice.server);
    ui->txtDatabase->setText(choice.database);
    ui->txtUser->setText(choice.user);
    ui->txtAuthority->setText(choice.authority);
    enableControls();
    (choice.isServer() ? ui->opnServer : ui->opnFile)->setFocus();
}

void frmStore::enableControls() {
    const bool isServer = ui->opnServer->isChecked();
    ui->fraServer->setEnabled(isServer);
    ui->cmdMove->setEnabled(isServer && !storeInUse().choice.isServer());
    ui->fraFolder->setEnabled(!isAnother());
    ui->txtPassword->setPlaceholderText(isServer && !isAnother() ? u"unchanged"_s : QString());
}

StoreChoice frmStore::shownChoice() const {
    if (!ui->opnServer->isChecked())
        return {};
    return {.server = ui->txtServer->text().trimmed(),
            .database = ui->txtDatabase->text().trimmed(),
            .user = ui->txtUser->text().trimmed(),
            .authority = ui->txtAuthority->text().trimmed()};
}

/// Without an entry, the password in use or the one that the desktop keeps.
StoreAccess frmStore::shownAccess() const {
    StoreAccess access{shownChoice(), ui->txtPassword->text()};
    if (access.password.isEmpty())
        access.password = isAnother() ? findKeptPassword(access.choice) : storeInUse().password;
    return access;
}

bool frmStore::isAnother() const {
    const StoreChoice& used = storeInUse().choice;
    return ui->opnServer->isChecked() != used.isServer() || shownChoice() != used;
}

void frmStore::requireOnlyForm() const {
    if (!MDIMain::instance().isOnlyForm(*this))
        throw Refusal(u"Close the other windows first: they show rows of the store in use."_s);
}

void frmStore::requireComplete() const {
    const std::pair<QLineEdit*, QString> needed[] = {
        {ui->txtServer, u"server"_s}, {ui->txtDatabase, u"database"_s}, {ui->txtUser, u"user"_s}};
    for (const auto& [line, name] : needed) {
        if (line->text().trimmed().isEmpty()) {
            line->setFocus();
            throw Refusal(u"Enter the "_s + name + u'.');
        }
    }
}

void frmStore::cmdOK_Click() {
    bool isDone = false;
    guardedUnconnected(u"Error : "_s, [&] {
        const bool isServer = ui->opnServer->isChecked();
        if (isServer)
            requireComplete();
        if (!isAnother())
            saveSurveyFolder();
        if (isAnother() || (isServer && !ui->txtPassword->text().isEmpty()))
            isDone = isServer ? useServer(shownAccess()) : useFile();
        else
            isDone = true;
        if (isDone && isServer)
            keepOrForgetPassword();
    });
    if (isDone)
        Unload();
}

void frmStore::saveSurveyFolder() {
    const QString folder = QDir::cleanPath(ui->txtFolder->text().trimmed());
    if (folder == folderAsRead)
        return;
    const QFileInfo wanted(folder);
    if (!folder.isEmpty() && !(wanted.isAbsolute() && wanted.isDir() && wanted.isWritable())) {
        ui->txtFolder->setFocus();
        throw Refusal(u"'%1' is no folder that you can write to. Enter its full path."_s.arg(folder));
    }
    reconnect();
    writeSurveyFolderSetting(folder);
}

bool frmStore::useServer(const StoreAccess& access) {
    requireOnlyForm();
    const Busy opening(*this);
    StoreChange change(access);
    StoreChange::tryOut();
    strDatabasePath = serverCopiesPath();
    change.keep();
    return true;
}

/// False when the file cannot be used; the store in use stays.
bool frmStore::useFile() {
    requireOnlyForm();
    StoreChange change({});
    if (!toCreateDSN(u"gwl"_s, strDatabasePath) || checkStore(strDatabasePath) != StoreState::Good)
        return false;
    if (needsUpgrade())
        upgradeStore(strDatabasePath);
    StoreChange::tryOut();
    change.keep();
    return true;
}

/// A password that was taken from the keyring stays there unless the user has cleared the box.
void frmStore::keepOrForgetPassword() {
    const StoreAccess& access = storeInUse();
    const bool isToBeKept = ui->chkKeep->isChecked();
    if (isToBeKept && findKeptPassword(access.choice) != access.password)
        keepPassword(access);
    else if (!isToBeKept && (isKeptAsRead || !ui->txtPassword->text().isEmpty()))
        forgetPassword(access.choice);
}

void frmStore::cmdMove_Click() {
    const QString file = strDatabasePath;
    guarded([&] {
        requireComplete();
        requireOnlyForm();
        const StoreAccess access = shownAccess();
        if (!copyToServer(access))
            return;
        useServer(access);
        keepOrForgetPassword();
        forms::msgBox(u"The server has as many rows as the file, table by table, and is in use from now on. "
                      "The file '"_s +
                          file + u"' stays as it is. Survey files are not moved.",
                      style::information, titleWithVersion);
        Unload();
    });
}

/// False when the user keeps what the server has, or cancels.
bool frmStore::copyToServer(const StoreAccess& access) {
    ado::Connection server;
    open(server, access);
    if (const int customers = countCustomers(server);
        customers > 0 &&
        forms::msgBox(
            u"The database on the server has data of %1 customers. Is all of that to be deleted and "
            "replaced by this store?"_s.arg(customers),
            style::yesNo + style::critical + style::secondButton, titleWithVersion) != forms::Answer::Yes)
        return false;
    const Busy copying(*this, u"Copying the store......"_s);
    Progress progress(*this, countCopySteps(*cnnMain));
    try {
        return copyAllRows(*cnnMain, server, [&](const QString& table) { return progress.step(table); });
    } catch (const Failure& failure) {
        copyFailed(failure);
    }
}

void frmStore::cmdCopy_Click() {
    forms::CommonDialog dialog;
    dialog.Filter = u"Mdb Files (*.mdb)|*.mdb"_s;
    dialog.InitDir = homeDirectory();
    dialog.ShowSave();
    const QString path = dialog.FileName;
    if (path.isEmpty())
        return;
    guarded([&] {
        if (cnnMain->IsFile() && QFileInfo(path) == QFileInfo(strDatabasePath))
            throw Refusal(u"This file is the store in use. Choose another name."_s);
        const Busy copying(*this, u"Copying the store......"_s);
        Progress progress(*this, countCopySteps(*cnnMain));
        bool isCopied = false;
        try {
            keepReplaced(path);
            isCopied =
                copyStoreTo(*cnnMain, path, [&](const QString& table) { return progress.step(table); });
        } catch (const Failure& failure) {
            copyFailed(failure);
        }
        if (isCopied)
            forms::msgBox(u"The store has been copied into the file '"_s + path + u"'.", style::information,
                          titleWithVersion);
    });
}
