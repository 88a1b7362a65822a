#include "core/Registry.h"

#include <QDateTime>
#include <QDir>
#include <QSettings>
#include <QStandardPaths>
#include <algorithm>
#include <memory>

namespace Registry {

namespace {

// "SOFTWARE\Zorvane\Main\Defaults\" becomes the group "SOFTWARE/Zorvane/Main/Defaults".
QString groupOf(const QString& keyPath) {
    QString group = keyPath;
    group.replace(u'\\', u'/');
    while (group.endsWith(u'/'))
        group.chop(1);
    while (group.startsWith(u'/'))
        group.remove(0, 1);
    return group;
}

std::unique_ptr<QSettings> openHive(Hive hive) {
    if (hive != HKEY_CURRENT_USER)
        return nullptr;
#ifdef Q_OS_WIN
    return std::make_unique<QSettings>(QStringLiteral("HKEY_CURRENT_USER"),
                                       QSettings::NativeFormat);
#else
    return std::make_unique<QSettings>(StoreFilePath(), QSettings::IniFormat);
#endif
}

// A name as the store keeps it: the store takes "/" and "\" for the edges of keys, so those
// two, and "%" so that the escape reads back the same, stand as %2F, %5C and %25.
const struct {
    QChar character;
    QLatin1StringView escape;
} Escapes[] = {{u'%', QLatin1StringView("%25")},
               {u'/', QLatin1StringView("%2F")},
               {u'\\', QLatin1StringView("%5C")}};

QString storedName(const QString& name) {
    QString stored;
    stored.reserve(name.size());
    for (QChar c : name) {
        const auto escape = std::find_if(std::begin(Escapes), std::end(Escapes),
                                         [c](const auto& e) { return e.character == c; });
        if (escape != std::end(Escapes))
            stored += escape->escape;
        else
            stored += c;
    }
    return stored;
}

QString nameOf(const QString& stored) {
    QString name;
    name.reserve(stored.size());
    for (qsizetype i = 0; i < stored.size(); ++i) {
        const QStringView rest = QStringView(stored).mid(i, 3);
        const auto escape =
            std::find_if(std::begin(Escapes), std::end(Escapes), [rest](const auto& e) {
                return rest.compare(e.escape, Qt::CaseInsensitive) == 0;
            });
        if (escape != std::end(Escapes)) {
            name += escape->character;
            i += 2;
        } else {
            name += stored[i];
        }
    }
    return name;
}

QStringList namesOf(const QStringList& stored) {
    QStringList names;
    for (const QString& name : stored)
        names << nameOf(name);
    return names;
}

bool keyExists(QSettings& settings, const QString& group) {
    settings.beginGroup(group);
    const bool exists = !settings.childKeys().isEmpty() || !settings.childGroups().isEmpty();
    settings.endGroup();
    return exists;
}

} // namespace

QString KeyName(const QString& name) {
    return storedName(name);
}

QString StoreFilePath() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/Zorvane/registry.ini");
}

QString GetKeyValue(Hive hive, const QString& keyPath, const QString& valueName) {
    return GetKeyValues(hive, keyPath, {valueName}).constFirst();
}

QStringList GetKeyValues(Hive hive, const QString& keyPath, const QStringList& valueNames) {
    QStringList texts;
    texts.reserve(valueNames.size());
    auto settings = openHive(hive);
    const bool readable = settings && settings->status() == QSettings::NoError;
    const QString group = groupOf(keyPath) + u'/';
    for (const QString& name : valueNames) {
        const QVariant value = readable ? settings->value(group + storedName(name)) : QVariant();
        const QString text = value.typeId() == QMetaType::QDateTime
                                 ? value.toDateTime().toString(Qt::ISODate)
                                 : value.toString();
        texts.append(text.isEmpty() ? NoKeyValue : text);
    }
    return texts;
}

void SetKeyValue(Hive hive, const QString& keyPath, const QString& valueName, const QString& value,
                 ValueType type) {
    auto settings = openHive(hive);
    if (!settings)
        return;
    const QString key = groupOf(keyPath) + u'/' + storedName(valueName);
    QVariant stored;
    switch (type) {
    case REG_DWORD:
        stored = value.toInt();
        break;
    case REG_DATE:
        stored = QDateTime::fromString(value, Qt::ISODate).toString(Qt::ISODate);
        break;
    default:
        stored = value;
        break;
    }
    // Writing the value it already holds would rewrite the whole file for nothing; the
    // feed writes the weather log path with every row.
    if (settings->contains(key) && settings->value(key).toString() == stored.toString())
        return;
    settings->setValue(key, stored);
}

QString DeleteKeyValue(Hive hive, const QString& keyPath, const QString& valueName) {
    auto settings = openHive(hive);
    if (!settings)
        return NoKeyValue;
    const QString key = groupOf(keyPath) + u'/' + storedName(valueName);
    if (!settings->contains(key))
        return NoKeyValue;
    settings->remove(key);
    return QStringLiteral("0");
}

bool DeleteKey(Hive hive, const QString& parentPath, const QString& subKey) {
    auto settings = openHive(hive);
    if (!settings || subKey.isEmpty())
        return false;
    const QString group = groupOf(parentPath) + u'/' + storedName(subKey);
    if (!keyExists(*settings, group))
        return false;
    settings->remove(group);
    return true;
}

bool EnumSubKeys(Hive hive, const QString& keyPath, QStringList& names) {
    auto settings = openHive(hive);
    const QString group = groupOf(keyPath);
    if (!settings || !keyExists(*settings, group))
        return false;
    settings->beginGroup(group);
    names = namesOf(settings->childGroups());
    settings->endGroup();
    return true;
}

bool EnumValues(Hive hive, const QString& keyPath, QStringList& names) {
    auto settings = openHive(hive);
    const QString group = groupOf(keyPath);
    if (!settings || !keyExists(*settings, group))
        return false;
    settings->beginGroup(group);
    names = namesOf(settings->childKeys());
    settings->endGroup();
    return true;
}

} // namespace Registry
