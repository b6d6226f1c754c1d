// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/base/gblGlobal.h"

#include "core/base/failure.h"
#include "core/store/openstore.h"
#include "core/store/transaction.h"
#include "core/store/worktable.h"
#include "platform/forms/form.h"

#include <QCoreApplication>

#include <cmath>

using namespace Qt::StringLiterals;

QString strCompanyName;
const QString titleWithVersion = u"Gaugewell v2.1"_s;
bool blnNodeDragged = false;
bool blnSurveyPasted = false;
bool blnExistingSurvey = false;
bool blnSearchOpen = false;
QString strSearchKeywords;
bool blnSearchToFeedback = false;
bool blnSearchToImprovement = false;
int intSearchIndex = 0;
int connectionNumber = 0;

std::function<void()> endHook = [] { QCoreApplication::exit(0); };

void toOpenConnection() {
    cnnMain = std::make_unique<ado::Connection>();
    ++connectionNumber;
    guardedUnconnected(u"Error :"_s, [] {
        cnnMain->ConnectionString = connectionText();
        cnnMain->OwnTables = workTables();
        cnnMain->LockedFirst = u"setting"_s;
        openStore(*cnnMain);
    });
}

void reconnect() {
    if (Transaction::isOpen()) // what it has written is lost, and the rest must not be written alone
        return;
    // A procedure that has begun on a connection goes on with it, and says that it is lost.
    if (!cnnMain || cnnMain->State() == ado::StateClosed || (!isWithinGuarded() && cnnMain->HasEnded()))
        toOpenConnection();
}

void requireFilledOn(int connection) {
    if (connection != connectionNumber)
        throw Refusal(u"The connection to the database has been opened again meanwhile, and the rows of this "
                      u"report are gone. View it again, then print it."_s);
}

void endProgram() {
    if (cnnMain && cnnMain->State() == ado::StateOpen)
        cnnMain->Close();
    cnnMain.reset();
    endHook();
}

int toGetCustID(const QString& customerName) {
    return lookedUp([&] { return findCustomer(customerName); });
}

void toCenterForm(forms::Form& form) {
    const int height = static_cast<int>(std::nearbyint(form.ScreenHeight() * 0.85));
    form.setTop(height / 2 - form.Height() / 2);
    form.setLeft(form.ScreenWidth() / 2 - form.Width() / 2);
}
