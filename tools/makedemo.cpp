// SPDX-License-Identifier: GPL-3.0-or-later
// makedemo: prints the SQL statements that fill a demonstration store: 5 customers with 3 respondents each
// and one with 12, not all of whom answer, 8 parameters of 5 questions, 6 quarterly surveys with answers,
// actions and targets. The output is always the same.
#include "tools/demotexts.h"

#include <QDate>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <iterator>
#include <random>

using namespace Qt::StringLiterals;

namespace {

constexpr int quarters = 6;
constexpr int questionsOfParameter = 5;

QDate surveyDate(int quarter) {
    return QDate(2025, 4, 1).addMonths(3 * quarter).addDays(-1); // the last day of the quarter
}

QString quoted(const QString& text) {
    return u"'" + QString(text).replace(u'\'', QChar(0x2019)) + u"'";
}
QString quoted(const char* text) {
    return quoted(QString::fromUtf8(text));
}
QString quoted(const QDate& date) {
    return quoted(date.toString(Qt::ISODate));
}

/// Pseudo-random numbers, the same on every machine.
class Chance {
public:
    /// A whole number from 0 to end - 1.
    int below(int end) { return static_cast<int>(generator() % static_cast<unsigned>(end)); }
    /// About the normal distribution with standard deviation 1.
    double noise() {
        double sum = 0;
        for (int i = 0; i < 12; ++i)
            sum += below(10000) / 10000.0;
        return sum - 6;
    }

private:
    std::mt19937 generator{20260630};
};

class DemoScript {
public:
    QByteArray text() {
        addCatalogue();
        addCustomers();
        for (int quarter = 0; quarter < quarters; ++quarter)
            for (int customer = 0; customer < int(std::size(demo::customers)); ++customer)
                addSurvey(customer, quarter);
        addActions();
        addLargeCustomer();
        addSegments();
        addTargets();
        addDispatches();
        return script.toUtf8();
    }

private:
    void insert(const QString& table, const QStringList& values) {
        script += u"INSERT INTO " + table + u" VALUES (" + values.join(u", "_s) + u");\n";
    }

    void addCatalogue() {
        int paramid = 0;
        for (const demo::Parameter& parameter : demo::parameters) {
            insert(u"parameter"_s, {QString::number(++paramid), quoted(parameter.name)});
            const int first = (paramid - 1) * questionsOfParameter + 1;
            int questionid = first;
            for (const char* question : parameter.scored)
                insert(u"questions"_s,
                       {QString::number(questionid++), quoted(question), u"-1"_s, QString::number(paramid)});
            insert(u"questions"_s,
                   {QString::number(questionid), quoted(parameter.open), u"0"_s, QString::number(paramid)});
        }
    }

    template <class Customer>
    static QString emailOf(const demo::Respondent& respondent, const Customer& customer) {
        const QString surname = QString::fromUtf8(respondent.name).section(u' ', -1);
        QString plain;
        for (const QChar letter : surname.normalized(QString::NormalizationForm_D).toLower())
            if (letter.isLetter())
                plain += letter;
        return plain + u"@" + QString::fromUtf8(customer.domain);
    }

    template <class Customer> void addCustomer(const Customer& customer) {
        const QString custid = QString::number(++lastCustomer);
        insert(u"customer"_s,
               {custid, quoted(customer.name), quoted(customer.address), quoted(customer.phone),
                quoted(u"info@" + QString::fromUtf8(customer.domain))});
        for (const demo::Respondent& respondent : customer.respondents)
            insert(u"respondent"_s, {QString::number(++lastRespondent), custid, quoted(respondent.name),
                                     quoted(respondent.designation), quoted(emailOf(respondent, customer))});
        insert(
            u"standardmessage"_s,
            {custid, quoted(u"Dear customer,\n\nplease fill in the attached questionnaire and send it back "
                            "within two weeks. Thank you for helping us to improve.\n\n"_s +
                            QString::fromUtf8(demo::organisation))});
    }
    void addCustomers() {
        for (const demo::Customer& customer : demo::customers)
            addCustomer(customer);
    }

    /// From a half to three quarters of the respondents answer, and of them some not all questions.
    void addLargeCustomer() {
        const int first = lastRespondent + 1;
        addCustomer(demo::largeCustomer);
        for (int quarter = 1; quarter < quarters; ++quarter) {
            const QString surveyid = QString::number(++lastSurvey);
            insert(u"survey"_s, {surveyid, quoted(surveyDate(quarter)), QString::number(lastCustomer)});
            for (int respondentid = first; respondentid <= lastRespondent; ++respondentid) {
                const bool answered = chance.below(3) > 0;
                int questionid = 0;
                for (const demo::Parameter& parameter : demo::parameters)
                    for (int i = 0; i < questionsOfParameter; ++i) {
                        insert(u"responquesindex"_s,
                               {QString::number(respondentid), QString::number(++questionid), surveyid,
                                QString::number(questionid)});
                        if (answered && chance.below(12) > 0)
                            addAnswer(parameter, {-0.5, quarter, respondentid, questionid, i}, surveyid);
                    }
            }
        }
    }

    void addSurvey(int customer, int quarter) {
        const QString surveyid = QString::number(++lastSurvey);
        insert(u"survey"_s, {surveyid, quoted(surveyDate(quarter)), QString::number(customer + 1)});
        for (int person = 0; person < 3; ++person) {
            const int respondentid = customer * 3 + person + 1;
            const bool answered = quarter + 1 < quarters || person < 2; // some of the last are outstanding
            int order = 0;
            int questionid = 0;
            for (const demo::Parameter& parameter : demo::parameters)
                for (int i = 0; i < questionsOfParameter; ++i) {
                    insert(u"responquesindex"_s,
                           {QString::number(respondentid), QString::number(++questionid), surveyid,
                            QString::number(++order)});
                    if (answered)
                        addAnswer(parameter,
                                  {demo::customers[customer].bias, quarter, respondentid, questionid, i},
                                  surveyid);
                }
        }
    }

    struct Asked {
        double bias; // added to the scores
        int quarter;
        int respondentid;
        int questionid;
        int ofParameter; // index of the question within its parameter
    };

    static QString mark(double value) {
        return QString::number(std::clamp(static_cast<int>(std::lround(value)), 1, 10));
    }

    void addAnswer(const demo::Parameter& parameter, const Asked& asked, const QString& surveyid) {
        const QStringList key{u"NULL"_s, QString::number(asked.respondentid),
                              QString::number(asked.questionid), surveyid, quoted(surveyDate(asked.quarter))};
        const QString weightage = mark(parameter.weightage + 0.8 * chance.noise());
        if (asked.ofParameter < int(parameter.scored.size())) {
            const double mean = parameter.level + parameter.trend * asked.quarter + asked.bias +
                                0.3 * (asked.ofParameter - 1.5);
            insert(u"feedbackobjective"_s, key + QStringList{mark(mean + 0.9 * chance.noise()), weightage});
        } else {
            const char* reply = parameter.replies[std::size_t(chance.below(int(parameter.replies.size())))];
            insert(u"feedbackdescriptive"_s, key + QStringList{quoted(reply), weightage});
        }
    }

    void addActions() {
        int actionid = 0;
        for (const demo::Action& action : demo::actions) {
            const QDate date = surveyDate(action.quarter).addDays(14);
            insert(u"actionplan"_s,
                   {QString::number(++actionid), QString::number(action.customer + 1), quoted(date),
                    quoted(action.text), quoted(date.addDays(action.daysToTarget)),
                    action.complete ? u"-1"_s : u"0"_s});
        }
    }

    /// Regions of all customers, and roles of the respondents of the small ones by their place.
    void addSegments() {
        int custid = 0;
        for (const char* region : {"Islands", "Continent", "Continent", "Islands", "Islands", "Islands"})
            insert(u"segment"_s, {QString::number(++custid), u"NULL"_s, quoted("Region"), quoted(region)});
        const char* roles[] = {"Purchasing", "Operations", "Support"};
        for (int respondent = 0; respondent < 3 * int(std::size(demo::customers)); ++respondent)
            insert(u"segment"_s, {QString::number(respondent / 3 + 1), QString::number(respondent + 1),
                                  quoted("Role"), quoted(roles[respondent % 3])});
    }

    /// For all customers, and other ones for the first.
    void addTargets() {
        constexpr double targets[] = {7.5, 7, 8, 7.25, 7.5, 6.5};
        for (int paramid = 1; const double target : targets) {
            insert(u"target"_s, {QString::number(paramid), u"NULL"_s, QString::number(target)});
            if (paramid % 3 == 0)
                insert(u"target"_s, {QString::number(paramid), u"1"_s, QString::number(target + 1)});
            ++paramid;
        }
    }

    /// Of the last survey, one questionnaire has not been handed over, and those of two customers are due
    /// on the day of the survey.
    void addDispatches() {
        const QString last = quoted(surveyDate(quarters - 1));
        script +=
            u"INSERT INTO dispatch (custid, respondentid, surveyid, handedover, due) "
            "SELECT custid, respondentid, surveyid, handedover, date(handedover, '+14 days') FROM ("
            "SELECT existingsurvey.*, date(sdate, CASE WHEN custid % 3 = 2 THEN '-14 days' ELSE '-4 days' "
            "END) AS handedover FROM existingsurvey) WHERE respondentid <> 3 OR sdate <> "_s +
            last + u";\n";
        script += u"INSERT INTO reminder SELECT dispatchid, date(due, '+1 day') FROM dispatch "
                  "JOIN survey ON survey.surveyid = dispatch.surveyid WHERE respondentid = 6 AND sdate = "_s +
                  last + u";\n";
        insert(u"programsetting"_s, {u"'ResponseTarget'"_s, u"'80'"_s});
    }

    Chance chance;
    QString script;
    int lastCustomer = 0;
    int lastRespondent = 0;
    int lastSurvey = 0;
};

} // namespace

int main() {
    const QByteArray script = DemoScript().text();
    return std::fwrite(script.data(), 1, size_t(script.size()), stdout) == size_t(script.size()) ? 0 : 1;
}
