// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "exchange/cellmap.h"
#include "platform/excel/worksheet.h"

#include <optional>
#include <set>

/// Reads filled survey files into the answers of the store. What is in a file is nobody's word: keys must be
/// whole numbers of 32 bits and the date a date before a statement holds them, marks are whole numbers of 16
/// bits, rounded half to even. A file is one transaction: the answers before a failure stay.
class SurveyReader {
public:
    /// Reads the file of that full path. Of a register name the row is marked as read in before the file is
    /// opened. The database is copied before the first read of a run. False after the user was told what
    /// ended the read: the workbook's sentence, "Type mismatch" or "Overflow" for a cell, or the store's
    /// errors.
    bool read(const QString& path, const QString& registerName = {});

    /// The cell that ended the last read, such as "D16"; empty when that was something else.
    QString failedCell() const;
    /// The store ended the last read, so that the next file would fare no better.
    bool storeFailed() const { return failedStore; }

    /// The respondentid and date of each questionnaire whose answers were read and are not on show yet.
    static inline std::set<std::pair<QString, QDate>> unseen;

private:
    void toReadFile(const QString& path);
    void toReadCells(const excel::Worksheet& sheet);
    /// Rows of the block.
    int toReadBlock(const excel::Worksheet& sheet, int row);

    // The contents of a cell, converted. They throw ado::Failure with the conversion's message.
    excel::Value cell(const excel::Worksheet& sheet, cellmap::Place place);
    QString key(const excel::Worksheet& sheet, cellmap::Place place);
    QDate date(const excel::Worksheet& sheet, cellmap::Place place);
    int mark(const excel::Worksheet& sheet, cellmap::Place place);
    double questionCount(const excel::Worksheet& sheet);

    std::optional<cellmap::Place> reading; // the cell that is being converted
    bool failedStore = false;
};
