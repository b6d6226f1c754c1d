// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// QCustomPlot's header is written with Qt's keywords, which are turned off everywhere else; this is the way
// to include it.
#define signals Q_SIGNALS
#define slots Q_SLOTS
#define emit Q_EMIT
#define foreach Q_FOREACH
#include <qcustomplot.h>
#undef signals
#undef slots
#undef emit
#undef foreach
