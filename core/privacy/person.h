// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/tables/table.h"

// What the store and the folder of survey files hold about one respondent. These throw Failure.

struct Person {
    int respondentid = 0;
    int custid = 0;
    QString name;
    QString email;
    QString customer;

    /// "Ann of Acme".
    QString title() const { return name + QStringLiteral(" of ") + customer; }
};

/// Throws Refusal when the respondent or its customer is no longer stored.
Person requirePerson(int respondentid);

/// One kind of data about a person.
struct PersonPart {
    QString title;
    QString searched; ///< the tables, or the folder, that were searched for it
    tables::Table table;
};

/// All parts, also those without rows, so that it shows what has been searched.
std::vector<PersonPart> findPersonParts(const Person& person);

/// The titles under which the person's survey files are registered, handed over or read, each once.
QStringList registeredTitles(const Person& person);

/// A file of the survey folder that goes by one of the person's titles, perhaps in another format.
struct PersonFile {
    QString path;
    /// Whether it may be deleted: another respondent's file goes by the same title, or it is none of the
    /// survey files, when it may not.
    bool isOwn = true;
};
std::vector<PersonFile> findPersonFiles(const Person& person);

/// The condition on table log for the person's rows. Rows of early versions have names only.
QString registerCondition(const Person& person);

/// The text in the quotes of a statement.
QString sqlText(QString text);
