// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/celltable.h"
#include "platform/excel/value.h"

namespace excel::biff {

class SharedStrings;

/// The value of a cell's record. Dates are returned as numbers, since only the cell's format makes a number a
/// date. A formula yields its stored result.
Value cellValue(const Cell& cell, const SharedStrings& strings);

/// The record of a cell with that value; dates must have been turned into numbers.
/// A text is stored in `strings`; at most 32767 UTF-16 units.
Cell makeCell(Place place, quint16 format, const Value& value, SharedStrings& strings);

} // namespace excel::biff
