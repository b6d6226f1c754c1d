// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIcon>

/// A picture that is built into the program, by its name without the ending.
QIcon picture(const QString& name);
