// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// Full path of a file of that name in the home directory.
QString homePath(const QString& fileName);

/// Full path of the survey file of that name in the folder of survey files. Names come from dialogs and the
/// register and are untrusted: throws Failure for one with a separator of any platform, or of the store.
QString surveyFilePath(const QString& fileName);

/// Whether the folder of survey files has a file of that name; false for a blank name and for one that is not
/// bare. Throws Failure.
bool toCheckFileExists(const QString& fileName);
