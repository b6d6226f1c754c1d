// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "exchange/files/responselist.h"

/// What the user enters for survey files that were given otherwise than by mail.
struct HandOverDates {
    QDate handedOver; ///< invalid: it stays as it is stored, and only due is written
    QDate due = {};
};

/// Writes the dates for these respondents, in one transaction; those without a row in dispatch get one. A
/// date that is the one read stays as it is stored. Of dates that someone else has changed since they were
/// read, the user is asked which count. False when nothing was written: the user went back, or there was a
/// failure, which is shown, such as a respondent whose questionnaire has been deleted, or who would be due
/// before the day of handing over.
bool writeHandOver(const std::vector<Response>& responses, const HandOverDates& dates);
