// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDate>
#include <QString>

#include <map>
#include <optional>
#include <vector>

// What the store holds of one survey, for the comparison with a file. These throw Failure.

struct CatalogueQuestion {
    QString text;
    bool isScore = false;
};

/// All questions by questionid, in one statement.
std::map<int, CatalogueQuestion> readCatalogue();

/// A respondent's questionnaire in one survey.
struct StoredSurvey {
    int custid = 0;
    QString customer;
    QString respondent;
    QDate date;
    std::vector<int> questions; ///< questionids in order of position
};

/// Nothing for a survey without a questionnaire of the respondent. One statement.
std::optional<StoredSurvey> findStoredSurvey(int surveyid, int respondentid);

/// An answer as a file or the store has it; blank without marks and words.
struct Answer {
    int weightage = 0;
    int score = 0; ///< of a Score question
    QString words; ///< of a Descriptive question
    bool isBlank() const { return weightage == 0 && score == 0 && words.trimmed().isEmpty(); }
};

/// Answers by questionid, those to Score questions apart from those in words.
struct StoredAnswers {
    std::map<int, Answer> scores;
    std::map<int, Answer> words;
};

/// The respondent's answers of a date. Two statements.
StoredAnswers readStoredAnswers(int respondentid, const QDate& date);
