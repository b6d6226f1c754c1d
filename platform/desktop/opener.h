// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <functional>

namespace desktop {

/// Results of openFile; from SmallestSuccess on, the file was handed over.
enum OpenResult { NoSuchFile = 2, NoProgram = 31, SmallestSuccess = 33, HandedOver = 42 };

/// Opens a file with the desktop's program for it; returns an OpenResult.
int openFile(const QString& path);

/// Implements openFile; a test replaces it.
extern std::function<int(const QString&)> openFileHook;

} // namespace desktop
