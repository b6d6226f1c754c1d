// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/privacy/person.h"

#include <QDate>

/// The parts as a page of HTML without style or script, whose headings are anchors named by their number from
/// 0.
QString toPage(const Person& person, const std::vector<PersonPart>& parts, const QDate& day);

/// The parts as one table, a row a value: part, number of the row in it, field, value.
tables::Table toOneTable(const std::vector<PersonPart>& parts);

/// Writes a text as UTF-8 into a file that only its owner can read. Throws Failure.
void saveOwnersText(const QString& text, const QString& path);
