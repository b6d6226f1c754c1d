// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/crystal/crystalreport.h"

#include <QStringList>

/// Opens a report on the records that cnnMain sees, in a maximised window. Layout `file` is in the home
/// directory. `formulaName`
/// is the layout's formula for the organisation's name. The selection and the further formulas, each
/// "name='text'", apply to this run only. Throws Failure, also recorded in the errors of cnnMain for guarded.
void startReport(crystal::CrystalReport& report, const QString& file, const QString& formulaName,
                 const QString& title, const QString& selection = {}, const QStringList& further = {});

/// Converts dd/mm/yyyy for a selection: 15/03/2002 becomes "date(2002,03,15)".
QString toFormulaDate(const QString& dateText);
