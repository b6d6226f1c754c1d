// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/failure/failure.h"
#include "tests/support/text.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <gtest/gtest.h>

inline QByteArray contentOf(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path;
    return file.readAll();
}

inline void writeFile(const QString& path, const QByteArray& content) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path;
    ASSERT_EQ(file.write(content), content.size());
}

/// The message of the failure that `step` throws; empty for none.
template <class Step> QString failureOf(Step step) {
    try {
        step();
    } catch (const Failure& failure) {
        return failure.text();
    }
    return {};
}

/// The output of a program; the test fails unless it exits with 0.
inline QByteArray outputOf(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    EXPECT_TRUE(process.waitForFinished(300'000)) << program << " is missing or hangs";
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().constData();
    return process.readAllStandardOutput();
}

/// The output of a Python script in tests/.
inline QByteArray runScript(const QString& script, const QStringList& arguments) {
    return outputOf(u"/usr/bin/python3"_s,
                    QStringList{QStringLiteral(GAUGEWELL_SOURCE "/tests/") + script} + arguments);
}

/// Converts files by LibreOffice into the folder, as .xlsx or .ods files, or .xls files of its own making.
inline void convertByOffice(const QString& type, const QStringList& files, const QString& folder) {
    outputOf(u"soffice"_s, QStringList{u"-env:UserInstallation=file://" + folder + u"/profile",
                                       u"--headless"_s, u"--convert-to"_s, type, u"--outdir"_s, folder} +
                               files);
}

/// The cells of a workbook's first sheet as read by python3-xlrd.
inline QJsonObject readByXlrd(const QString& path) {
    return QJsonDocument::fromJson(runScript(u"readworkbook.py"_s, {path})).object();
}
