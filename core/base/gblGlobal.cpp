// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/base/gblGlobal.h"

#include "core/base/failure.h"
#include "core/store/openstore.h"
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

std::function<void()> endHook = [] { QCoreApplication::exit(0); };

void toOpenConnection() {
    cnnMain = std::make_unique<ado::Connection>();
    guardedUnconnected(u"Error :"_s, [] {
        cnnMain->ConnectionString = connectionText();
        cnnMain->OwnTables = workTables();
        openStore(*cnnMain);
    });
}

void reconnect() {
    if (!cnnMain || cnnMain->State() == ado::StateClosed)
        toOpenConnection();
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
