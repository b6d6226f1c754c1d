// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tests/support/surveytest.h"

/// Ann has the questions 0 and 4 of the catalogue in the survey of today.
struct CheckTest : SurveyTest {
    void SetUp() override {
        SurveyTest::SetUp();
        addStored(ann, today, {0, 4});
    }
    /// A file as it is exported to Ann and answered to the first question, with these cells entered.
    QString fill(const QString& name, const Cells& cells = {}) const {
        const Cells all{{"I1", u"1"_s},
                        {"B8", u"Customer Name : Acme"_s},
                        {"B9", u"Respondent Name : Ann"_s},
                        {"B14", u"On time?"_s},
                        {"B16", u"What else?"_s},
                        {"C14", 7},
                        {"D14", 9}};
        return saveFile(name, ann, all + cells);
    }
};
