// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ado/datasources.h"

#include <QHash>
#include <QSettings>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace ado {

QString dataSourceRegistry() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           u"/gaugewell/datasources.ini";
}

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
    return registry.status() == QSettings::NoError ? 1 : 0;
}

QString dataSourcePath(const QString& name) {
    const QSettings registry(dataSourceRegistry(), QSettings::IniFormat);
    return registry.value(name + u"/DBQ").toString();
}

} // namespace ado
