// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/application.h"
#include "platform/excel/bytes.h"
#include "platform/excel/refusal.h"
#include "platform/failure/failure.h"
#include "tests/support/files.h"

#include <QTemporaryDir>

/// Example workbooks: made by xlwt (two sheets protected with "kvtwpa"), the same filled in and saved by
/// LibreOffice, made in LibreOffice, saved by Gnumeric.
inline const QStringList sampleNames{u"t_xlwt.xls"_s, u"filled_by_lo.xls"_s, u"lo_native.xls"_s, u"gn.xls"_s};

inline QString firstSheet(const QString& sample) {
    return sample == sampleNames[2] ? u"Nat"_s : u"Form"_s;
}

inline QString samplePath(const QString& name) {
    return QStringLiteral(GAUGEWELL_SOURCE "/tests/data/xls/") + name;
}

/// Writes the name and its length into a container's directory entry.
inline void putName(QByteArray& container, qsizetype entry, QStringView name) {
    container.replace(entry, 64, QByteArray(64, '\0'));
    for (qsizetype i = 0; i < name.size(); ++i)
        excel::biff::put16(container, entry + 2 * i, name[i].unicode());
    excel::biff::put16(container, entry + 64, quint16(2 * name.size() + 2));
}

// Gives each test a folder for copies of the examples.
struct ExcelFiles : ::testing::Test {
    QString path(const QString& name) const { return folder.filePath(name); }
    QString copyOf(const QString& sample) const {
        QFile::copy(samplePath(sample), path(sample));
        return path(sample);
    }
    // The text of the Error or Refusal that `work` throws; empty if none.
    template <typename Work> static QString errorOf(Work&& work) {
        try {
            return failureOf(work);
        } catch (const excel::biff::Refusal& refusal) {
            return refusal.reason();
        }
    }

    QTemporaryDir folder;
    excel::Application application;
};
