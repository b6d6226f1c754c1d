// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/forms/form.h"
#include "tests/support/storetest.h"
#include "tests/walk/writers.h"

#include <QPointer>

#include <map>

namespace walk {
template <class Control> const Control* child(const QWidget& form, const char* name) {
    return form.findChild<Control*>(QLatin1StringView(name));
}

/// The text of a label, a box or a list; empty for anything else.
QString textOf(const QWidget& form, const char* name);
/// A cell of the grid's current row.
QString currentCell(const QWidget& form, const char* grid, int column);
/// The form in front; null if none.
QWidget* activeForm();
/// The visible forms.
QWidgetList loadedForms();

/// Whose rows a form shows and may write.
struct Owner {
    QString form; ///< object name; empty if none
    QSet<QString> customers;
    QSet<QString> respondents;
    QSet<QString> parameters;
};

/// Checks the program after each event by its own connection to the store and the forms' controls, and calls
/// no procedure of the program. What another program has written is left to that one's oracle.
class Oracle {
public:
    /// Shared: another program writes the store too, and the server records who writes.
    explicit Oracle(bool isShared);
    /// The tables that it reads.
    static QStringList tables();
    /// Call before an event with the widget that receives it.
    void begin(const QWidget* target);
    /// Call after the event. Returns what is wrong; empty if nothing.
    QString fault(bool isIdle);
    /// The store was locked during the event; a form may have failed to read it.
    void noteLock() { maybeUnread = {u"frmNewSurvey"_s, u"frmEditExistingSurvey"_s}; }
    /// A message was shown; a command may have ended without effect.
    void noteMessage() { messageShown = true; }
    /// A command that may write was run.
    void noteCommand(const QString& command) { commands << command; }

private:
    using Rows = std::map<QString, QStringList>; // fields by table and key

    void watchForms();
    void watch(forms::Form& form);
    /// Names: those that are stored, or also those that someone else has changed since.
    enum class Names { Stored, Ever };
    Owner ownerOf(const QWidget* form, Names names) const;
    QSet<QString> idsOf(const QString& table, int nameField, const QString& name, Names names,
                        const QSet<QString>& customers = {}) const;
    Rows readStore();
    bool mayHaveChanged();
    void leaveOut(const Rows& now);
    QString faultOfStore(const Rows& now) const;
    static QString faultOfTwins(const Rows& now);
    bool isOfUndoneReading(const QStringList& answer, const Rows& now) const;
    QString faultOfCleanUp(const QString& table, const QStringList& row) const;
    QString faultOfErasure(const QString& table, const QStringList& row, const Rows& now) const;
    QString faultOfChange(const QString& table, const QStringList& row, const Rows& now) const;
    QString faultOfForms() const;
    QString faultOfActiveForm();
    static QString faultWhenIdle();
    QString faultOfQuestionnaire(const QWidget& form, const Owner& shown, const QString& date);
    static QStringList newRowsOf(const QWidget& form);
    QString faultOfNewRows() const;
    QString faultOfActions(const QWidget& form, const Owner& shown) const;
    QString faultOfPairedGrids(const QWidget& form, const char* upper, int upperKey, const char* lower,
                               int lowerKey, const QString& table) const;

    const bool isShared;
    ado::Connection store;
    QString version; // of the file's data
    Writers writers;
    Rows rows;
    std::multimap<QString, QStringList> former; // fields by table, before someone else changed them
    Owner owner;
    QStringList commands;
    QSet<QString> maybeUnread; // editors
    bool messageShown = false;
    std::map<QString, QString> lastRead; // the questionnaire that each editor last showed as stored
    QStringList entered; // the new rows of the lower grid before an event: their first two texts
    QSet<const QObject*> watched;
    std::map<const QObject*, QString> clickedTexts; // of each list's last Click
    QObject hooks;                                  // the context of all connections
};
} // namespace walk
