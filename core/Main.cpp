// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/Main.h"
#include "core/MDIMain.h"
#include "core/base/failure.h"
#include "core/base/gblGlobal.h"
#include "core/frmSplash.h"
#include "core/onehome.h"
#include "core/restart.h"
#include "core/signin.h"
#include "core/storecheck.h"
#include "core/storeupgrade.h"
#include "platform/desktop/application.h"
#include "platform/desktop/helpwindow.h"
#include "platform/desktop/opener.h"
#include "platform/excel/application.h"
#include "platform/forms/msgbox.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

void showHelp(const forms::CommonDialog& dialog) {
    const int context = dialog.HelpCommand == forms::HelpContents ? 0 : dialog.HelpContext;
    if (!desktop::HelpWindow::show(dialog.HelpFile, context))
        forms::msgBox(u"The help file '"_s + dialog.HelpFile + u"' cannot be read.");
}

void showWorkbook(const QString& path) {
    if (desktop::openFile(path) < desktop::SmallestSuccess)
        forms::msgBox(u"There is no program that opens the file '"_s + path + u"'.");
}

} // namespace

int Main(int argc, char** argv) {
    const desktop::Application application(argc, argv);
    desktop::uncaughtHook = showUncaught;
    QApplication::setApplicationName(u"gaugewell"_s);
    QApplication::setDesktopFileName(u"gaugewell"_s);
    forms::applicationTitle = u"Gaugewell"_s;
    if (const QStringList arguments = QApplication::arguments();
        arguments.size() == 3 && arguments[1] == u"--message") {
        forms::msgBox(arguments[2], forms::style::critical);
        return 1;
    }
    QApplication::setQuitOnLastWindowClosed(false);
    forms::helpHook = showHelp;
    excel::Application::setFileShower(showWorkbook);

    if (const QString home = qEnvironmentVariable("GAUGEWELL_HOME"); !home.isEmpty())
        setHomeDirectory(QFileInfo(home).absoluteFilePath());
    std::optional<desktop::FolderClaim> claim(homeDirectory());
    if (!claimHome(*claim))
        return 0;
    strCompanyName = readCompanyName();
    const StoreChoice choice = readStoreChoice();
    if (choice.isServer())
        signIn(choice);
    else if (!toCreateDSN(u"gwl"_s, strDatabasePath))
        return 0;
    const StoreState state = choice.isServer() ? StoreState::OnServer : checkStore(strDatabasePath);
    if (state == StoreState::Newer)
        return 1;
    if (state == StoreState::Good && needsUpgrade())
        frmSplash::instance().showWhile(u"Updating the database..."_s, [] { upgradeStore(strDatabasePath); });
    toOpenConnection();
    frmSplash::instance().ShowModal();
    std::unique_ptr<StoreInspection> inspection;
    if (MDIMain::isShown() && state == StoreState::Good)
        inspection = std::make_unique<StoreInspection>(strDatabasePath);
    const int result = MDIMain::isShown() ? QApplication::exec() : 0;
    inspection.reset();
    MDIMain::destroy();
    cnnMain.reset();
    claim.reset();
    startAgainIfWanted();
    return result;
}
