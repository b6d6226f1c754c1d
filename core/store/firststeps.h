// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDate>
#include <QString>

#include <vector>

/// How far the work in a store has come, and what was made last.
struct FirstSteps {
    struct Survey {
        QString customer;
        QDate date;
    };

    struct File {
        QString name;
        QString respondent;
    };

    bool hasRespondents = false;
    bool hasQuestions = false;
    bool hasQuestionnaires = false;
    bool hasFiles = false; ///< in the register
    bool hasAnswers = false;
    std::vector<Survey> surveys; ///< the last ones made, the newest first
    std::vector<File> files;     ///< of the last surveys, the newest first
};

/// Reads them; the cost does not depend on the size of the store. Throws Failure.
FirstSteps readFirstSteps();
