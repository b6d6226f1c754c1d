// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/application.h"
#include "platform/excel/bytes.h"
#include "platform/excel/refusal.h"
#include "platform/failure/failure.h"
#include "tests/support/files.h"

#include <QTemporaryDir>

/// Example workbooks: t_xlwt.xls was made by xlwt (two sheets protected with "kvtwpa"), filled_by_lo.xls is
/// the same filled in and saved by LibreOffice, lo_native.xls was made in LibreOffice, gn.xls saved by
/// Gnumeric.
inline const QStringList sampleNames{QStringLiteral("t_xlwt.xls"), QStringLiteral("filled_by_lo.xls"),
                                     QStringLiteral("lo_native.xls"), QStringLiteral("gn.xls")};

inline QString firstSheet(const QString& sample) {
    return sample == sampleNames[2] ? QStringLiteral("Nat") : QStringLiteral("Form");
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

inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << qPrintable(text) << '"';
}

// Gives each test a folder for copies of the examples.
class ExcelFiles : public ::testing::Test {
protected:
    QString path(const QString& name) const { return folder.filePath(name); }
    QString copyOf(const QString& sample) const {
        QFile::copy(samplePath(sample), path(sample));
        return path(sample);
    }
    // The text of the Error or Refusal that `work` throws; empty if none.
    template <typename Work> static QString errorOf(Work&& work) {
        try {
            work();
        } catch (const Failure& error) {
            return error.text();
        } catch (const excel::biff::Refusal& refusal) {
            return refusal.reason();
        }
        return {};
    }

    QTemporaryDir folder;
    excel::Application application;
};
