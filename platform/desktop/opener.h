// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <functional>

namespace desktop {

/// Opens a file with the program that the desktop has for it. Above 32 when the file was handed over; 2 when
/// there is no such file, 31 when no program opens it.
int openFile(const QString& path);

/// Who opens files; a test records here.
extern std::function<int(const QString&)> openFileHook;

} // namespace desktop
