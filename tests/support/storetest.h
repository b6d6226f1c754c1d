// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/MDIMain.h"
#include "core/base/failure.h"
#include "core/base/gblGlobal.h"
#include "platform/desktop/application.h"
#include "platform/forms/clock.h"
#include "platform/forms/commondialog.h"
#include "platform/forms/dtpicker.h"
#include "platform/forms/flexgrid.h"
#include "platform/forms/lists.h"
#include "platform/forms/listview.h"
#include "platform/forms/msgbox.h"
#include "tests/support/replaced.h"
#include "tests/support/text.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QTreeView>
#include <gtest/gtest.h>

#include <deque>

namespace style = forms::style;

/// Fails if a transaction is open: the store would be locked while a message is shown.
void expectNoTransaction();

/// The messages that a test expects, in order. An unexpected or missing message fails the test.
class ExpectedMessages {
public:
    using Answer = forms::Answer;
    ~ExpectedMessages();
    void expect(const QString& text, int style = 0, const QString& title = {}, Answer answer = Answer::Ok) {
        waiting.push_back({{text, style, title}, answer, false});
    }
    /// Expects a message of the failure handler whose text begins like this.
    void expectBeginning(const QString& beginning, int style = 0, const QString& title = {},
                         Answer answer = Answer::Ok) {
        waiting.push_back({{beginning, style, title}, answer, true});
    }
    /// Expects a message with the program's usual title, that is, or begins with, the text.
    void expectTitled(const QString& text, int style, Answer answer = Answer::Ok) {
        expect(text, style, u"Gaugewell v2.1"_s, answer);
    }
    void expectTitledBeginning(const QString& beginning, int style, Answer answer = Answer::Ok) {
        expectBeginning(beginning, style, u"Gaugewell v2.1"_s, answer);
    }
    void expectCritical(const QString& text) { expectTitled(text, style::critical); }
    void expectInformation(const QString& text) { expectTitled(text, style::information); }
    /// Expects a question to which Enter answers No.
    void expectAsked(const QString& text, Answer answer) {
        expectTitled(text, style::yesNo + style::information + style::secondButton, answer);
    }
    /// Expects the question after an export.
    void expectExported(Answer answer = Answer::No) {
        expectTitled(u"Survey File Exported...Do you want to view the file? "_s,
                     style::yesNo + style::information, answer);
    }
    /// Expects the question about a file that another program has locked.
    void expectOpenElsewhere(const QString& file, Answer answer) {
        expectAsked(file +
                        u" seems to be open in a spreadsheet program. What has been typed there and not been "
                        "saved is missing in it. Go on all the same?",
                    answer);
    }
    int left() const { return static_cast<int>(waiting.size()); }

private:
    struct Expected {
        forms::Message message;
        Answer answer;
        bool beginning;
    };
    Answer take(const forms::Message& message);

    std::deque<Expected> waiting;
    Replaced<forms::messageHook> hook{[this](const forms::Message& message) { return take(message); }};
    Replaced<desktop::uncaughtHook> uncaught{showUncaught};
};

/// Opens a fresh store in a temporary home and shows the main window.
class StoreTest : public ::testing::Test {
protected:
    using Answer = forms::Answer;
    void SetUp() override;
    void TearDown() override;
    /// The records of a select; the fields of each are joined by a bar.
    static QStringList rows(const QString& sql);
    /// The first field of the first record.
    static QString value(const QString& sql) { return rows(sql).value(0).section(u'|', 0, 0); }
    static void run(const QString& sql) { cnnMain->Execute(sql); }
    /// Runs a statement in the store's own SQL, such as one that creates a trigger.
    static void runRaw(const QString& sql) { cnnMain->session()->prepare({sql, {}}).step(); }
    /// Failures of a statement, which the engines number and word each in its own way.
    enum Fault { Incomplete, NoTable, Duplicate, Locked, Refused };
    /// How its message begins.
    static QString messageOf(Fault fault);
    void expectFault(Fault fault) { messages.expectBeginning(messageOf(fault)); }
    /// Changes such as "insert on customer" are refused from now on where the row meets the condition.
    static void refuse(const QString& change, const QString& condition = u"1=1"_s);
    static void allow() { runRaw(u"drop trigger refuses"_s); }
    /// Runs a step while the table is missing; expects one message.
    void withoutTable(const QString& table, const std::function<void()>& step) {
        runRaw(u"alter table %1 rename to elsewhere"_s.arg(table));
        expectFault(NoTable);
        step();
        runRaw(u"alter table elsewhere rename to "_s + table);
    }
    /// Adds a record and returns its key, the first field.
    static int add(const QString& table, const std::vector<std::pair<const char*, QVariant>>& fields);

    // Builders
    static int addCustomer(const QString& name) {
        return add(u"customer"_s, {{"custname", name}, {"Address", u" "_s}});
    }
    static int addRespondent(int custid, const QString& name, const QString& designation = u"Buyer"_s) {
        return add(u"respondent"_s, {{"custid", custid},
                                     {"respondentname", name},
                                     {"respondentdesignation", designation},
                                     {"emailid", u""_s}});
    }
    static int addParameter(const QString& name) { return add(u"parameter"_s, {{"parametername", name}}); }
    static int addQuestion(int paramid, const QString& text, bool score = true) {
        return add(u"questions"_s, {{"question", text}, {"Type", score}, {"paramid", paramid}});
    }
    static int addSurvey(int custid, const QDate& date) {
        return add(u"survey"_s, {{"sdate", date}, {"custid", custid}});
    }
    static void addQuestionnaire(int respondentid, int surveyid, const std::vector<int>& questions);
    static void addScore(int respondentid, int questionid, int surveyid, const QDate& date,
                         const QVariant& weightage, const QVariant& score);
    static void addWords(int respondentid, int questionid, int surveyid, const QDate& date,
                         const QString& words, int weightage = 0);
    /// The connection string of everybody's master on the server of the tests, if they run on one.
    static QString masterConnection();
    QString home() const { return directory.path(); }
    QString path(const QString& name) const { return directory.filePath(name); }
    /// Copies a file of home/, such as a layout, into the test's home.
    void copyHomeFile(const QString& name, const QString& as = {}) const;
    /// The progress text in the status bar.
    static QString panel();
    /// Name of the active form; empty if none.
    static QString activeForm();
    /// Fails if expected messages are missing, or a progress text, hourglass or transaction is left.
    void expectIdle() const;

    ExpectedMessages messages;
    QString picked, named; ///< in the dialogs that open files and save one; empty: cancelled
    QString offered;       ///< by the last dialog that opened files: its filters
    Replaced<forms::openFileHook> openDialog{[this](const auto& dialog) {
        offered = forms::qtFilter(dialog.Filter);
        return picked;
    }};
    Replaced<forms::saveFileHook> saveDialog{[this](const auto&) { return named; }};

private:
    QTemporaryDir directory;
};

/// A control of a form by its object name; fails the test if there is none.
template <class Control> Control* control(QWidget& form, const char* name) {
    auto* found = form.findChild<Control*>(QLatin1StringView(name));
    EXPECT_NE(found, nullptr) << name;
    return found;
}

/// Shows a form.
template <class Form> Form& show() {
    Form::instance().Show();
    return Form::instance();
}

/// Clicks a button by its object name.
void press(QWidget& form, const char* button);

/// Types into the widget that has the focus.
void type(const QString& text);
void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
/// Focuses a control and presses a key.
void keyOn(QWidget& form, const char* name, Qt::Key key);
/// Presses Ctrl and a key in the focused widget, or else in the main window.
void shortcut(Qt::Key key);

/// Clicks an entry of a list by the list's object name.
void clickEntry(QWidget& form, const char* list, int entry, Qt::KeyboardModifiers held = Qt::NoModifier);
