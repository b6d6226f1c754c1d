// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "exchange/files/storedsurvey.h"

#include <QStringList>

#include <array>

/// What a reading would do with a file; the first one that applies.
enum class Verdict {
    Unreadable,
    NoSurveyFile,
    UnknownSurvey,
    Foreign, ///< a name, date or question in the file is not the store's
    MarkOutside,
    Twice, ///< another file of the list has the same respondent and date
    ChangesAnswers,
    Identical,
    Ready,
};

/// The verdict in the user's words.
QString wordOf(Verdict verdict);

/// Whether a file may be read.
bool isFaultless(Verdict verdict);

/// An answer in a file beside the stored one.
struct CheckedAnswer {
    enum class Kind { New, Same, Changed, LeftOut };

    int questionid = 0;
    QString question;
    bool isScore = false;
    std::optional<Answer> stored; ///< nothing without a stored row
    std::optional<Answer> inFile; ///< nothing for a question that the file does not have
    /// A blank beside a stored answer is a change: a reading clears it. Unless the file does not have the
    /// question at all.
    Kind kind() const;
};

struct CheckedFile {
    QString path;
    QString hash; ///< as contentHash; empty if the content could not be read
    QString customer;
    QString respondent;
    QDate date;
    int respondentid = 0;
    Verdict alone = Verdict::Unreadable; ///< without regard to the other files
    QString remarkAlone;
    Verdict verdict = Verdict::Unreadable;
    QString remark;
    /// In the order of the file, then the questions that it lacks; empty unless the file may be read.
    std::vector<CheckedAnswer> answers;
    std::array<int, 4> counts{}; ///< of the answers, by kind

    QString title() const { return path.section(u'/', -1); }
    int count(CheckedAnswer::Kind kind) const { return counts[std::size_t(kind)]; }
};

/// The first ones of a list that may be long, in one line.
QString firstOf(const QStringList& remarks);

/// Sets verdict and remark of each file among the others: a questionnaire must not be in the list twice.
void judgeTogether(std::vector<CheckedFile>& files);
