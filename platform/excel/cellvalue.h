// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/celltable.h"
#include "platform/excel/value.h"

namespace excel::biff {

class SharedStrings;

/// The value of a cell's record. Numbers come as numbers, dates too: whether a number is a date depends on
/// the cell's format. A formula gives the result that was stored with it.
Value cellValue(const Cell& cell, const SharedStrings& strings);

/// The record of a cell with that value; dates must have been turned into numbers.
/// A text is stored in `strings`; at most 32767 UTF-16 units.
Cell makeCell(Place place, quint16 format, const Value& value, SharedStrings& strings);

} // namespace excel::biff
