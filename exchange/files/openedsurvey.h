// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "exchange/files/returnedfile.h"
#include "platform/excel/workbook.h"

#include <exception>
#include <future>
#include <vector>

/// A returned file that was opened, or what kept it from that.
struct OpenedSurvey {
    QString hash;               ///< as contentHash; empty if the content could not be read
    excel::Workbook workbook;   ///< refers to none if the content is no workbook
    excel::Worksheet sheet;     ///< the one with the answers
    std::exception_ptr failure; ///< null for a file with such a sheet
};

OpenedSurvey openSurvey(const QString& path);

/// Opens files one after the other, each while the one before it is worked on.
class SurveyOpener {
public:
    /// The files outlive the opener.
    explicit SurveyOpener(const std::vector<ReturnedFile>& returned) : files(returned) {}

    /// The next file. There is one.
    OpenedSurvey takeNext();

private:
    const std::vector<ReturnedFile>& files;
    std::size_t taken = 0;
    std::future<OpenedSurvey> ahead; // the one after those; invalid before the first
};
