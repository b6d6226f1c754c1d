-- The saved queries: read like tables, never written. Run after the scripts of the tables, on a new database and at each
-- upgrade of an older one.

DROP VIEW IF EXISTS custresp;
CREATE VIEW custresp AS
SELECT customer.custid, customer.custname, respondent.respondentid, respondent.respondentname,
       respondent.respondentdesignation, respondent.emailid
FROM customer JOIN respondent ON respondent.custid = customer.custid;

DROP VIEW IF EXISTS param;
CREATE VIEW param AS
SELECT parameter.paramid, parameter.parametername, questions.question, questions.Type, questions.questionid
FROM parameter JOIN questions ON questions.paramid = parameter.paramid;

DROP VIEW IF EXISTS responquery;
CREATE VIEW responquery AS
SELECT customer.custid, customer.custname, respondent.respondentid, respondent.respondentname,
       survey.surveyid, survey.sdate, questions.questionid, questions.question, questions.Type,
       parameter.paramid, parameter.parametername, responquesindex."Order"
FROM responquesindex
JOIN survey ON survey.surveyid = responquesindex.surveyid
JOIN customer ON customer.custid = survey.custid
JOIN respondent ON respondent.respondentid = responquesindex.respondentid
JOIN questions ON questions.questionid = responquesindex.questionid
JOIN parameter ON parameter.paramid = questions.paramid;

DROP VIEW IF EXISTS existingsurvey;
CREATE VIEW existingsurvey AS                    -- one row per respondent and survey with a questionnaire
SELECT customer.custid, customer.custname, respondent.respondentid, respondent.respondentname,
       survey.surveyid, survey.sdate
FROM customer
JOIN survey ON survey.custid = customer.custid
JOIN respondent ON respondent.custid = customer.custid
WHERE EXISTS (SELECT 1 FROM responquesindex
              WHERE responquesindex.surveyid = survey.surveyid
                AND responquesindex.respondentid = respondent.respondentid);

-- The queries of answers start at the customer (CROSS JOIN keeps that order), so that their cost depends on the answers of
-- the customer and not on the size of the store.

DROP VIEW IF EXISTS objquery;
CREATE VIEW objquery AS
SELECT feedbackobjective.feedbackobjid, customer.custid, customer.custname, respondent.respondentid,
       respondent.respondentname, parameter.parametername, questions.question, questions.questionid,
       feedbackobjective.score, feedbackobjective.weightage, feedbackobjective.surveydate
FROM customer
CROSS JOIN respondent ON respondent.custid = customer.custid
CROSS JOIN feedbackobjective ON feedbackobjective.respondentid = respondent.respondentid
CROSS JOIN questions ON questions.questionid = feedbackobjective.questionid
CROSS JOIN parameter ON parameter.paramid = questions.paramid;

DROP VIEW IF EXISTS descquery;
CREATE VIEW descquery AS
SELECT feedbackdescriptive.feedbackdescid, customer.custid, customer.custname, respondent.respondentid,
       respondent.respondentname, parameter.parametername, questions.question, questions.questionid,
       feedbackdescriptive.Description, feedbackdescriptive.weightage, feedbackdescriptive.surveydate
FROM customer
CROSS JOIN respondent ON respondent.custid = customer.custid
CROSS JOIN feedbackdescriptive ON feedbackdescriptive.respondentid = respondent.respondentid
CROSS JOIN questions ON questions.questionid = feedbackdescriptive.questionid
CROSS JOIN parameter ON parameter.paramid = questions.paramid;

-- Answers to questions that are Score questions now; answers to questions that became Descriptive are hidden everywhere.
-- scatterqry is read for one parameter of one customer, so it starts at the questions of the parameter.
DROP VIEW IF EXISTS scatterqry;
CREATE VIEW scatterqry AS
SELECT customer.custname, parameter.parametername, feedbackobjective.surveydate, feedbackobjective.weightage,
       feedbackobjective.score
FROM customer
CROSS JOIN parameter
CROSS JOIN respondent ON respondent.custid = customer.custid
CROSS JOIN questions ON questions.paramid = parameter.paramid
CROSS JOIN feedbackobjective ON feedbackobjective.respondentid = respondent.respondentid
                            AND feedbackobjective.questionid = questions.questionid
WHERE questions.Type <> 0;

DROP VIEW IF EXISTS scatter;
CREATE VIEW scatter AS
SELECT customer.custname, parameter.parametername, feedbackobjective.surveydate AS sdate,
       feedbackobjective.weightage, feedbackobjective.score
FROM customer
CROSS JOIN respondent ON respondent.custid = customer.custid
CROSS JOIN feedbackobjective ON feedbackobjective.respondentid = respondent.respondentid
CROSS JOIN questions ON questions.questionid = feedbackobjective.questionid
CROSS JOIN parameter ON parameter.paramid = questions.paramid
WHERE questions.Type <> 0;

DROP VIEW IF EXISTS "action";
CREATE VIEW "action" AS
SELECT actionplan.actionid, actionplan.customerid, customer.custname, actionplan."Date", actionplan."Action",
       actionplan.targetdate, actionplan.Status
FROM actionplan JOIN customer ON customer.custid = actionplan.customerid;
