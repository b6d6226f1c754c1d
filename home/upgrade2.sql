-- Run before version2.sql on a database of version 1. Early ones have other columns in these indexes.

DROP INDEX IF EXISTS respondent_customer;
CREATE INDEX respondent_customer ON respondent (custid);
DROP INDEX IF EXISTS questions_parameter;
CREATE INDEX questions_parameter ON questions (paramid);
DROP INDEX IF EXISTS feedbackobjective_answer;
CREATE INDEX feedbackobjective_answer
    ON feedbackobjective (respondentid, questionid, surveydate, weightage, score);
DROP INDEX IF EXISTS log_customer;
CREATE INDEX log_customer ON log (custname);
