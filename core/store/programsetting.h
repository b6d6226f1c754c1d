// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// Settings of a store, for all who use it. These throw Failure.

/// Empty for a setting that was never made.
QString readProgramSetting(const QString& name);
/// An empty content takes the setting away.
void writeProgramSetting(const QString& name, const QString& content);

/// The folder of the survey files: that of the store's setting, otherwise the home directory. The setting is
/// read once from each connection: another program's change counts from the next start.
QString surveyFolder();
/// The setting; empty for the home directory.
QString readSurveyFolderSetting();
void writeSurveyFolderSetting(const QString& folder);
