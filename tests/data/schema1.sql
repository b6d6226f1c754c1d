-- The store of version 1 as it was released.
-- Names ignore case. Texts compare and sort without regard to case (UNICODE_CI). Dates are ISO texts, yes/no is -1 or 0.
-- Keys are never reused, so that orphaned rows cannot attach to a new one.
-- An index that serves a list has only the columns of its condition, so that the list keeps the order of entry.

PRAGMA application_id = 0x4757454C;
PRAGMA user_version = 1;

-- Reference data ------------------------------------------------------------------------------------------------

CREATE TABLE customer (
    custid   INTEGER PRIMARY KEY AUTOINCREMENT,
    custname TEXT COLLATE UNICODE_CI,
    Address  TEXT COLLATE UNICODE_CI,           -- one blank if left empty
    telno    TEXT COLLATE UNICODE_CI,           -- Null if left empty, like email
    email    TEXT COLLATE UNICODE_CI
);
CREATE INDEX customer_name ON customer (custname);

CREATE TABLE respondent (
    respondentid          INTEGER PRIMARY KEY AUTOINCREMENT,
    custid                INTEGER REFERENCES customer ON DELETE CASCADE,
    respondentname        TEXT COLLATE UNICODE_CI,
    respondentdesignation TEXT COLLATE UNICODE_CI,
    emailid               TEXT COLLATE UNICODE_CI
);
CREATE INDEX respondent_customer ON respondent (custid);

CREATE TABLE parameter (
    paramid       INTEGER PRIMARY KEY AUTOINCREMENT,
    parametername TEXT COLLATE UNICODE_CI CHECK (length(parametername) <= 255)
);
CREATE INDEX parameter_name ON parameter (parametername);

CREATE TABLE questions (
    questionid INTEGER PRIMARY KEY AUTOINCREMENT,
    question   TEXT COLLATE UNICODE_CI CHECK (length(question) <= 255),
    Type       YESNO DEFAULT 0,                 -- yes: Score, no: Descriptive
    paramid    INTEGER REFERENCES parameter ON DELETE CASCADE
);
CREATE INDEX questions_parameter ON questions (paramid);
CREATE INDEX questions_text ON questions (question);

-- Surveys ---------------------------------------------------------------------------------------------------------
-- Surveys and answers outlive the rows that they refer to; the saved queries hide rows without a customer, respondent,
-- question or parameter.

CREATE TABLE survey (                            -- one row per customer and date, shared by its respondents
    surveyid INTEGER PRIMARY KEY AUTOINCREMENT,
    sdate    DATE,
    custid   INTEGER
);
CREATE INDEX survey_customer ON survey (custid, sdate);

CREATE TABLE responquesindex (                   -- the questionnaire: one row per respondent, survey and question
    respondentid INTEGER,
    questionid   INTEGER,
    surveyid     INTEGER,
    "Order"      INTEGER                         -- position from 1
);
CREATE INDEX responquesindex_survey ON responquesindex (surveyid, respondentid, "Order");
CREATE INDEX responquesindex_respondent ON responquesindex (respondentid, "Order");

CREATE TABLE feedbackobjective (                 -- answers to Score questions; 0: not rated
    feedbackobjid INTEGER PRIMARY KEY AUTOINCREMENT,
    respondentid  INTEGER,
    questionid    INTEGER,
    surveyid      INTEGER,
    surveydate    DATE,
    score         SMALLINT DEFAULT 0,
    weightage     SMALLINT DEFAULT 0
);
CREATE INDEX feedbackobjective_answer                 -- covering index for the Satisfaction Index
    ON feedbackobjective (respondentid, questionid, surveydate, weightage, score);
CREATE INDEX feedbackobjective_date ON feedbackobjective (respondentid, surveydate);
CREATE INDEX feedbackobjective_survey ON feedbackobjective (surveyid, respondentid);

CREATE TABLE feedbackdescriptive (               -- answers to Descriptive questions
    feedbackdescid INTEGER PRIMARY KEY AUTOINCREMENT,
    respondentid   INTEGER,
    questionid     INTEGER,
    surveyid       INTEGER,
    surveydate     DATE,
    Description    TEXT COLLATE UNICODE_CI,
    weightage      SMALLINT DEFAULT 0
);
CREATE INDEX feedbackdescriptive_answer ON feedbackdescriptive (respondentid, questionid, surveydate);
CREATE INDEX feedbackdescriptive_date ON feedbackdescriptive (respondentid, surveydate);
CREATE INDEX feedbackdescriptive_survey ON feedbackdescriptive (surveyid, respondentid);

CREATE TABLE log (                               -- one row per exported survey file
    custname    TEXT COLLATE UNICODE_CI,
    respname    TEXT COLLATE UNICODE_CI,
    respid      INTEGER,
    xlsfilename TEXT COLLATE UNICODE_CI,
    sdate       DATE,
    surveyid    INTEGER,
    Status      YESNO DEFAULT 0                  -- whether the file has been read in
);
CREATE INDEX log_customer ON log (custname);
CREATE INDEX log_respondent ON log (respid, sdate);
CREATE INDEX log_file ON log (xlsfilename);
CREATE INDEX log_survey ON log (surveyid, respid);

-- Improvement and settings --------------------------------------------------------------------------------------

CREATE TABLE actionplan (
    actionid   INTEGER PRIMARY KEY AUTOINCREMENT,
    customerid INTEGER,
    "Date"     DATE,
    "Action"   TEXT COLLATE UNICODE_CI,
    targetdate DATE,
    Status     YESNO DEFAULT 0                   -- yes: Complete
);
CREATE INDEX actionplan_customer ON actionplan (customerid, "Date");

CREATE TABLE standardmessage (
    customerid      INTEGER,
    standardmessage TEXT COLLATE UNICODE_CI
);
CREATE INDEX standardmessage_customer ON standardmessage (customerid);

CREATE TABLE setting (
    setting     TEXT COLLATE UNICODE_CI,
    checkeduser YESNO DEFAULT 0                  -- yes: the user names the survey files
);
INSERT INTO setting (setting, checkeduser) VALUES ('UserDefine', 0);

-- Work tables: each is emptied and filled by one command ----------------------------------------------------------

CREATE TABLE reportlinktable (
    custid         INTEGER,
    custname       TEXT COLLATE UNICODE_CI,
    respondentid   INTEGER,
    respondentname TEXT COLLATE UNICODE_CI,
    sdate          DATE,
    questionid     INTEGER,
    question       TEXT COLLATE UNICODE_CI,
    paramid        INTEGER,
    Parameter      TEXT COLLATE UNICODE_CI,
    Type           YESNO,
    score          SMALLINT,
    weightage      SMALLINT
);
CREATE INDEX reportlinktable_question ON reportlinktable (questionid, respondentid);
CREATE INDEX reportlinktable_respondent ON reportlinktable (custid, respondentid, Parameter);
CREATE INDEX reportlinktable_parameter ON reportlinktable (Parameter);

CREATE TABLE report (
    responname TEXT COLLATE UNICODE_CI,
    question   TEXT COLLATE UNICODE_CI,
    Parameter  TEXT COLLATE UNICODE_CI,
    sc         INTEGER,
    wt         INTEGER,
    Type       YESNO,
    Reply      TEXT COLLATE UNICODE_CI
);

CREATE TABLE reporttable (
    responname TEXT COLLATE UNICODE_CI,
    question   TEXT COLLATE UNICODE_CI,
    Parameter  TEXT COLLATE UNICODE_CI,
    tablename  TEXT COLLATE UNICODE_CI,
    wt         INTEGER,
    Type       TEXT COLLATE UNICODE_CI,
    sdate      DATE
);

CREATE TABLE linetable (
    custname  TEXT COLLATE UNICODE_CI,
    Parameter TEXT COLLATE UNICODE_CI,
    sindex    SINGLE,
    sdate     DATE
);
CREATE INDEX linetable_parameter ON linetable (Parameter, sdate);

CREATE TABLE surveydateorder (
    sdate    DATE,
    roworder SMALLINT
);
CREATE INDEX surveydateorder_date ON surveydateorder (sdate);

CREATE TABLE scattertable (
    custname  TEXT COLLATE UNICODE_CI,
    Parameter TEXT COLLATE UNICODE_CI,
    wt        DECIMAL(9, 2),
    sc        DECIMAL(9, 2)
);

CREATE TABLE search (
    Id        INTEGER,
    "Desc"    TEXT COLLATE UNICODE_CI,
    custname  TEXT COLLATE UNICODE_CI,
    tablename TEXT COLLATE UNICODE_CI,
    sdate     DATE
);
CREATE INDEX search_hit ON search (tablename, Id);

CREATE TABLE copydetails (
    custid   INTEGER,
    sdate    DATE,
    respid   INTEGER,
    surveyid INTEGER
);

CREATE TABLE mscharttry (
    Parameter TEXT COLLATE UNICODE_CI
);

-- Saved queries: read like tables, never written --------------------------------------------------------------------

CREATE VIEW custresp AS
SELECT customer.custid, customer.custname, respondent.respondentid, respondent.respondentname,
       respondent.respondentdesignation, respondent.emailid
FROM customer JOIN respondent ON respondent.custid = customer.custid;

CREATE VIEW param AS
SELECT parameter.paramid, parameter.parametername, questions.question, questions.Type, questions.questionid
FROM parameter JOIN questions ON questions.paramid = parameter.paramid;

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

CREATE VIEW objquery AS
SELECT feedbackobjective.feedbackobjid, customer.custid, customer.custname, respondent.respondentid,
       respondent.respondentname, parameter.parametername, questions.question, questions.questionid,
       feedbackobjective.score, feedbackobjective.weightage, feedbackobjective.surveydate
FROM customer
CROSS JOIN respondent ON respondent.custid = customer.custid
CROSS JOIN feedbackobjective ON feedbackobjective.respondentid = respondent.respondentid
CROSS JOIN questions ON questions.questionid = feedbackobjective.questionid
CROSS JOIN parameter ON parameter.paramid = questions.paramid;

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

CREATE VIEW scatter AS
SELECT customer.custname, parameter.parametername, feedbackobjective.surveydate AS sdate,
       feedbackobjective.weightage, feedbackobjective.score
FROM customer
CROSS JOIN respondent ON respondent.custid = customer.custid
CROSS JOIN feedbackobjective ON feedbackobjective.respondentid = respondent.respondentid
CROSS JOIN questions ON questions.questionid = feedbackobjective.questionid
CROSS JOIN parameter ON parameter.paramid = questions.paramid
WHERE questions.Type <> 0;

CREATE VIEW "action" AS
SELECT actionplan.actionid, actionplan.customerid, customer.custname, actionplan."Date", actionplan."Action",
       actionplan.targetdate, actionplan.Status
FROM actionplan JOIN customer ON customer.custid = actionplan.customerid;
