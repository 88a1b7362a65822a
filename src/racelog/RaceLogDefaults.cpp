#include "racelog/RaceLogDefaults.h"

#include "core/NumberText.h"
#include "core/Registry.h"
#include "core/ShippedFiles.h"

#include <QFileInfo>

namespace RaceLogDefaults {

namespace {

bool isNumeric(const SettingKey& value) {
    return value.kind == SettingKey::Kind::Number;
}

} // namespace

QString typeKey(const QString& name) {
    const QString defaults = SettingKeys::RaceLogTypes.keyPath();
    return name.isEmpty() ? defaults : defaults + Registry::keyName(name) + u'\\';
}

QStringList raceLogTypes() {
    QStringList types;
    Registry::enumSubKeys(Registry::HKEY_CURRENT_USER, SettingKeys::RaceLogTypes.keyPath(), types);
    return types;
}

QStringList raceTracks() {
    QStringList tracks;
    Registry::enumValues(Registry::HKEY_CURRENT_USER, SettingKeys::Tracks.keyPath(), tracks);
    return tracks;
}

std::optional<QString> shownText(const SettingKey& value, const QString& stored) {
    if (isNumeric(value))
        return NumberText::isNumeric(stored) ? std::optional(stored) : std::nullopt;
    return stored == Registry::NoKeyValue ? QString() : stored;
}

bool isStored(const SettingKey& value, const QString& text) {
    return !isNumeric(value) || NumberText::isNumeric(text);
}

QString systemTemplatePath() {
    return ShippedFiles::find(SettingKeys::MasterTemplate.fallback.toString());
}

// A folder passes the test as well as a file: the user is trusted to pick a workbook.
std::optional<QString> templateToStore(bool systemDefault, const QString& chosenPath) {
    if (systemDefault)
        return systemTemplatePath();
    if (!chosenPath.isEmpty() && QFileInfo::exists(chosenPath))
        return chosenPath;
    return std::nullopt;
}

int pagerFrequencyChoice(qint32 frequency) {
    return frequency / TicksPerMinute - 1;
}

} // namespace RaceLogDefaults
