// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIcon>

/// A built-in picture, by its file name without extension.
QIcon picture(const QString& name);
