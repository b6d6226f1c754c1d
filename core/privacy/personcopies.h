// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/privacy/person.h"

/// A copy of the store, and whether the person is in it.
struct PersonCopy {
    QString path;
    bool isReadable = true; ///< otherwise it may hold the person
};

/// Those of the copies that hold the person under its number, or cannot be read. A respondent of another
/// name is the person as well: before a renaming. Only one of the name that erasing gives is not.
std::vector<PersonCopy> findPersonCopies(const Person& person, const QString& newName,
                                         const QStringList& paths);
