// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/files/surveychecker.h"

#include "core/store/store.h"
#include "exchange/files/filenames.h"
#include "exchange/files/openedsurvey.h"
#include "exchange/files/surveylog.h"

#include <algorithm>
#include <set>

using namespace Qt::StringLiterals;
using cellmap::Place;
namespace column = cellmap::column;

namespace {

constexpr Place headPlaces[] = {cellmap::respondentIdPlace, cellmap::surveyDatePlace,
                                cellmap::questionCountPlace, cellmap::surveyIdPlace};

constexpr qsizetype longestShown = 300; // characters of a cell; names and questions are shorter

bool isInHead(Place place) {
    return std::find(std::begin(headPlaces), std::end(headPlaces), place) != std::end(headPlaces);
}

/// The sentence of a failure.
QString sentenceOf(const std::exception_ptr& thrown) {
    try {
        std::rethrow_exception(thrown);
    } catch (const Failure& failure) {
        return failure.text();
    } catch (const std::exception& other) {
        return QString::fromUtf8(other.what());
    }
}

QString at(Place place, const QString& what) {
    return cellmap::nameOf(place) + u": " + what;
}

/// Spreadsheet programs have their own line ends, and some trim.
bool isSameText(const QString& one, const QString& other, Qt::CaseSensitivity sensitivity) {
    return toStoredText(one.simplified()).compare(toStoredText(other.simplified()), sensitivity) == 0;
}

QString difference(Place place, const QString& inFile, const QString& stored) {
    return at(place, u"\"%1\", in the store \"%2\""_s.arg(inFile.left(longestShown).simplified(),
                                                          stored.simplified()));
}

QString withoutWords(const QString& text, QStringView words) {
    const QString trimmed = text.left(longestShown).trimmed();
    return trimmed.startsWith(words.trimmed(), Qt::CaseInsensitive)
               ? trimmed.sliced(words.trimmed().size()).trimmed()
               : trimmed;
}

} // namespace

CheckedFile SurveyChecker::check(const QString& path) {
    file = {};
    file.path = path;
    read = {};
    survey.reset();
    std::optional<Judgement> judgement = open(path);
    if (!judgement)
        judgement = readCells();
    if (!judgement)
        judgement = findSurvey();
    if (!judgement)
        judgement = compareHead();
    if (!judgement)
        judgement = compareQuestions();
    if (!judgement)
        judgement = findMarksOutside();
    if (!judgement)
        judgement = compareAnswers();
    sheet = {};
    file.alone = file.verdict = judgement->verdict;
    file.remarkAlone = file.remark = judgement->remark;
    return std::move(file);
}

std::optional<SurveyChecker::Judgement> SurveyChecker::open(const QString& path) {
    const OpenedSurvey opened = openSurvey(path);
    file.hash = opened.hash;
    sheet = opened.sheet;
    try {
        if (opened.failure)
            std::rethrow_exception(opened.failure);
        sheet.Unprotect(cellmap::sheetPassword.toString());
    } catch (const std::exception&) {
        const bool isOther =
            opened.workbook.isOpen() &&
            !opened.workbook.SheetNames().contains(cellmap::sheetName.toString(), Qt::CaseInsensitive);
        return Judgement{isOther ? Verdict::NoSurveyFile : Verdict::Unreadable,
                         sentenceOf(std::current_exception())};
    }
    return std::nullopt;
}

std::optional<SurveyChecker::Judgement> SurveyChecker::readCells() {
    try {
        const auto typeOf = [this](const QString& questionid) {
            const auto known = catalogue.find(questionid.toInt());
            return known == catalogue.end() ? std::nullopt : std::optional(known->second.isScore);
        };
        read = AnswerSheet(sheet, file.title(), typeOf).read();
        for (const Place place : headPlaces) {
            if (sheet.Cells(place.row, place.column).Value().isBlank())
                return Judgement{Verdict::NoSurveyFile, at(place, u"empty"_s)};
        }
    } catch (const std::exception&) { // too much text, or a damaged cell
        return Judgement{Verdict::Unreadable, sentenceOf(std::current_exception())};
    }
    if (read.failing && isInHead(*read.failing))
        return Judgement{Verdict::NoSurveyFile, at(*read.failing, sentenceOf(read.failure))};
    if (read.failure)
        return Judgement{Verdict::Unreadable, read.failing ? at(*read.failing, sentenceOf(read.failure))
                                                           : sentenceOf(read.failure)};
    if (read.answers.empty())
        return Judgement{Verdict::NoSurveyFile, u"no question in column I from row 14 on"_s};
    return std::nullopt;
}

std::optional<SurveyChecker::Judgement> SurveyChecker::findSurvey() {
    const AnswerKeys& keys = read.answers.front().keys;
    file.respondentid = keys.respondentid.toInt();
    file.date = keys.surveydate;
    survey = findStoredSurvey(keys.surveyid.toInt(), file.respondentid);
    if (survey) {
        file.customer = survey->customer;
        file.respondent = survey->respondent;
        return std::nullopt;
    }
    file.customer = withoutWords(textAt(cellmap::customerNamePlace), cellmap::customerNameWords);
    file.respondent = withoutWords(textAt(cellmap::respondentNamePlace), cellmap::respondentNameWords);
    const bool exists = hasRecords(u"select * from survey where surveyid="_s + keys.surveyid);
    return Judgement{
        Verdict::UnknownSurvey,
        exists ? at(cellmap::respondentIdPlace, u"respondent %1 has no questionnaire in survey %2"_s.arg(
                                                    keys.respondentid, keys.surveyid))
               : at(cellmap::surveyIdPlace, u"survey %1 is not in the store"_s.arg(keys.surveyid))};
}

/// Blank cells say nothing: a file made by hand may lack them.
std::optional<SurveyChecker::Judgement> SurveyChecker::compareHead() const {
    const auto differs = [this](Place place, QStringView words, const QString& stored) {
        const QString given = withoutWords(textAt(place), words);
        return !given.isEmpty() && !isSameText(given, stored, Qt::CaseInsensitive);
    };
    const auto judge = [this](Place place, QStringView words, const QString& stored) {
        return Judgement{Verdict::Foreign, difference(place, withoutWords(textAt(place), words), stored)};
    };
    const struct {
        Place place;
        QStringView words;
        QString stored;
    } names[] = {{cellmap::customerNamePlace, cellmap::customerNameWords, survey->customer},
                 {cellmap::respondentNamePlace, cellmap::respondentNameWords, survey->respondent},
                 {cellmap::custIdPlace, {}, QString::number(survey->custid)}};
    for (const auto& [place, words, stored] : names) {
        if (differs(place, words, stored))
            return judge(place, words, stored);
    }
    if (file.date != survey->date)
        return Judgement{Verdict::Foreign,
                         difference(cellmap::surveyDatePlace, file.date.toString(ado::dateTextFormat),
                                    survey->date.toString(ado::dateTextFormat))};
    return std::nullopt;
}

std::optional<SurveyChecker::Judgement> SurveyChecker::compareQuestions() const {
    const std::set<int> asked(survey->questions.begin(), survey->questions.end());
    for (const FileAnswer& answer : read.answers) {
        const int questionid = answer.keys.questionid.toInt();
        const auto known = catalogue.find(questionid);
        const Place key{answer.row, column::key};
        const Place text{answer.row, column::question};
        const QString given = textAt(text);
        if ((known == catalogue.end() || !asked.contains(questionid)) && !isLeftOver(answer))
            return Judgement{Verdict::Foreign,
                             at(key, known == catalogue.end()
                                         ? u"question %1 is not in the catalogue"_s.arg(questionid)
                                         : u"question %1 is not in the questionnaire of %2"_s.arg(questionid)
                                               .arg(survey->respondent))};
        if (known == catalogue.end())
            continue;
        if (!given.trimmed().isEmpty() && !isSameText(given, known->second.text, Qt::CaseSensitive))
            return Judgement{Verdict::Foreign, difference(text, given, known->second.text)};
        if (const std::optional<QString> other = findOtherKind(answer))
            return Judgement{Verdict::Foreign, *other};
    }
    const auto skipped = std::find(read.oddities.begin(), read.oddities.end(), Oddity::Skipped);
    if (skipped != read.oddities.end())
        return Judgement{Verdict::Foreign, read.remarks[skipped - read.oddities.begin()]};
    return std::nullopt;
}

std::optional<SurveyChecker::Judgement> SurveyChecker::findMarksOutside() const {
    QStringList named;
    for (std::size_t i = 0; i < read.oddities.size(); ++i) {
        if (read.oddities[i] == Oddity::MarkOutside)
            named << read.remarks[qsizetype(i)];
    }
    return named.isEmpty() ? std::nullopt : std::optional(Judgement{Verdict::MarkOutside, firstOf(named)});
}

SurveyChecker::Judgement SurveyChecker::compareAnswers() {
    using Kind = CheckedAnswer::Kind;
    const StoredAnswers stored = readStoredAnswers(file.respondentid, file.date);
    QStringList remarks;
    std::map<int, std::size_t> places; // in file.answers
    const auto add = [&](int questionid, bool isScore, const QString& text) -> CheckedAnswer& {
        const std::map<int, Answer>& rows = isScore ? stored.scores : stored.words;
        const auto found = rows.find(questionid);
        places[questionid] = file.answers.size();
        file.answers.push_back({.questionid = questionid,
                                .question = text,
                                .isScore = isScore,
                                .stored = found == rows.end() ? std::nullopt : std::optional(found->second),
                                .inFile = {}});
        return file.answers.back();
    };
    for (const FileAnswer& answer : read.answers) {
        const int questionid = answer.keys.questionid.toInt();
        const auto known = catalogue.find(questionid);
        const bool isNew = !places.contains(questionid);
        CheckedAnswer& checked =
            isNew ? add(questionid, answer.isScore,
                        known == catalogue.end() ? u"question %1"_s.arg(questionid) : known->second.text)
                  : file.answers[places[questionid]];
        if (!isNew) // a reading replaces the one by the other
            remarks << at({answer.row, column::key},
                          u"question %1 again, this answer counts"_s.arg(questionid));
        checked.inFile = {answer.weightage, answer.score, answer.words.value_or(QString())};
    }
    for (const int questionid : survey->questions) {
        const auto known = catalogue.find(questionid);
        if (known != catalogue.end() && !places.contains(questionid))
            add(questionid, known->second.isScore, known->second.text);
    }
    for (const CheckedAnswer& answer : file.answers)
        ++file.counts[std::size_t(answer.kind())];
    remarks += differencesFrom(findLogRows(findRegisteredTitle(file.title())), read.answers.front().keys);
    const int changed = file.count(Kind::Changed);
    if (changed > 0)
        remarks.prepend(changed == 1 ? u"1 stored answer would change"_s
                                     : u"%1 stored answers would change"_s.arg(changed));
    const bool isIdentical = file.count(Kind::New) == 0 && file.count(Kind::Same) > 0;
    return {changed > 0   ? Verdict::ChangesAnswers
            : isIdentical ? Verdict::Identical
                          : Verdict::Ready,
            firstOf(remarks)};
}

/// What shows that the block was written for the other kind of question; a reading would lose answers.
std::optional<QString> SurveyChecker::findOtherKind(const FileAnswer& answer) const {
    const Place words = cellmap::answerPlace(answer.row);
    const Place score{answer.row, column::score};
    const bool hasWords = !textAt(words).trimmed().isEmpty();
    if (answer.isScore && hasWords)
        return at(words, u"words, in the store the question asks for a score"_s);
    if (!answer.isScore && !hasWords && !textAt(score).trimmed().isEmpty())
        return at(score, u"a score, in the store the question asks for words"_s);
    return std::nullopt;
}

/// Whether the block is a key that an earlier export of the file has left behind: nothing stands beside it.
bool SurveyChecker::isLeftOver(const FileAnswer& answer) const {
    return textAt({answer.row, column::question}).trimmed().isEmpty() && answer.weightage == 0 &&
           answer.score == 0 && answer.words.value_or(QString()).trimmed().isEmpty();
}

/// Empty for a damaged cell.
QString SurveyChecker::textAt(Place place) const {
    try {
        return sheet.Cells(place.row, place.column).Value().text();
    } catch (const Failure&) {
        return {};
    }
}
