// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ado/datasources.h"

#include <QHash>
#include <QSet>
#include <QSettings>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace ado {

QString dataSourceRegistry() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           u"/gaugewell/datasources.ini";
}

namespace {

/// Sources that could not be written in this run: an older entry of that name would lead to another file.
QSet<QString> unwritten;

} // namespace

int SQLConfigDataSource(int request, const QString& driver, const QString& attributes) {
    QHash<QString, QString> values;
    for (const QString& attribute : attributes.split(u'\0', Qt::SkipEmptyParts))
        values.insert(attribute.section(u'=', 0, 0).toUpper(), attribute.section(u'=', 1));
    const QString name = values.value(u"DSN"_s);
    if (request != 4 || name.isEmpty() || name.contains(u'/') || !values.contains(u"DBQ"_s))
        return 0;
    QSettings registry(dataSourceRegistry(), QSettings::IniFormat);
    registry.remove(name);
    registry.setValue(name + u"/Driver", driver.section(u'\0', 0, 0));
    registry.setValue(name + u"/DBQ", values.value(u"DBQ"_s));
    registry.sync();
    const bool written = registry.status() == QSettings::NoError;
    if (written)
        unwritten.remove(name);
    else
        unwritten.insert(name);
    return written ? 1 : 0;
}

QString dataSourcePath(const QString& name) {
    if (unwritten.contains(name))
        return {};
    const QSettings registry(dataSourceRegistry(), QSettings::IniFormat);
    return registry.value(name + u"/DBQ").toString();
}

} // namespace ado
