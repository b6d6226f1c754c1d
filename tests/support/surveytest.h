// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/base/progress.h"
#include "platform/forms/treeview.h"
#include "survey/frmNewSurvey.h"
#include "survey/frmSelectSurvey.h"
#include "tests/support/files.h"
#include "tests/support/otherprogram.h"
#include "tests/support/storecompare.h"
#include "tests/support/storetest.h"
#include "tests/support/surveyfile.h"

#include <QProgressDialog>

/// A customer with two respondents and a catalogue of five questions, numbered from 0: 0 and 1 under
/// Delivery, 2 to 4 under Quality. Today is 5 March 2024.
struct SurveyTest : StoreTest {
    static inline const QDate today{2024, 3, 5};
    Replaced<forms::todayHook> fixedDay{[] { return today; }};

    void SetUp() override {
        StoreTest::SetUp();
        acme = addCustomer(u"Acme"_s);
        ann = addRespondent(acme, u"Ann"_s);
        bob = addRespondent(acme, u"Bob"_s);
        const int delivery = addParameter(u"Delivery"_s);
        const int quality = addParameter(u"Quality"_s);
        question = {addQuestion(delivery, u"On time?"_s), addQuestion(delivery, u"Overall?"_s),
                    addQuestion(quality, u"Overall?"_s), addQuestion(quality, u"Sturdy?"_s),
                    addQuestion(quality, u"What else?"_s, false)};
    }
    /// The surveyid of a customer's survey; 0 if none.
    static int surveyOf(const QString& customer, const QDate& date) {
        return findSurveyKey({customer, {}, ado::toText(date)}).surveyid;
    }
    /// Stores a questionnaire of these questions of the catalogue.
    void addStored(int respondentid, const QDate& date, std::vector<int> questions) {
        const int found = surveyOf(u"Acme"_s, date);
        const int surveyid = found == 0 ? addSurvey(acme, date) : found;
        for (int& number : questions)
            number = question.at(static_cast<std::size_t>(number));
        addQuestionnaire(respondentid, surveyid, questions);
    }
    /// Saves a survey file of the questions 0 and 4 of today with these cells entered; returns its path.
    QString saveFile(const QString& name, int respondentid, const Cells& cells) const {
        SurveyFile file{.respondentid = respondentid,
                        .questions = {{question[0], true}, {question[4], false}}};
        for (const auto& [address, value] : cells)
            file.entered[QString::fromLatin1(address)] = value;
        file.saveAs(path(name));
        return path(name);
    }
    /// Adds a file of today's survey to the register.
    static void addToRegister(const QString& name, int id = 1, const QString& respondent = u"Ann"_s) {
        run(u"insert into log (custname, respname, respid, xlsfilename, sdate, surveyid) values "
            "('Acme', '%1', %2, '%3', '2024-03-05', 1)"_s.arg(respondent, QString::number(id), name));
    }
    /// The questionnaires of a respondent: "05/03 1:4 2:0" are the questions 4 and 0 in positions 1 and 2.
    static QString stored(int respondentid) {
        QStringList words;
        QString date;
        for (const QString& row :
             rows(QStringLiteral(
                      "select sdate, [Order], questionid from responquesindex as q, survey as s where "
                      "q.surveyid=s.surveyid and respondentid=%1 order by sdate, [Order], q.rowid")
                      .arg(respondentid))) {
            const QStringList fields = row.split(u'|');
            if (std::exchange(date, fields[0]) != fields[0])
                words << fields[0].left(5);
            words << fields[1] + u':' + QString::number(fields[2].toInt() - 1);
        }
        return words.join(u' ');
    }
    /// Deletes a question from the catalogue, as another program would.
    void dropQuestion(int number) const {
        run(u"delete * from questions where questionid=%1"_s.arg(
            question.at(static_cast<std::size_t>(number))));
    }
    /// Opens the editor for a respondent of Acme, today; edits an existing questionnaire.
    frmNewSurvey& open(int respondent = 0) {
        frmSelectSurvey& selection = show<frmSelectSurvey>();
        selection.lstRespondent()->setListIndex(respondent);
        blnSurveyPasted = true; // opens without the question
        selection.cmdBlankSurvey();
        return frmNewSurvey::instance();
    }
    /// Runs a step while another program locks the store; expects one message.
    void whileLocked(const std::function<void()>& step) {
        OtherProgram::endWaiting();
        other.lock();
        expectFault(Locked);
        step();
        other.unlock();
        expectIdle();
    }
    /// Runs a step and cancels it as soon as its progress says that.
    static void cancelAt(const QString& progress, const std::function<void()>& step) {
        const int delay = std::exchange(Progress::delay, 0);
        QTimer watch;
        QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
            const auto* dialog = qobject_cast<QProgressDialog*>(QApplication::activeModalWidget());
            if (dialog && dialog->labelText().startsWith(progress))
                dialog->findChild<QPushButton*>()->click();
        });
        watch.start();
        step();
        Progress::delay = delay;
    }
    /// Runs a step while the customer or respondent of that name is renamed; expects it to be refused.
    void withoutOwner(const QString& name, const std::function<void()>& step) {
        const auto rename = [](const QString& from, const QString& to) {
            run(u"update customer set custname = '%1' where custname = '%2'"_s.arg(to, from));
            run(u"update respondent set respondentname = '%1' where respondentname = '%2'"_s.arg(to, from));
        };
        rename(name, u"Other"_s);
        const QStringList before = storeRows(*cnnMain);
        messages.expectCritical(
            (name == u"Acme" ? u"The customer Acme"_s : u"The respondent " + name + u" of Acme") +
            u" is no longer in the database. Nothing has been changed.");
        step();
        EXPECT_EQ(messages.left(), 0);
        EXPECT_EQ(storeRows(*cnnMain), before);
        rename(u"Other"_s, name);
    }

    static forms::TreeView* tree() {
        return control<forms::TreeView>(frmNewSurvey::instance(), "trvParameter");
    }
    static forms::MSHFlexGrid* grid() {
        return control<forms::MSHFlexGrid>(frmNewSurvey::instance(), "grdParamAndQuest");
    }
    /// The centre of a question's node; -1 is the node of Delivery.
    static QPoint nodeAt(int number) {
        tree()->expandAll();
        const QTreeWidgetItem* parameter = tree()->topLevelItem(number < 2 ? 0 : 1);
        const QTreeWidgetItem* node =
            number < 0 ? parameter : parameter->child(number < 2 ? number : number - 2);
        return tree()->visualItemRect(node).center();
    }
    static QPoint rowAt(int row) {
        return {5, grid()->rowViewportPosition(row - 1) + grid()->rowHeight(0) / 2};
    }
    static void clickRow(int row) { QTest::mouseClick(grid()->viewport(), Qt::LeftButton, {}, rowAt(row)); }
    static void addByButton(int number) {
        QTest::mouseClick(tree()->viewport(), Qt::LeftButton, {}, nodeAt(number));
        press(frmNewSurvey::instance(), "cmdAdd");
    }

    int acme = 0, ann = 0, bob = 0;
    std::vector<int> question; // questionid by number
    OtherProgram other;
};
