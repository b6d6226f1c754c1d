-- What version 2 of the store adds. Run after schema.sql on a new database, and once on each database of version 1.

PRAGMA user_version = 2;

-- Readings: which survey files were read, and each answer before and after, so that a reading can be undone. The answers
-- are one text per file: a row for each would take half as long again as the reading.

CREATE TABLE reading (                           -- one row per run
    readingid INTEGER PRIMARY KEY AUTOINCREMENT,
    started   TEXT,                              -- local time, yyyy-mm-ddThh:mm:ss
    login     TEXT,                              -- the user's name on the computer
    undone    TEXT                               -- local time; Null for a reading that counts
);

CREATE TABLE readingfile (                       -- one row per file, also for one that could not be read
    readingfileid INTEGER PRIMARY KEY AUTOINCREMENT,
    readingid     INTEGER,
    filename      TEXT COLLATE UNICODE_CI,       -- without folder
    sha256        TEXT,                          -- of the content, hexadecimal; Null if it could not be read
    respondentid  INTEGER,                       -- this and the next two: Null without answers
    surveyid      INTEGER,
    surveydate    DATE,
    registered    TEXT COLLATE UNICODE_CI,       -- the name in the register; Null without a row there
    statusbefore  YESNO,                         -- of that row
    added         INTEGER,                       -- answers that were not stored before
    changed       INTEGER,                       -- answers that were stored with other marks or words
    same          INTEGER,                       -- answers that were stored already
    answers       TEXT                           -- JSON, an array for each answer written: questionid, whether it is a
);                                               -- Score question, the answer before (null: none) and, if it is another
                                                 -- one, after; each an array of surveyid, weightage and score or words.
                                                 -- Null: thinned out
CREATE INDEX readingfile_reading ON readingfile (readingid);
CREATE INDEX readingfile_answers ON readingfile (respondentid, surveydate);
CREATE INDEX readingfile_register ON readingfile (registered);

-- Survey files handed over, and what is expected back ------------------------------------------------------------------

CREATE TABLE dispatch (                          -- one row per survey file handed to a respondent
    dispatchid   INTEGER PRIMARY KEY AUTOINCREMENT,
    custid       INTEGER,
    respondentid INTEGER,
    surveyid     INTEGER,
    filename     TEXT COLLATE UNICODE_CI,
    handedover   DATE,
    due          DATE
);
CREATE INDEX dispatch_survey ON dispatch (surveyid, respondentid);
CREATE INDEX dispatch_customer ON dispatch (custid);

CREATE TABLE reminder (
    dispatchid INTEGER,
    reminded   DATE
);
CREATE INDEX reminder_dispatch ON reminder (dispatchid);

-- Goals, groups and settings --------------------------------------------------------------------------------------------

CREATE TABLE target (                            -- the Satisfaction Index aimed at
    paramid INTEGER,
    custid  INTEGER,                             -- Null: all customers without a target of their own
    target  SINGLE
);
CREATE INDEX target_parameter ON target (paramid, custid);

CREATE TABLE segment (                           -- groups of customers and respondents
    custid       INTEGER,
    respondentid INTEGER,                        -- Null: the customer with all its respondents
    kind         TEXT COLLATE UNICODE_CI,        -- such as region, branch or role
    name         TEXT COLLATE UNICODE_CI
);
CREATE INDEX segment_name ON segment (kind, name);
CREATE INDEX segment_customer ON segment (custid, respondentid);

CREATE TABLE programsetting (                    -- for all users of the store
    name    TEXT COLLATE UNICODE_CI PRIMARY KEY,
    content TEXT
);

CREATE TABLE protocol (                          -- what was erased or cleaned up, without anyone's data
    happened TEXT,                               -- local time, yyyy-mm-ddThh:mm:ss
    what     TEXT
);
