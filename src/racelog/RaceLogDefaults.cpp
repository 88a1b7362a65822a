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

QString TypeKey(const QString& name) {
    const QString defaults = SettingKeys::RaceLogTypes.keyPath();
    return name.isEmpty() ? defaults : defaults + Registry::KeyName(name) + u'\\';
}

QStringList RaceLogTypes() {
    QStringList types;
    Registry::EnumSubKeys(Registry::HKEY_CURRENT_USER, SettingKeys::RaceLogTypes.keyPath(), types);
    return types;
}

QStringList RaceTracks() {
    QStringList tracks;
    Registry::EnumValues(Registry::HKEY_CURRENT_USER, SettingKeys::Tracks.keyPath(), tracks);
    return tracks;
}

std::optional<QString> ShownText(const SettingKey& value, const QString& stored) {
    if (isNumeric(value))
        return NumberText::IsNumeric(stored) ? std::optional(stored) : std::nullopt;
    return stored == Registry::NoKeyValue ? QString() : stored;
}

bool IsStored(const SettingKey& value, const QString& text) {
    return !isNumeric(value) || NumberText::IsNumeric(text);
}

QString SystemTemplatePath() {
    return ShippedFiles::Find(SettingKeys::MasterTemplate.fallback.toString());
}

// A folder passes the test as well as a file: the user is trusted to pick a workbook.
std::optional<QString> TemplateToStore(bool systemDefault, const QString& chosenPath) {
    if (systemDefault)
        return SystemTemplatePath();
    if (!chosenPath.isEmpty() && QFileInfo::exists(chosenPath))
        return chosenPath;
    return std::nullopt;
}

int PagerFrequencyChoice(qint32 frequency) {
    return frequency / TicksPerMinute - 1;
}

} // namespace RaceLogDefaults
