#include "crew/CrewAddresses.h"

#include <QNetworkInterface>

namespace CrewAddresses {

namespace {

bool carriesTraffic(const QNetworkInterface& interface) {
    const auto flags = interface.flags();
    return flags.testFlag(QNetworkInterface::IsUp) && flags.testFlag(QNetworkInterface::IsRunning);
}

// The IPv4 addresses of the networks that are up, in the order the system lists them. Phones
// on a trailer's Wi-Fi are given IPv4 addresses, and one fits in a QR code a camera reads fast.
QList<Choice> networkAddresses(bool withLoopback) {
    QList<Choice> found;
    for (const QNetworkInterface& interface : QNetworkInterface::allInterfaces()) {
        if (!carriesTraffic(interface))
            continue;
        const bool loopback = interface.flags().testFlag(QNetworkInterface::IsLoopBack);
        if (loopback && !withLoopback)
            continue;
        for (const QNetworkAddressEntry& entry : interface.addressEntries()) {
            if (entry.ip().protocol() != QAbstractSocket::IPv4Protocol)
                continue;
            const QString address = entry.ip().toString();
            found.append(
                {QStringLiteral("%1 (%2)").arg(address, interface.humanReadableName()), address});
        }
    }
    return found;
}

} // namespace

QList<Choice> choices() {
    return QList<Choice>{{QStringLiteral("All networks"), AllNetworks},
                         {QStringLiteral("This computer only"), ThisComputerOnly}} +
           networkAddresses(false);
}

QString pageHost(const QString& address) {
    if (address != AllNetworks)
        return address;
    const QList<Choice> networks = networkAddresses(false);
    return networks.isEmpty() ? ThisComputerOnly : networks.first().address;
}

} // namespace CrewAddresses
