// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/forms/form.h"
#include "tests/support/storetest.h"

#include <QPointer>
#include <QSet>

#include <map>

namespace walk {

template <class Control> const Control* child(const QWidget& form, const char* name) {
    return form.findChild<Control*>(QLatin1StringView(name));
}

/// What a label, a box or a list shows; empty for anything else.
QString textOf(const QWidget& form, const char* name);
/// A cell of the grid's current row.
QString currentCell(const QWidget& form, const char* grid, int column);
/// The forms on the screen.
QWidgetList loadedForms();

/// Whose rows a form shows: what its commands may write.
struct Owner {
    QString form; ///< object name; empty for none
    QSet<QString> customers;
    QSet<QString> respondents;
    QSet<QString> parameters;
};

/// Says what is wrong with the program after an event. It reads the store through a connection of its own and
/// the controls of the forms, and knows no procedure of the program.
class Oracle {
public:
    explicit Oracle(const QString& storePath);

    /// Before an event: which form it goes to.
    void begin(const QWidget* target);
    /// After it. Empty when everything holds.
    QString fault(bool atRest);
    /// The store was locked during the event: a form may not have been able to read it.
    void wasLocked() {
        maybeUnread = {QStringLiteral("frmNewSurvey"), QStringLiteral("frmEditExistingSurvey")};
    }
    /// A message has been shown: a command may have ended without its effect.
    void spoke() { wasTold = true; }
    /// A command that may write has run.
    void ran(const QString& command) { commands << command; }

private:
    using Rows = std::map<QString, QStringList>; // fields by table and rowid

    void watchForms();
    void watch(forms::Form& form);
    Owner ownerOf(const QWidget* form) const;
    QSet<QString> idsOf(const QString& table, int nameField, const QString& name,
                        const QSet<QString>& customers = {}) const;
    Rows readStore();
    QString faultOfStore(const Rows& now) const;
    QString faultOfChange(const QString& table, const QStringList& row, const Rows& now) const;
    QString faultOfForms() const;
    QString faultOfActiveForm();
    static QString faultOfRest();
    QString faultOfQuestionnaire(const QWidget& form, const Owner& shown, const QString& date);
    static QStringList newRowsOf(const QWidget& form);
    QString faultOfNewRows() const;
    QString faultOfActions(const QWidget& form, const Owner& shown) const;
    QString faultOfPairedGrids(const QWidget& form, const char* upper, int upperKey, const char* lower,
                               int lowerKey, const QString& table) const;

    ado::Connection store;
    QString version; // of the store's content
    Rows rows;
    Owner owner;
    QStringList commands;
    QSet<QString> maybeUnread; // editors
    bool wasTold = false;
    std::map<QString, QString> lastRead; // which questionnaire an editor has shown as it is stored
    QStringList entered; // the new rows of the lower grid before an event, by their first two texts
    QSet<const QObject*> watched;
    std::map<const QObject*, QString> clickedTexts; // of each list's last Click
    QObject hooks;                                  // they go with the oracle
};

} // namespace walk
