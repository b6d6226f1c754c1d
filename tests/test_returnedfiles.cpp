// SPDX-License-Identifier: GPL-3.0-or-later
// Survey files that come back under the name of another format belong to the registered file.
#include "exchange/frmReading.h"
#include "feedback/frmFeedBackObj.h"
#include "tests/support/surveytest.h"

namespace {
struct ReturnedTest : SurveyTest {
    void SetUp() override {
        SurveyTest::SetUp();
        addStored(ann, today, {0, 4});
        addToRegister(u"ann.xls"_s);
        ASSERT_TRUE(QDir(home()).mkdir(u"returned"_s));
    }
    QString returned(const QString& name, int score) const {
        return saveFile(u"returned/"_s + name, ann, {{"C14", score}});
    }
    void importPicked(const QString& respondent, const QString& remark = {}) {
        frmReading& form = show<frmReading>();
        press(form, "cmdBrowse");
        clickEntry(form, "lstXlsFiles", 0);
        EXPECT_EQ(control<QLabel>(form, "lblRespName")->text(), respondent);
        if (!remark.isEmpty())
            messages.expect(remark, style::information);
        messages.expect(u"Import Done...."_s, style::information);
        press(form, "cmdImport");
    }
    static QString score() { return value(u"select score from feedbackobjective"_s); }
    static QStringList readIn() { return rows(u"select xlsfilename from log where Status=True"_s); }
    static QString remark(const QString& title) {
        return u"Read as it stands, but worth a look:\r\n%1 was read as the returned ann.xls"_s.arg(title);
    }
};

TEST_F(ReturnedTest, anotherFormatIsFoundInTheRegisterByBothForms) {
    const std::pair<QString, bool> cases[] = {{u"ann.xlsx"_s, true},
                                              {u"ann.xlsm"_s, true},
                                              {u"ann.ODS"_s, true},
                                              {u"ann.xls"_s, false},
                                              {u"bob.xlsx"_s, false}};
    int mark = 0;
    for (const auto& [title, isReturn] : cases) {
        SCOPED_TRACE(title);
        const bool isAnns = isReturn || title == u"ann.xls";
        run(u"update log set Status=False"_s);
        picked = returned(title, ++mark);
        importPicked(isAnns ? u"Ann"_s : QString(), isReturn ? remark(title) : QString());
        EXPECT_EQ(score(), QString::number(mark));
        EXPECT_EQ(readIn(), isAnns ? QStringList{u"ann.xls"_s} : QStringList());

        picked = returned(title, ++mark);
        if (isReturn)
            messages.expect(remark(title), style::information);
        else if (!isAnns)
            messages.expect(u"You have not specified the Correct XLS file.....The orignal file is - ann.xls "
                            "Please locate the same XLS file"_s,
                            style::critical);
        press(show<frmFeedBackObj>(), "cmdRead");
        EXPECT_EQ(score(), QString::number(isAnns ? mark : mark - 1));
        EXPECT_EQ(messages.left(), 0);
    }
}

TEST_F(ReturnedTest, aFileHandedOutUnderThatVeryNameComesFirst) {
    addToRegister(u"ann.xlsx"_s);
    picked = returned(u"ann.xlsx"_s, 4);
    importPicked(u"Ann"_s);
    EXPECT_EQ(readIn(), QStringList{u"ann.xlsx"_s});
}
} // namespace
