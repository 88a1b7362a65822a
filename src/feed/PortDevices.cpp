#include "feed/PortDevices.h"

#include "core/Registry.h"

namespace {

QString entryName(int comPort) {
    return QStringLiteral("Com") + QString::number(comPort);
}

} // namespace

#ifdef Q_OS_WIN

QString portDevice(int comPort) {
    return QStringLiteral("COM") + QString::number(comPort);
}

#else

QString portDevice(int comPort) {
    const QString device = Registry::get(SettingKeys::PortDevices, entryName(comPort));
    if (device != Registry::NoKeyValue)
        return device;
    return QStringLiteral("/dev/ttyS") + QString::number(comPort - 1);
}

#endif

void setPortDevice(int comPort, const QString& device) {
    if (device.trimmed().isEmpty())
        Registry::deleteKeyValue(Registry::HKEY_CURRENT_USER, SettingKeys::PortDevices.keyPath(),
                                 entryName(comPort));
    else
        Registry::set(SettingKeys::PortDevices, entryName(comPort), device.trimmed());
}
