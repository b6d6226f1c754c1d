// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tests/support/surveytest.h"

namespace walk {
/// Three customers with respondents, surveys, answers, actions and survey files.
struct World : SurveyTest {
    Replaced<forms::nowHook> time{[] { return QDateTime({2024, 3, 5}, {12, 0}); }};

    void SetUp() override;
};

/// A number from the environment.
inline int setting(const char* variable, int otherwise) {
    return qEnvironmentVariableIsSet(variable) ? qEnvironmentVariableIntValue(variable) : otherwise;
}
} // namespace walk
