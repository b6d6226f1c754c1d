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

/// The title of the messages that name the version.
extern const QString titleWithVersion;

/// A node of the question tree was dropped on the question grid.
extern bool blnNodeDragged;

/// Shared by the survey selection, the survey editors and the copy form.
extern bool blnSurveyPasted;
extern bool blnExistingSurvey;

/// Passed from the search to the form that shows a hit.
extern bool blnSearchOpen;          ///< the search has opened a form
extern QString strSearchKeywords;   ///< the Id of the hit, despite the name
extern bool blnSearchToFeedback;    ///< the feedback form shows the hit when it becomes active
extern bool blnSearchToImprovement; ///< likewise, the improvement plan
extern int intSearchIndex;          ///< the hit's row in the result list, from 1

/// Creates a new cnnMain and opens it. Errors are shown.
void toOpenConnection();

/// Reopens the connection if it is closed, or has been ended by its server while it was idle. Does nothing
/// while a Transaction is open. Errors are shown.
void reconnect();

/// Counts the connections; the rows of the work tables end with theirs.
extern int connectionNumber;

/// Throws Refusal when the work tables of a report were filled on an earlier connection.
void requireFilledOn(int connection);

/// Closes and releases the connection and quits the event loop.
void endProgram();

/// Hook that quits the event loop; replaced in tests.
extern std::function<void()> endHook;

/// Returns the result of a look-up run under guarded. On an error, which is shown, a default value.
template <class LookUp> auto lookedUp(const LookUp& lookUp) {
    decltype(lookUp()) value{};
    guarded([&] { value = lookUp(); });
    return value;
}

/// As findCustomer, but shows an error and then returns 0.
int toGetCustID(const QString& customerName);

/// Centres a form horizontally, and vertically in the upper 85 % of the area.
void toCenterForm(forms::Form& form);
