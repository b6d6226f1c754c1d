// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

/// The script of a new store.
QByteArray newStoreScript();

/// The script that brings a store of version 1 to the present one.
QByteArray upgradeScript();
