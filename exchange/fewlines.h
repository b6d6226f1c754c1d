// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

/// The lines of a message, one below the other; of more than 15 the first 15 and the number of the others.
QString fewOf(const QStringList& lines);
