// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/files/surveycheck.h"

#include "core/store/store.h"

using namespace Qt::StringLiterals;

namespace {

bool isSameAnswer(const Answer& one, const Answer& other) {
    const auto plain = [](const QString& words) {
        return toStoredText(QString(words).replace(u"\r\n"_s, u"\n"_s).trimmed());
    };
    return one.weightage == other.weightage && one.score == other.score &&
           plain(one.words) == plain(other.words);
}

} // namespace

QString wordOf(Verdict verdict) {
    switch (verdict) {
    case Verdict::Unreadable:
        return u"unreadable"_s;
    case Verdict::NoSurveyFile:
        return u"no survey file"_s;
    case Verdict::UnknownSurvey:
        return u"unknown survey"_s;
    case Verdict::Foreign:
        return u"foreign"_s;
    case Verdict::MarkOutside:
        return u"mark outside 0 to 10"_s;
    case Verdict::Twice:
        return u"twice in this list"_s;
    case Verdict::ChangesAnswers:
        return u"changes stored answers"_s;
    case Verdict::Identical:
        return u"read already, identical"_s;
    case Verdict::Ready:
        return u"ready"_s;
    }
    return {};
}

bool isFaultless(Verdict verdict) {
    return verdict >= Verdict::ChangesAnswers;
}

CheckedAnswer::Kind CheckedAnswer::kind() const {
    const bool isStored = stored && !stored->isBlank();
    const bool isGiven = inFile && !inFile->isBlank();
    if (!inFile || (!isStored && !isGiven))
        return Kind::LeftOut;
    if (!isStored)
        return Kind::New;
    return isSameAnswer(*stored, *inFile) ? Kind::Same : Kind::Changed;
}

QString firstOf(const QStringList& remarks) {
    constexpr qsizetype mostNamed = 5;
    const QString named = remarks.first(qMin(remarks.size(), mostNamed)).join(u"; "_s);
    return remarks.size() > mostNamed ? named + u"; and %1 more"_s.arg(remarks.size() - mostNamed) : named;
}

void judgeTogether(std::vector<CheckedFile>& files) {
    std::map<std::pair<int, QDate>, std::vector<const CheckedFile*>> questionnaires;
    for (const CheckedFile& file : files) {
        if (isFaultless(file.alone))
            questionnaires[{file.respondentid, file.date}].push_back(&file);
    }
    for (CheckedFile& file : files) {
        file.verdict = file.alone;
        file.remark = file.remarkAlone;
        const auto found = questionnaires.find({file.respondentid, file.date});
        if (!isFaultless(file.alone) || found->second.size() == 1)
            continue;
        QStringList others;
        for (const CheckedFile* other : found->second) {
            if (other != &file)
                others << (other->title() == file.title() ? other->path : other->title());
        }
        file.verdict = Verdict::Twice;
        file.remark = u"the same questionnaire as "_s + firstOf(others);
    }
}
