// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <functional>

namespace desktop {

/// Results of openFile; those from SmallestSuccess on mean that the file was handed over.
enum OpenResult { NoSuchFile = 2, NoProgram = 31, SmallestSuccess = 33, HandedOver = 42 };

/// Opens a file with the desktop's program for it; returns an OpenResult.
int openFile(const QString& path);

/// Opens the files; a test puts a recorder here.
extern std::function<int(const QString&)> openFileHook;

} // namespace desktop
