#include "crew/CrewSettings.h"

#include "core/Registry.h"

#include <QRandomGenerator>
#include <QRegularExpression>

namespace CrewSettings {

namespace {

// The stored value, or the key's fallback when nothing is stored.
QString stored(const SettingKey& key) {
    const QString value = Registry::get(key);
    return value == Registry::NoKeyValue ? key.fallback.toString() : value;
}

bool isSixDigits(const QString& text) {
    static const QRegularExpression digits(QStringLiteral("^[0-9]{6}$"));
    return digits.match(text).hasMatch();
}

} // namespace

bool enabled() {
    return stored(SettingKeys::CrewEnabled) == u"1";
}

QString address() {
    return stored(SettingKeys::CrewAddress);
}

quint16 port() {
    bool ok = false;
    const uint number = stored(SettingKeys::CrewPort).toUInt(&ok);
    if (ok && number >= 1 && number <= 65535)
        return quint16(number);
    return quint16(SettingKeys::CrewPort.fallback.toUInt());
}

QString code() {
    const QString kept = Registry::get(SettingKeys::CrewCode);
    return isSixDigits(kept) ? kept : newCode();
}

void setEnabled(bool on) {
    Registry::set(SettingKeys::CrewEnabled, on ? QStringLiteral("1") : QStringLiteral("0"));
}

void setAddress(const QString& address) {
    Registry::set(SettingKeys::CrewAddress, address);
}

void setPort(quint16 port) {
    Registry::set(SettingKeys::CrewPort, QString::number(port));
}

QString newCode() {
    const QString made =
        QStringLiteral("%1").arg(QRandomGenerator::system()->bounded(1000000), 6, 10, QChar(u'0'));
    Registry::set(SettingKeys::CrewCode, made);
    return made;
}

} // namespace CrewSettings
