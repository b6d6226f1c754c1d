// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

class StatusWord;
namespace forms {
class CommonDialog;
}

/// Deletes survey files with their rows in the register, each after a question. For the first one that fails,
/// mostly because it is not in the home directory, the user is asked where it is; the files after it are
/// kept. Returns whether the run got to its end.
bool deleteSurveyFiles(const QStringList& fileNames, forms::CommonDialog& dialog, StatusWord& word);
