// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// Full path of the survey file of that name in the home directory. Names come from dialogs and the
/// register and are untrusted: throws Failure for one with a separator of any platform.
QString homePath(const QString& fileName);

/// Whether the home directory has a file of that name; false for a blank name and for one that is not bare.
bool toCheckFileExists(const QString& fileName);
