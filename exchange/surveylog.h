// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "survey/questionnaire.h"

// Table log, the register of survey files. Failures of the store are shown and kept from the caller.

/// The survey's file counts as not read in. Date: dd/mm/yyyy.
void toResetLogStatus(const QString& respondentid, const QString& date);

/// Enters the survey's file in the register, or writes its row anew; whether it has been read in stays.
void toWriteLogRow(const SurveyContext& survey, const QString& fileName);
