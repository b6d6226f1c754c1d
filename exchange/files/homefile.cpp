// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/files/homefile.h"

#include "core/store/programsetting.h"
#include "core/store/store.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

bool isBare(const QString& fileName) {
    return !fileName.contains(u'/') && !fileName.contains(u'\\');
}

} // namespace

QString homePath(const QString& fileName) {
    return homeDirectory() + u'/' + fileName;
}

QString surveyFilePath(const QString& fileName) {
    if (!isBare(fileName))
        throw Failure(u"\"%1\" holds a folder where a bare file name is wanted."_s.arg(fileName));
    return surveyFolder() + u'/' + fileName;
}

bool toCheckFileExists(const QString& fileName) {
    return !fileName.trimmed().isEmpty() && isBare(fileName) && QFileInfo(surveyFilePath(fileName)).isFile();
}
