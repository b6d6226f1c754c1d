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

/// gtest's failure messages show texts readably.
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

/// While a message is shown no transaction may be open.
void expectNoTransaction();

/// The messages that a test waits for, in order. Any other message fails the test; so does one that never
/// comes.
class ExpectedMessages {
public:
    ~ExpectedMessages();
    void expect(const QString& text, int style = 0, const QString& title = {},
                forms::Answer answer = forms::Answer::Ok) {
        waiting.push_back({{text, style, title}, answer, false});
    }
    /// A message of the standard failure handler, whose text only begins so.
    void expectBeginning(const QString& beginning) {
        waiting.push_back({{beginning, 0, {}}, forms::Answer::Ok, true});
    }
    /// A message under the program's usual title.
    void expectTitled(const QString& text, int style, forms::Answer answer = forms::Answer::Ok) {
        expect(text, style, QStringLiteral("Gaugewell v2.1"), answer);
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
    Replaced<desktop::uncaughtHook> uncaught{toShowUncaught};
};

/// A fresh store in a home of its own, connected; the main window stands on the screen.
class StoreTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    /// The records of a select, each as its fields' texts joined by a bar.
    static QStringList rows(const QString& sql);
    /// The first field of the first record.
    static QString value(const QString& sql) { return rows(sql).value(0).section(u'|', 0, 0); }
    static void run(const QString& sql) { cnnMain->Execute(sql); }
    /// Runs a statement of the store's own SQL, such as one that makes a trigger which stops a save part way.
    static void runRaw(const QString& sql) { cnnMain->session()->prepare({sql, {}}).step(); }
    /// Adds a record to a table and gives its first field, the key.
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

    QString home() const { return directory.path(); }
    QString path(const QString& name) const { return directory.filePath(name); }
    /// Copies a file of the program's home, such as a layout, into this one.
    void bring(const QString& name, const QString& as = {}) const;
    /// The progress words in the status bar.
    static QString panel();
    /// Name of the form in front; empty for none.
    static QString activeForm();
    /// After a command: its messages came; no progress words, hourglass or open transaction stay behind.
    void expectAtRest() const;

    ExpectedMessages messages;

private:
    QTemporaryDir directory;
};

/// A control of a form by its object name; fails the test when there is none.
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
/// Gives a control the focus and presses the key there.
void keyOn(QWidget& form, const char* name, Qt::Key key);
/// A key with Ctrl, for what has the focus or else for the main window.
void shortcut(Qt::Key key);

/// Clicks an entry of a list by the list's object name.
void clickEntry(QWidget& form, const char* list, int entry, Qt::KeyboardModifiers held = Qt::NoModifier);
