// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/files/openedsurvey.h"

#include "exchange/files/sheetchoice.h"
#include "platform/excel/application.h"

OpenedSurvey openSurvey(const QString& path) {
    OpenedSurvey opened;
    try {
        const excel::FileContent content = excel::readContent(path);
        opened.hash = contentHash(content.bytes);
        opened.workbook = excel::Application().Workbooks().Open(path, content);
        opened.sheet = surveySheetOf(opened.workbook);
    } catch (const std::exception&) {
        opened.failure = std::current_exception();
    }
    return opened;
}

OpenedSurvey SurveyOpener::takeNext() {
    OpenedSurvey opened = ahead.valid() ? ahead.get() : openSurvey(files[taken].path);
    if (++taken < files.size())
        ahead = std::async(std::launch::async, openSurvey, files[taken].path);
    return opened;
}
