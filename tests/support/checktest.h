// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tests/support/surveytest.h"

/// Ann has the questions 0 and 4 of the catalogue in the survey of today.
class CheckTest : public SurveyTest {
protected:
    void SetUp() override {
        SurveyTest::SetUp();
        addStored(ann, today, {0, 4});
    }
    /// A file as it is exported to Ann and answered to the first question, with these cells entered.
    QString fill(const QString& name, const Cells& cells = {}) const {
        Cells all{{"I1", QStringLiteral("1")},
                  {"B8", QStringLiteral("Customer Name : Acme")},
                  {"B9", QStringLiteral("Respondent Name : Ann")},
                  {"B14", QStringLiteral("On time?")},
                  {"B16", QStringLiteral("What else?")},
                  {"C14", 7},
                  {"D14", 9}};
        all.insert(all.end(), cells.begin(), cells.end());
        return saveFile(name, ann, all);
    }
};
