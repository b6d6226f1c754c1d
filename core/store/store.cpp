// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/store/store.h"

#include "core/store/refusal.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

std::unique_ptr<ado::Connection> cnnMain;
QString strDatabasePath;

namespace {

QString homeOverride;

} // namespace

QString storePassword() {
    return u"kvtwpa"_s;
}

std::optional<QString> toFilterApostrophe(const QString& text) {
    if (!text.contains(u'\''))
        return std::nullopt;
    return QString(text).replace(u'\'', QChar(0x2019));
}

QString toStoredText(const QString& text) {
    return toFilterApostrophe(text).value_or(text);
}

bool hasRecords(const QString& sql) {
    ado::Recordset any(sql, *cnnMain);
    return !any.Eof();
}

int findCustomer(const QString& customerName) {
    ado::Recordset customer(u"select * from customer where custname ='"_s + customerName + u"'", *cnnMain);
    return customer.Eof() ? 0 : customer["custid"].Value().toInt();
}

std::vector<int> requireCustomers(const QStringList& names) {
    std::vector<int> custids;
    QStringList missing;
    for (const QString& name : names) {
        custids.push_back(findCustomer(name));
        if (custids.back() == 0)
            missing << name;
    }
    if (missing.isEmpty())
        return custids;
    if (missing.first().isEmpty())
        throw Refusal(u"No customer is selected. Nothing has been changed."_s);
    throw Refusal(
        (missing.size() == 1 ? u"The customer %1 is"_s : u"The customers %1 are"_s).arg(missing.join(u", ")) +
        u" no longer in the database. Nothing has been changed.");
}

QString toSqlDate(const QDate& date) {
    return date.toString(u"MM/dd/yyyy");
}

QDate toDate(const QString& text) {
    return QDate::fromString(text, ado::dateTextFormat.toString());
}

QString homeDirectory() {
    return homeOverride.isEmpty() ? QCoreApplication::applicationDirPath() : homeOverride;
}

void setHomeDirectory(const QString& path) {
    homeOverride = path;
}
