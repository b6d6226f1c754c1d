// SPDX-License-Identifier: GPL-3.0-or-later
// serversql SCRIPT.SQL...: prints the scripts of the store in a MariaDB server's SQL, for its client to run.
#include "platform/ado/connection.h"
#include "platform/ado/serverscript.h"
#include "platform/ado/session.h"
#include "platform/ado/store.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

QByteArray contentOf(const QStringList& scripts) {
    QByteArray all;
    for (const QString& name : scripts) {
        QFile script(name);
        if (!script.open(QIODevice::ReadOnly))
            throw Failure(u"%1: %2"_s.arg(name, script.errorString()));
        all += script.readAll() + '\n';
    }
    return all;
}

/// A file made by the same scripts tells which columns are texts.
class Model {
public:
    explicit Model(const QByteArray& script) {
        const QString path = folder.filePath(u"model"_s);
        ado::createStore(path, script, {});
        file.OpenReadOnly(path, {});
    }
    bool isText(const QString& table, const QString& name) const {
        const ado::Columns columns = file.session()->columnsOf(table);
        return std::any_of(columns.begin(), columns.end(), [&](const ado::Column& column) {
            return column.type == ado::ColumnType::Text &&
                   column.name.compare(name, Qt::CaseInsensitive) == 0;
        });
    }

private:
    QTemporaryDir folder;
    ado::Connection file;
};

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    try {
        const QByteArray script = contentOf(QCoreApplication::arguments().sliced(1));
        const Model model(script);
        std::puts(qUtf8Printable(ado::serverSettings() + u';'));
        for (const ado::ScriptStatement& statement : ado::scriptStatements(script)) {
            const QString sql =
                ado::serverStatement(statement.sql, [&](const QString& table, const QString& column) {
                    return model.isText(table, column);
                });
            if (!sql.isEmpty())
                std::puts(qUtf8Printable(sql + u';'));
        }
    } catch (const Failure& failure) {
        std::fputs(failure.what(), stderr);
        return 1;
    }
    return 0;
}
