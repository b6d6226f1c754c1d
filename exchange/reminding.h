// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "exchange/files/responselist.h"
#include "exchange/files/responsesettings.h"

#include <QStringList>

namespace forms {
class Form;
}

/// What became of a press of Remind.
struct Reminded {
    std::vector<int> dispatchids; ///< of those for whom a mail was composed
    QStringList leftOut;          ///< the others, each with the reason
};

/// Composes a mail for each of these respondents who has been handed a survey file and has not answered, with
/// the registered file of the survey and the store's texts. A respondent whose file is missing is left out; a
/// failure of the mail client, or Cancel, ends the run. A failure of the store is shown.
Reminded remind(forms::Form& form, const std::vector<Response>& responses, const ResponseSettings& settings);
