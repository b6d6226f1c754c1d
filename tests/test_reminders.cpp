// SPDX-License-Identifier: GPL-3.0-or-later
// Reminding those who have not answered, and the settings of the responses.
#include "tests/support/responsestest.h"

namespace {
TEST_F(ResponsesTest, remindsThoseWhoHaveNotAnswered) {
    strCompanyName = u"Larkmoor"_s;
    run(u"update respondent set emailid='ann@example.com' where respondentname='Ann'"_s);
    const int dora = addRespondent(acme, u"Dora {due}"_s);
    const int eve = addRespondent(acme, u"Eve"_s);
    for (const int respondent : {dora, eve})
        addStored(respondent, today, {0});
    for (const auto& [name, id] :
         {std::pair(u"Ann"_s, ann), {u"Bob"_s, bob}, {u"Dora"_s, dora}, {u"Eve"_s, eve}}) {
        handOver(id, {2024, 3, 4});
        registerFile(name + u".xls", name, id);
    }
    addScore(bob, question[0], 1, today, 5, 5);
    addWords(bob, question[4], 1, today, u"Fine"_s);
    ASSERT_TRUE(QFile::remove(path(u"Eve.xls"_s)));
    run(u"insert into programsetting (name, content) values ('ReminderSubject', '{survey date}: {nothing}'), "
        "('ReminderText', '{respondent} {customer} {due} {company}')"_s);
    form();
    tickAll();
    const auto remind = [&](const QString& last, const QString& asked, Answer answer, bool fails = false) {
        messages.expectInformation(
            u"These have been left out:\r\nBob of Acme, 05/03/2024: has answered\r\n"_s + last);
        if (fails) {
            messages.expectAsked(asked, Answer::Yes);
            expectFault(Refused);
        }
        messages.expectAsked(asked, answer);
        press(form(), "cmdRemind");
        expectIdle();
        return std::exchange(mails, {});
    };
    const QString missing = u"Eve of Acme, 05/03/2024: the file Eve.xls is missing\r\n"
                            "Cora of Brown, 01/02/2024: has not been handed a survey file"_s;
    const QStringList both{
        u"ann@example.com|05/03/2024: {nothing}|Ann Acme 04/03/2024 Larkmoor|"_s + path(u"Ann.xls"_s),
        u"No email address found|05/03/2024: {nothing}|Dora {due} Acme 04/03/2024 Larkmoor|"_s +
            path(u"Dora.xls"_s)};
    EXPECT_EQ(remind(missing, u"Do the 2 respondents count as reminded?"_s, Answer::No), both);
    EXPECT_EQ(rows(u"select * from reminder"_s), QStringList());
    remind(missing, u"Do the 2 respondents count as reminded?"_s, Answer::Yes);
    EXPECT_EQ(rows(u"select * from reminder"_s), QStringList({u"1|05/03/2024"_s, u"3|05/03/2024"_s}));
    EXPECT_EQ(shown()[2], u"Acme|Dora {due}|05/03/2024|20/02/2024|04/03/2024|overdue|1|05/03/2024"_s);

    failsOn = u"No email address found"_s;
    remind(missing + u"\r\nDora {due} of Acme, 05/03/2024: The client was cancelled.",
           u"Does the respondent count as reminded?"_s, Answer::Yes);
    EXPECT_EQ(shown()[0].section(u'|', 6), u"2|05/03/2024"_s);

    run(u"update dispatch set due=null where respondentid=%1"_s.arg(dora));
    refuse(u"insert on reminder"_s);
    EXPECT_EQ(remind(u"Dora {due} of Acme, 05/03/2024: has no due date\r\n"_s + missing,
                     u"Does the respondent count as reminded?"_s, Answer::No, true),
              both.first(1));
}

TEST_F(ResponsesTest, theStoresSettingsAreEditedAndKeptApartFromDefaults) {
    const auto edit = [&](const std::function<void(frmResponseSettings&)>& steps) {
        inDialog<frmResponseSettings>("cmdSettings", [&](frmResponseSettings& dialog) {
            steps(dialog);
            press(dialog, "cmdOK");
        });
        return rows(u"select name, content from programsetting order by name"_s);
    };
    const auto enter = [](frmResponseSettings& dialog, const char* name, const QString& text) {
        auto* box = control<QWidget>(dialog, name);
        box->setFocus();
        shortcut(Qt::Key_A);
        type(text);
    };
    EXPECT_EQ(edit([](auto&) {}), QStringList());
    EXPECT_EQ(edit([&](frmResponseSettings& dialog) {
                  enter(dialog, "spnDays", u"21"_s);
                  enter(dialog, "spnTarget", u"60"_s);
                  enter(dialog, "txtText", u"It's {due}"_s);
              }),
              QStringList({u"ReminderText|It's {due}"_s, u"ResponseDays|21"_s, u"ResponseTarget|60"_s}));
    EXPECT_EQ(foot(), u"asked 3, answered 0, 0 %, target 60 %"_s);

    ChangedRows changed;
    changed.answer = Keep::Stored;
    EXPECT_EQ(edit([&](frmResponseSettings& dialog) {
                  run(u"update programsetting set content='70' where name='ResponseTarget'"_s);
                  enter(dialog, "spnDays", u"7"_s);
                  press(dialog, "cmdRestore");
              }),
              QStringList({u"ResponseDays|7"_s, u"ResponseTarget|70"_s}))
        << "another's change of what is not edited here stays";
    EXPECT_EQ(changed.asked.size(), 0U);
    edit([&](frmResponseSettings& dialog) {
        run(u"update programsetting set content='80' where name='ResponseTarget'"_s);
        enter(dialog, "spnTarget", u"50"_s);
    });
    ASSERT_EQ(changed.asked.size(), 1U);
    EXPECT_EQ(changed.asked[0].fields, std::vector<ChangedField>({{u"Target"_s, u"70"_s, u"80"_s, u"50"_s}}));
    EXPECT_EQ(foot(), u"asked 3, answered 0, 0 %, target 80 %"_s);
    run(u"update programsetting set content='soon'"_s);
    edit([&](auto& dialog) { EXPECT_EQ(control<QSpinBox>(dialog, "spnDays")->value(), 14); });
    EXPECT_EQ(foot(), u"asked 3, answered 0, 0 %"_s);
}
} // namespace
