// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/base/failure.h"
#include "core/base/gblGlobal.h"
#include "platform/desktop/application.h"
#include "platform/forms/msgbox.h"
#include "tests/support/replaced.h"

#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

#include <deque>

/// Prints texts in gtest's failure messages.
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

/// Fails if a transaction is open: the store would be locked while a message is shown.
void expectNoTransaction();

/// The messages that a test expects, in order. An unexpected or missing message fails the test.
class ExpectedMessages {
public:
    ~ExpectedMessages();
    void expect(const QString& text, int style = 0, const QString& title = {},
                forms::Answer answer = forms::Answer::Ok) {
        waiting.push_back({{text, style, title}, answer, false});
    }
    /// Expects a message of the failure handler whose text begins like this.
    void expectBeginning(const QString& beginning, int style = 0, const QString& title = {},
                         forms::Answer answer = forms::Answer::Ok) {
        waiting.push_back({{beginning, style, title}, answer, true});
    }
    /// Expects a message with the program's usual title.
    void expectTitled(const QString& text, int style, forms::Answer answer = forms::Answer::Ok) {
        expect(text, style, QStringLiteral("Gaugewell v2.1"), answer);
    }
    void expectCritical(const QString& text) { expectTitled(text, forms::style::critical); }
    /// Expects the question after an export.
    void expectExported(forms::Answer answer = forms::Answer::No) {
        expectTitled(QStringLiteral("Survey File Exported...Do you want to view the file? "),
                     forms::style::yesNo + forms::style::information, answer);
    }
    /// Expects the question about a file that another program has locked.
    void expectOpenElsewhere(const QString& file, forms::Answer answer) {
        expectTitled(
            file + u" seems to be open in a spreadsheet program. What has been typed there and not been "
                   "saved is missing in it. Go on all the same?",
            forms::style::yesNo + forms::style::information + forms::style::secondButton, answer);
    }
    int left() const { return static_cast<int>(waiting.size()); }

private:
    struct Expected {
        forms::Message message;
        forms::Answer answer;
        bool beginning;
    };
    forms::Answer take(const forms::Message& message);

    std::deque<Expected> waiting;
    Replaced<forms::messageHook> hook{[this](const forms::Message& message) { return take(message); }};
    Replaced<desktop::uncaughtHook> uncaught{showUncaught};
};

/// Opens a fresh store in a temporary home and shows the main window.
class StoreTest : public ::testing::Test {
protected:
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
    static void refuse(const QString& change, const QString& condition = QStringLiteral("1=1"));
    static void allow() { runRaw(QStringLiteral("drop trigger refuses")); }
    /// Adds a record and returns its key, the first field.
    static int add(const QString& table, const std::vector<std::pair<const char*, QVariant>>& fields);

    // Builders
    static int addCustomer(const QString& name) {
        return add(QStringLiteral("customer"), {{"custname", name}, {"Address", QStringLiteral(" ")}});
    }
    static int addRespondent(int custid, const QString& name,
                             const QString& designation = QStringLiteral("Buyer")) {
        return add(QStringLiteral("respondent"), {{"custid", custid},
                                                  {"respondentname", name},
                                                  {"respondentdesignation", designation},
                                                  {"emailid", QStringLiteral("")}});
    }
    static int addParameter(const QString& name) {
        return add(QStringLiteral("parameter"), {{"parametername", name}});
    }
    static int addQuestion(int paramid, const QString& text, bool score = true) {
        return add(QStringLiteral("questions"), {{"question", text}, {"Type", score}, {"paramid", paramid}});
    }
    static int addSurvey(int custid, const QDate& date) {
        return add(QStringLiteral("survey"), {{"sdate", date}, {"custid", custid}});
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

private:
    QTemporaryDir directory;
};

/// A control of a form by its object name; fails the test if there is none.
template <class Control> Control* control(QWidget& form, const char* name) {
    auto* found = form.findChild<Control*>(QLatin1StringView(name));
    EXPECT_NE(found, nullptr) << name;
    return found;
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
