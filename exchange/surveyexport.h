// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "exchange/files/lastmarks.h"
#include "platform/excel/application.h"

#include <functional>

namespace forms {
class Form;
}

/// What a questionnaire editor and its exports tell each other.
struct ExportState {
    bool blnMail = false;       ///< the export is followed by mail; false again after it
    bool blnSetting = false;    ///< the user names the survey files
    QString strGenerateXLSFile; ///< of the last export; empty when it got none
    QString strXLSFileName;     ///< the last name that the program made itself
};

/// One export: a survey becomes a workbook in the home directory and a row of the register. Nothing of it
/// stays in memory, however it ends.
class SurveyExport {
public:
    SurveyExport(forms::Form& owner, ExportState& settings, SurveyContext exported, HistoryRoad historyRoad,
                 std::function<void()> mail)
        : form(owner), state(settings), survey(std::move(exported)), road(historyRoad),
          sendmail(std::move(mail)) {}

    void run();

private:
    void toChooseName();
    bool mayOverwrite() const;
    QString otherOwners() const;
    void toWriteWorkbook();
    bool toAskForName();
    void toSave();
    void toView();
    /// Runs a step; once the user has been asked for a name, a step that fails is left out.
    void step(const std::function<void()>& action) const;
    QString path() const;

    forms::Form& form;
    ExportState& state;
    SurveyContext survey;
    HistoryRoad road;
    std::function<void()> sendmail;

    SurveyKey key;        // of the survey, looked up once
    bool exists = false;  // the file is there and is written over
    bool trapping = true; // a failing step ends the export
    excel::Application appExcel;
    excel::Workbook wkbExcel;
    excel::Worksheet wksExcel;
};
