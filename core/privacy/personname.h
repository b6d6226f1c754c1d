// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QRegularExpression>

/// Finds a person's name and e-mail address in the texts of others: as whole words, without regard to case. A
/// blank name is found nowhere.
class PersonName {
public:
    PersonName(const QString& name, const QString& email);

    bool isIn(const QString& text) const;
    QString replaced(const QString& text, const QString& by) const;

private:
    QRegularExpression pattern; ///< empty when there is nothing to look for
};
