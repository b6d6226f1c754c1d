// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/cellmap.h"
#include "platform/ado/error.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace cellmap;

namespace {

/// A cell as text: "B14 locked red wrapped 'On time?'".
QString shown(const Cell& cell) {
    static const std::map<Colour, QString> names = {{Colour::Black, u" black"_s},
                                                    {Colour::Red, u" red"_s},
                                                    {Colour::DarkBlue, u" darkblue"_s},
                                                    {Colour::Blue, u" blue"_s},
                                                    {Colour::None, u""_s}};
    static const QStringList locks{u""_s, u" locked"_s, u" open"_s};
    return QChar(u'@' + cell.place.column) + QString::number(cell.place.row) +
           locks[static_cast<int>(cell.lock)] + names.at(cell.border) + (cell.wrapped ? u" wrapped" : u"") +
           (cell.font == Colour::None ? QString() : u" font"_s + names.at(cell.font)) +
           (cell.value ? u" '"_s + cell.value->text() + u'\'' : QString());
}

QStringList sorted(const std::vector<Cell>& cells) {
    QStringList result;
    for (const Cell& cell : cells)
        result << shown(cell);
    result.sort();
    return result;
}

} // namespace

TEST(CellMap, head) {
    const std::vector<Cell> cells = headCells({.organisation = u"Larkmoor"_s,
                                               .customer = u"Acme"_s,
                                               .respondent = u"Ann"_s,
                                               .custid = u"3"_s,
                                               .respondentid = u"45"_s,
                                               .surveyid = u"12"_s,
                                               .surveyDate = {2024, 3, 5},
                                               .exportDate = {2024, 3, 9}});
    EXPECT_EQ(sorted(cells),
              QStringList({u"A1 locked wrapped 'Larkmoor'"_s, u"B3 locked 'Customer Satisfaction Survey'"_s,
                           u"B8 locked 'Customer Name : Acme'"_s, u"B9 locked 'Respondent Name : Ann'"_s,
                           u"H1 locked '09/03/2024'"_s, u"I1 locked '3'"_s, u"I2 locked '45'"_s,
                           u"I3 locked '05/03/2024'"_s, u"I5 open '12'"_s}));
    using Type = excel::Value::Type;
    for (const Cell& cell : cells) {
        const bool isDate = cell.place == surveyDatePlace || cell.place == Place{1, 8};
        EXPECT_EQ(cell.value->type(), isDate ? Type::Date : Type::Text) << cell.place.row;
    }
    EXPECT_EQ(shown(questionCountCell(3)), u"I4 '3'"_s);
}

TEST(CellMap, blocks) {
    const QStringList boxes{u"C14 open black"_s, u"D14 open black"_s};
    EXPECT_EQ(sorted(blockCells(14, {.questionid = u"7"_s,
                                     .text = u"On time?"_s,
                                     .lastScore = 7,
                                     .lastWeightage = 9,
                                     .parameter = u"Delivery"_s,
                                     .startsParameter = true})),
              QStringList({u"A14 locked black wrapped 'Delivery'"_s, u"B14 locked red wrapped 'On time?'"_s,
                           u"B15 locked"_s}) +
                  boxes +
                  QStringList({u"E14 locked black '7'"_s, u"F14 locked black '9'"_s, u"I14 locked '7'"_s}));
    EXPECT_EQ(sorted(blockCells(14, {.questionid = u"8"_s, .text = u"Sturdy?"_s, .parameter = u"Quality"_s})),
              QStringList({u"B14 locked red wrapped 'Sturdy?'"_s, u"B15 locked"_s}) + boxes +
                  QStringList({u"E14 locked black"_s, u"F14 locked black"_s, u"I14 locked '8'"_s}));
    EXPECT_EQ(
        sorted(blockCells(16, {.questionid = u"9"_s,
                               .text = u"What else?"_s,
                               .isScore = false,
                               .lastScore = 4, // of no meaning here
                               .lastWeightage = 5,
                               .parameter = u"Quality"_s,
                               .startsParameter = true})),
        QStringList({u"A16 locked black wrapped 'Quality'"_s, u"B16 locked darkblue wrapped 'What else?'"_s,
                     u"B17 open blue wrapped font darkblue 'Type your Answer here'"_s, u"C16 locked"_s,
                     u"D16 open black"_s, u"F16 locked black '5'"_s, u"I16 locked '9'"_s}));
}

TEST(CellMap, rows) {
    // Score, descriptive, score: rows 14, 16 with its box in 17, and 19.
    const int second = firstRow + blockRows(true);
    EXPECT_EQ(second, 16);
    EXPECT_EQ(answerPlace(second), (Place{17, 2}));
    EXPECT_EQ(second + blockRows(false), 19);
    const std::vector<std::pair<double, int>> bounds = {{20, 75},  {0, 15},   {-5, 0},
                                                        {0.5, 16}, {2.5, 22}, {21840, 65535}};
    for (const auto& [questions, row] : bounds)
        EXPECT_EQ(lastRow(questions), row) << questions;
    for (const double questions : {21841.0, 1e18, -1e18})
        EXPECT_THROW(lastRow(questions), ado::Failure) << questions;
}
