// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "exchange/files/answersheet.h"
#include "exchange/files/surveycheck.h"
#include "platform/excel/worksheet.h"

/// Checks survey files before they are read. Writes nothing. Used for one command of the user: it reads the
/// catalogue once.
class SurveyChecker {
public:
    /// Throws Failure.
    SurveyChecker() : catalogue(readCatalogue()) {}

    /// The file alone; its verdict among others comes from judgeTogether. Throws Failure when the store
    /// fails.
    CheckedFile check(const QString& path);

private:
    struct Judgement {
        Verdict verdict;
        QString remark;
    };

    std::optional<Judgement> open(const QString& path);
    std::optional<Judgement> readCells();
    std::optional<Judgement> findSurvey();
    std::optional<Judgement> compareHead() const;
    std::optional<Judgement> compareQuestions() const;
    std::optional<Judgement> findMarksOutside() const;
    Judgement compareAnswers();
    std::optional<QString> findOtherKind(const FileAnswer& answer) const;
    bool isLeftOver(const FileAnswer& answer) const;
    QString textAt(cellmap::Place place) const;

    std::map<int, CatalogueQuestion> catalogue;

    // Of the file that is being checked.
    CheckedFile file;
    excel::Worksheet sheet;
    SheetAnswers read;
    std::optional<StoredSurvey> survey;
};
