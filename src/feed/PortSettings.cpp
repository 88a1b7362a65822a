#include "feed/PortSettings.h"

#include "core/NumberText.h"
#include "core/Registry.h"

#include <limits>

namespace {

// The six list positions in the order of their value names "0" to "5".
qint16 PortSettings::*const Positions[] = {
    &PortSettings::comPort,  &PortSettings::baud,     &PortSettings::parity,
    &PortSettings::dataBits, &PortSettings::stopBits, &PortSettings::flowControl,
};

// The two texts, "6" and "7", with the value each is seeded with when missing.
struct TextValue {
    QString PortSettings::*member;
    QString seed;
};
const TextValue Texts[] = {
    {&PortSettings::host, QStringLiteral("localhost")},
    {&PortSettings::tcpPort, QStringLiteral("5555")},
};
constexpr int FirstTextName = 6;

// A stored position is used only when it is a number that fits a 16-bit integer.
void readPosition(const QString& stored, qint16& position) {
    const auto number = NumberText::toDouble(stored);
    if (!number)
        return;
    const auto rounded = NumberText::roundToInt32(*number);
    if (!rounded || *rounded < std::numeric_limits<qint16>::min() ||
        *rounded > std::numeric_limits<qint16>::max())
        return;
    position = qint16(*rounded);
}

QString entryAt(const QStringList& list, qint16 position) {
    return position >= 0 && position < list.size() ? list[position] : QString();
}

} // namespace

void loadPortSettings(PortSettings& settings) {
    for (int i = 0; i < int(std::size(Positions)); ++i) {
        const QString name = QString::number(i);
        const QString stored = Registry::get(SettingKeys::PortSettings, name);
        if (stored == Registry::NoKeyValue)
            Registry::set(SettingKeys::PortSettings, name, QString::number(settings.*Positions[i]));
        else
            readPosition(stored, settings.*Positions[i]);
    }
    for (int i = 0; i < int(std::size(Texts)); ++i) {
        const QString name = QString::number(FirstTextName + i);
        const QString stored = Registry::get(SettingKeys::PortSettings, name);
        if (stored == Registry::NoKeyValue) {
            Registry::set(SettingKeys::PortSettings, name, Texts[i].seed);
            settings.*Texts[i].member = Texts[i].seed;
        } else {
            settings.*Texts[i].member = stored.trimmed();
        }
    }
}

void savePortSettings(const PortSettings& settings, const PortSettings& asLoaded) {
    for (int i = 0; i < int(std::size(Positions)); ++i) {
        if (settings.*Positions[i] != asLoaded.*Positions[i])
            Registry::set(SettingKeys::PortSettings, QString::number(i),
                          QString::number(settings.*Positions[i]));
    }
    for (int i = 0; i < int(std::size(Texts)); ++i) {
        if (settings.*Texts[i].member != asLoaded.*Texts[i].member)
            Registry::set(SettingKeys::PortSettings, QString::number(FirstTextName + i),
                          settings.*Texts[i].member);
    }
}

QString settingsText(const PortSettings& settings) {
    return QStringList{entryAt(BaudRates, settings.baud), entryAt(ParityLetters, settings.parity),
                       entryAt(DataBitsTexts, settings.dataBits),
                       entryAt(StopBitsTexts, settings.stopBits)}
        .join(u',');
}
