// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tests/support/surveyfile.h"
#include "tests/support/surveytest.h"

using Cells = std::vector<std::pair<const char*, excel::Value>>; // address and content

/// Ann has the questions 0 and 4 of the catalogue in the survey of today.
class CheckTest : public SurveyTest {
protected:
    void SetUp() override {
        SurveyTest::SetUp();
        addStored(ann, today, {0, 4});
    }
    /// A file as it is exported to Ann and answered to the first question, with these cells entered.
    QString fill(const QString& name, const Cells& cells = {}) const {
        SurveyFile file{.respondentid = ann,
                        .questions = {{question[0], true}, {question[4], false}},
                        .entered = {{QStringLiteral("I1"), QStringLiteral("1")},
                                    {QStringLiteral("B8"), QStringLiteral("Customer Name : Acme")},
                                    {QStringLiteral("B9"), QStringLiteral("Respondent Name : Ann")},
                                    {QStringLiteral("B14"), QStringLiteral("On time?")},
                                    {QStringLiteral("B16"), QStringLiteral("What else?")},
                                    {QStringLiteral("C14"), 7},
                                    {QStringLiteral("D14"), 9}}};
        for (const auto& [address, value] : cells)
            file.entered[QString::fromLatin1(address)] = value;
        file.saveAs(path(name));
        return path(name);
    }
};
