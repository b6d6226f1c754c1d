// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/crystal/crystalreport.h"

#include <QStringList>

/// Runs a report: the layout of that name in the home directory, on the database beside the program,
/// maximised. formulaName is what the layout calls the organisation's name. The selection and the further
/// formulas, each "name='text'", hold for this run only. A failure is recorded in the errors of cnnMain,
/// where the standard failure handler finds it, and is thrown on.
void startReport(crystal::CrystalReport& report, const QString& file, const QString& formulaName,
                 const QString& title, const QString& selection = {}, const QStringList& further = {});

/// A date for a selection: "date(2002,03,15)" from the text 15/03/2002.
QString toFormulaDate(const QString& dateText);
