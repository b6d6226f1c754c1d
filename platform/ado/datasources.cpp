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

using Entry = QMap<QString, QString>;

/// The sources that this run has written; empty where writing failed. The registry's entry may be older or
/// written by another program since, and lead to another store.
QHash<QString, Entry> ownSources;

Entry entryOf(QSettings& registry, const QString& name) {
    Entry entry;
    registry.beginGroup(name);
    for (const QString& key : registry.childKeys())
        entry.insert(key, registry.value(key).toString());
    registry.endGroup();
    return entry;
}

} // namespace

int SQLConfigDataSource(int request, const QString& driver, const QString& attributes) {
    Entry entry;
    for (const QString& attribute : attributes.split(u'\0', Qt::SkipEmptyParts))
        entry.insert(attribute.section(u'=', 0, 0).toUpper(), attribute.section(u'=', 1));
    const QString name = entry.take(u"DSN"_s);
    const bool leads = entry.contains(u"DBQ"_s) || entry.contains(u"SERVER"_s) || entry.contains(u"SOCKET"_s);
    if (request != AddSystemSource || name.isEmpty() || name.contains(u'/') || !leads)
        return 0;
    entry.insert(u"Driver"_s, driver.section(u'\0', 0, 0));
    QSettings registry(dataSourceRegistry(), QSettings::IniFormat);
    bool written = entryOf(registry, name) == entry; // usually unchanged, which saves waiting for the disk
    if (!written) {
        registry.remove(name);
        for (const auto& [key, value] : entry.asKeyValueRange())
            registry.setValue(name + u'/' + key, value);
        registry.sync();
        written = registry.status() == QSettings::NoError;
    }
    ownSources.insert(name, written ? entry : Entry());
    return written ? 1 : 0;
}

QMap<QString, QString> dataSource(const QString& name) {
    if (ownSources.contains(name))
        return ownSources.value(name);
    QSettings registry(dataSourceRegistry(), QSettings::IniFormat);
    return entryOf(registry, name);
}

} // namespace ado
