// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ado/casefold.h"
#include "platform/ado/dialect.h"
#include "platform/ado/error.h"
#include "platform/ado/value.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

/// The parameters as texts, joined by bars.
std::string parameters(const ado::Statement& statement) {
    QStringList texts;
    for (const QVariant& value : statement.parameters)
        texts << value.toString();
    return texts.join(u'|').toStdString();
}

struct Translation {
    const char16_t* text;
    const char16_t* sql;
    const char* parameters;
};

TEST(Dialect, literalsBecomeParametersAndTheRestTheStoresWords) {
    const Translation table[] = {
        {u"delete * from customer where custid=7", u"delete  from customer where custid=?", "7"},
        {u"delete * from log where xlsfilename='a*b.xls'", u"delete  from log where xlsfilename=?",
         "a*b.xls"},
        {u"select * from survey where sdate=#03/15/2002# and custid=4",
         u"select * from survey where sdate=? and custid=?", "2002-03-15|4"},
        {u"select * from s where d between #01/02/2003# and  # 12/31/2003# ",
         u"select * from s where d between ? and  ? ", "2003-01-02|2003-12-31"},
        {u"delete * from ResponQuesIndex where respondentid=1 and ResponQuesIndex.order=2",
         u"delete  from ResponQuesIndex where respondentid=? and ResponQuesIndex.\"order\"=?", "1|2"},
        {u"select distinct(question),type from param where parametername='True' and Type=True",
         u"select distinct(question),type from param where parametername=? and Type=-1", "True"},
        {u"select * from t where a='it''s #01/01/2001# ; -- /* \"x\" False delete * from'",
         u"select * from t where a=?", "it's #01/01/2001# ; -- /* \"x\" False delete * from"},
        {u"select * from t where [a'b]=1 ;  ", u"select * from t where [a'b]=? ;  ", "1"},
    };
    for (const Translation& row : table) {
        const ado::Statement statement = ado::translate(QString::fromUtf16(row.text));
        EXPECT_EQ(statement.sql.section(u';', 0, 0).trimmed().toStdString(),
                  QString::fromUtf16(row.sql).section(u';', 0, 0).trimmed().toStdString());
        EXPECT_EQ(parameters(statement), row.parameters);
    }
}

TEST(Dialect, refusesWhatIsNotOneWholeStatement) {
    const std::pair<const char16_t*, int> table[] = {
        {u"select * from t where a='O'Hara'", ado::number::syntax},
        {u"select * from t where d=##", ado::number::syntax},
        {u"select * from t where d=#13/45/2002#", ado::number::syntax},
        {u"select * from t where d=#03/15/2002", ado::number::syntax},
        {u"select * from t -- where", ado::number::syntax},
        {u"select * from t /* all */", ado::number::syntax},
        {u"select * from t where [a", ado::number::syntax},
        {u"select 1; delete * from customer", ado::number::afterEnd},
        {u"select * from t where custid=5;drop table t", ado::number::afterEnd},
    };
    for (const auto& [text, number] : table) {
        try {
            ado::translate(QString::fromUtf16(text));
            ADD_FAILURE() << QString::fromUtf16(text).toStdString();
        } catch (const ado::Failure& failure) {
            EXPECT_EQ(failure.cause().Number, number) << QString::fromUtf16(text).toStdString();
        }
    }
}

TEST(Dialect, likeAndCollationIgnoreCaseForAllOfUnicode) {
    const std::tuple<const char*, const char*, bool> likes[] = {{"%late%", "Too LATE again", true},
                                                                {"%ÉCOLE%", "les écoles", true},
                                                                {"Ø_gård", "øLGÅRD", true},
                                                                {"%a%b%", "xxAyyBzz", true},
                                                                {"%ab", "aab", true},
                                                                {"a%", "ba", false},
                                                                {"%%", "", true},
                                                                {"_", "", false},
                                                                {"%привет%", "ПРИВЕТ!", true},
                                                                {"abc", "abcd", false},
                                                                {"%50 %%", "by 50 percent", true}};
    for (const auto& [pattern, text, matches] : likes)
        EXPECT_EQ(ado::LikePattern(pattern).matches(text), matches) << pattern << " ~ " << text;
    EXPECT_EQ(ado::compareFolded("Émile", "éMILE"), 0);
    EXPECT_LT(ado::compareFolded("acme", "ACME Ltd"), 0);
    EXPECT_GT(ado::compareFolded("b", "A"), 0);
    EXPECT_NE(ado::compareFolded("\xff\xfe", "a"), 0);
}

TEST(Values, wholeNumbersRoundHalfEvenAndRefuseWhatDoesNotFit) {
    const std::pair<QVariant, int> fits[] = {{u"2.5"_s, 2},    {u"3.5"_s, 4}, {u" 7 "_s, 7},        {-0.5, 0},
                                             {32767.4, 32767}, {true, -1},    {u"-32768"_s, -32768}};
    for (const auto& [value, whole] : fits)
        EXPECT_EQ(ado::toWhole(value), whole) << value.toString().toStdString();
    const std::pair<QVariant, int> refused[] = {
        {32767.5, ado::number::overflow},      {u"1e9"_s, ado::number::overflow},
        {u"ten"_s, ado::number::typeMismatch}, {u""_s, ado::number::typeMismatch},
        {u"nan"_s, ado::number::typeMismatch}, {u"5 apples"_s, ado::number::typeMismatch}};
    for (const auto& [value, number] : refused) {
        try {
            ado::toWhole(value);
            ADD_FAILURE() << value.toString().toStdString();
        } catch (const ado::Failure& failure) {
            EXPECT_EQ(failure.cause().Number, number) << value.toString().toStdString();
        }
    }
}

} // namespace
