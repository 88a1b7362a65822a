#pragma once

#include "core/SettingKeys.h"

#include <QString>
#include <QStringList>

// The settings tree of the program. On Windows it is the registry under HKEY_CURRENT_USER;
// elsewhere one INI file, $XDG_CONFIG_HOME/Zorvane/registry.ini, stands for that hive, with
// the same key paths ("SOFTWARE\Zorvane\Main\Defaults\"). Reads never fail visibly: a missing
// key, a missing value, an empty value and any error all answer NoKeyValue. Writes fail in
// silence. The tree is kept in memory and every write goes through to the file at once. The
// file is watched: what another process wrote is what the first read after the program hears
// of the change gives, so two processes see each other's writes.
namespace Registry {

inline const QString NoKeyValue = QStringLiteral("No Key Value");

enum Hive : quint32 { NoHive = 0, HKEY_CURRENT_USER = 0x80000001u };

enum ValueType { REG_SZ = 1, REG_DWORD = 4, REG_DATE = 8 };

QString keyValue(Hive hive, const QString& keyPath, const QString& valueName);
// Several values of one key in one visit of the store, each read as keyValue reads it.
// The feed reads fifteen values with every line; one visit for all of them keeps a line
// cheap while every line still sees the latest settings.
QStringList keyValues(Hive hive, const QString& keyPath, const QStringList& valueNames);
void setKeyValue(Hive hive, const QString& keyPath, const QString& valueName, const QString& value,
                 ValueType type = REG_SZ);
// "0" on success, NoKeyValue on failure.
QString deleteKeyValue(Hive hive, const QString& keyPath, const QString& valueName);
bool deleteKey(Hive hive, const QString& parentPath, const QString& subKey);
// Fill names with the subkeys or value names of a key; false, names untouched, when the
// key cannot be opened.
bool enumSubKeys(Hive hive, const QString& keyPath, QStringList& names);
bool enumValues(Hive hive, const QString& keyPath, QStringList& names);

// Value names and the names enumSubKeys and enumValues give are names as the user typed them:
// any text, "/" and "\" included, comes back as it went in. A key path is joined from key
// names by "\"; a name the user typed goes into a path as keyName(name).
QString keyName(const QString& name);

// A number that changes whenever the tree may have changed, by a write here or from outside:
// a caller that keeps values it read may keep them while this stays the same. (In the Windows
// registry only this process's writes count.)
quint64 revision();

// The file that holds the tree where there is no registry.
QString storeFilePath();

// The calls nearly every caller makes: the current user's hive.
inline QString get(const QString& keyPath, const QString& valueName) {
    return keyValue(HKEY_CURRENT_USER, keyPath, valueName);
}
inline void set(const QString& keyPath, const QString& valueName, const QString& value) {
    setKeyValue(HKEY_CURRENT_USER, keyPath, valueName, value, REG_SZ);
}
// A setting by its row of the key table.
inline QString get(const SettingKey& key) {
    return get(key.keyPath(), key.valueName());
}
inline void set(const SettingKey& key, const QString& value) {
    set(key.keyPath(), key.valueName(), value);
}
// One value of a key whose values are named by the user: a track, a column, a port value.
inline QString get(const SettingKey& key, const QString& name) {
    return get(key.keyPath(), name);
}
inline void set(const SettingKey& key, const QString& name, const QString& value) {
    set(key.keyPath(), name, value);
}

} // namespace Registry
