#include "racelog/RaceLogDefaults.h"

#include "core/NumberText.h"
#include "core/Registry.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace RaceLogDefaults {

const std::array<DefaultValue, 4> DefaultValues{{
    {u"PF", true},
    {u"TSR", true},
    {u"CarNumber", false},
    {u"TargetET", true},
}};

QString TypeKey(const QString& name) {
    return name.isEmpty() ? DefaultsKey : DefaultsKey + Registry::KeyName(name) + u'\\';
}

QStringList RaceLogTypes() {
    QStringList types;
    Registry::EnumSubKeys(Registry::HKEY_CURRENT_USER, DefaultsKey, types);
    return types;
}

QStringList RaceTracks() {
    QStringList tracks;
    Registry::EnumValues(Registry::HKEY_CURRENT_USER, TracksKey, tracks);
    return tracks;
}

std::optional<QString> ShownText(const DefaultValue& value, const QString& stored) {
    if (value.numeric)
        return NumberText::IsNumeric(stored) ? std::optional(stored) : std::nullopt;
    return stored == Registry::NoKeyValue ? QString() : stored;
}

bool IsStored(const DefaultValue& value, const QString& text) {
    return !value.numeric || NumberText::IsNumeric(text);
}

QString SystemTemplatePath() {
    return QCoreApplication::applicationDirPath() + QStringLiteral("/Bramholdtrack.xls");
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
