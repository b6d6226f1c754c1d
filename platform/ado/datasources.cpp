// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ado/datasources.h"

#include <QHash>
#include <QMap>
#include <QSettings>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace ado {

QString dataSourceRegistry() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           u"/gaugewell/datasources.ini";
}

namespace {

/// The sources that this run has written; without a path where writing failed. The registry's entry may be
/// older or written by another program since, and lead to another file.
QHash<QString, QString> ownSources;

QMap<QString, QString> entryOf(QSettings& registry, const QString& name) {
    QMap<QString, QString> entry;
    registry.beginGroup(name);
    for (const QString& key : registry.childKeys())
        entry.insert(key, registry.value(key).toString());
    registry.endGroup();
    return entry;
}

} // namespace

int SQLConfigDataSource(int request, const QString& driver, const QString& attributes) {
    QHash<QString, QString> values;
    for (const QString& attribute : attributes.split(u'\0', Qt::SkipEmptyParts))
        values.insert(attribute.section(u'=', 0, 0).toUpper(), attribute.section(u'=', 1));
    const QString name = values.value(u"DSN"_s);
    if (request != AddSystemSource || name.isEmpty() || name.contains(u'/') || !values.contains(u"DBQ"_s))
        return 0;
    QSettings registry(dataSourceRegistry(), QSettings::IniFormat);
    const QMap<QString, QString> entry{{u"DBQ"_s, values.value(u"DBQ"_s)},
                                       {u"Driver"_s, driver.section(u'\0', 0, 0)}};
    bool written = entryOf(registry, name) == entry; // usually unchanged, which saves waiting for the disk
    if (!written) {
        registry.remove(name);
        for (const auto& [key, value] : entry.asKeyValueRange())
            registry.setValue(name + u'/' + key, value);
        registry.sync();
        written = registry.status() == QSettings::NoError;
    }
    ownSources.insert(name, written ? values.value(u"DBQ"_s) : QString());
    return written ? 1 : 0;
}

QString dataSourcePath(const QString& name) {
    if (ownSources.contains(name))
        return ownSources.value(name);
    const QSettings registry(dataSourceRegistry(), QSettings::IniFormat);
    return registry.value(name + u"/DBQ").toString();
}

} // namespace ado
