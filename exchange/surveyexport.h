// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "exchange/files/lastmarks.h"

#include <optional>

struct ExportRequest {
    SurveyContext survey;
    HistoryOrder history = HistoryOrder::OldestFirst;
    bool userNamesFiles = false; ///< otherwise the program makes the names
};

struct ExportResult {
    QString fileName;                                    ///< empty when it got none
    std::optional<QString> generatedName = std::nullopt; ///< the name that the program made
    bool isFinished = false; ///< neither refused by the user nor ended by a failure
};

/// Writes a survey into a workbook in the folder of survey files and a row of the register. The user is asked
/// before a file is replaced and, when the file has no name yet, for one. A failure is shown if it is the
/// store's and ends the export; once the user has been asked for a name, a step that fails is left out.
/// Nothing stays in memory, however it ends.
ExportResult exportSurvey(const ExportRequest& request);

/// Asks whether the exported file is to be opened, and opens it.
void offerToView(const QString& fileName);

/// Opens a survey file in the desktop's spreadsheet program. A failure is shown.
void viewSurveyFile(const QString& fileName);
