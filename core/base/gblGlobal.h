// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/base/failure.h"
#include "core/store/store.h"

#include <functional>

namespace forms {
class Form;
}

/// The name of the organisation that uses the program: the first line of company.txt in the home directory
/// (UTF-8), empty without that file.
extern QString strCompanyName;

/// A node of the question tree has been let go over the question grid.
extern bool blnNodeDragged;

/// Hand-over between survey selection, the editors and the copy form.
extern bool blnSurveyPasted;
extern bool blnExistingSurvey;

/// Hand-over from the search to the form that shows a hit: the search has opened a form; the Id of the hit,
/// despite the name; which form is to go to the hit when it becomes active; the hit's row in the search's
/// list, from 1.
extern bool blnSearchOpen;
extern QString strSearchKeywords;
extern bool blnSearchToFeedback;
extern bool blnSearchToImprovement;
extern int intSearchIndex;

/// Makes cnnMain anew and opens it; a failure is shown.
void toOpenConnection();

/// Opens the connection again when it is closed.
void reconnect();

/// Ends the program: closes and releases the connection and leaves the event loop.
void endProgram();

/// What ends the event loop; a test records here.
extern std::function<void()> endHook;

/// The value of a look-up that is a procedure of its own: a failure is shown and gives an empty value.
template <class LookUp> auto lookedUp(const LookUp& lookUp) {
    decltype(lookUp()) value{};
    guarded([&] { value = lookUp(); });
    return value;
}

/// As findCustomer, for use on its own: a failure is shown and gives 0.
int toGetCustID(const QString& customerName);

/// Places a form in the middle across and, at 0.85 of the height, a little above the middle.
void toCenterForm(forms::Form& form);
