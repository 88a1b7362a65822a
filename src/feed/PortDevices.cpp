#include "feed/PortDevices.h"

#include "core/Registry.h"

namespace {

QString entryName(int comPort) {
    return QStringLiteral("Com") + QString::number(comPort);
}

} // namespace

#ifdef Q_OS_WIN

QString PortDevice(int comPort) {
    return QStringLiteral("COM") + QString::number(comPort);
}

#else

QString PortDevice(int comPort) {
    const QString device = Registry::Get(SettingKeys::PortDevices, entryName(comPort));
    if (device != Registry::NoKeyValue)
        return device;
    return QStringLiteral("/dev/ttyS") + QString::number(comPort - 1);
}

#endif

void SetPortDevice(int comPort, const QString& device) {
    if (device.trimmed().isEmpty())
        Registry::DeleteKeyValue(Registry::HKEY_CURRENT_USER, SettingKeys::PortDevices.keyPath(),
                                 entryName(comPort));
    else
        Registry::Set(SettingKeys::PortDevices, entryName(comPort), device.trimmed());
}
