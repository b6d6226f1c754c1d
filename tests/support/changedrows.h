// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/base/changedrow.h"
#include "tests/support/replaced.h"

/// Answers the questions about what someone else has changed meanwhile, and keeps them.
struct ChangedRows {
    std::vector<ChangedRow> asked;
    Keep answer = Keep::Both;
    Replaced<changedHook> hook{[this](const ChangedRow& row) {
        asked.push_back(row);
        return answer;
    }};
};
