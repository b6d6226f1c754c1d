// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/registerdeletion.h"

#include "core/base/busy.h"
#include "core/base/failure.h"
#include "core/base/gblGlobal.h"
#include "exchange/files/filenames.h"
#include "exchange/files/homefile.h"
#include "exchange/files/surveylog.h"
#include "exchange/openelsewhere.h"
#include "platform/forms/commondialog.h"
#include "platform/forms/msgbox.h"

#include <QFile>

using namespace Qt::StringLiterals;
namespace style = forms::style;

namespace {

/// Throws Failure when the file or its rows cannot be deleted.
void deleteFile(const QString& fileName, const QString& path) {
    QFile file(path);
    if (!file.remove())
        throw Failure(u"%1: %2"_s.arg(path, file.errorString()));
    reconnect();
    toDeleteLogRow(fileName);
}

void deleteElsewhere(const QString& fileName, forms::CommonDialog& cmnDlg) {
    if (forms::msgBox(
            fileName +
                u" Survey File not found in the Current Directory......Kindly locate the file to Delete",
            style::okCancel + style::secondButton) != forms::Answer::Ok)
        return;
    cmnDlg.Filter = u"All Files (*.xls)|*.xls"_s + returnedFilter;
    cmnDlg.Flags = forms::HideReadOnly;
    cmnDlg.CancelError = false; // the mailing of this form may have set it
    cmnDlg.ShowOpen();
    const bool sameTitle = isSameTitle(cmnDlg.FileTitle, fileName);
    if (sameTitle && !cmnDlg.FileName.isEmpty() && mayUseFile(cmnDlg.FileName))
        guardedWithDescription([&] { deleteFile(fileName, cmnDlg.FileName); });
    else if (!sameTitle)
        forms::msgBox(u"Invalid Survey File Selected ..You must select "_s + fileName +
                          u" Survey File to Delete",
                      style::retryCancel);
}

} // namespace

bool deleteSurveyFiles(const QStringList& fileNames, forms::CommonDialog& dialog, StatusWord& word) {
    QString fileName;
    try {
        for (const QString& next : fileNames) {
            fileName = next;
            if (forms::msgBox(u"Are you sure you want to delete the Survey File - "_s + fileName,
                              style::yesNo + style::secondButton, titleWithVersion) == forms::Answer::Yes &&
                mayUseFile(surveyFilePath(fileName)))
                deleteFile(fileName, surveyFilePath(fileName));
            else
                word.say(u"Deletion Cancelled......"_s);
        }
    } catch (const std::exception&) { // whatever failed, the file is taken to be missing
        word.say({});
        if (cnnMain)
            cnnMain->Errors().Clear();
        deleteElsewhere(fileName, dialog);
        return false;
    }
    return true;
}
