#pragma once

#include <QList>
#include <QString>

// Where the crew view can listen: every network of the computer, the computer alone, or one
// network's own address. And the address a phone uses to reach it.
namespace CrewAddresses {

inline const QString AllNetworks = QStringLiteral("0.0.0.0");
inline const QString ThisComputerOnly = QStringLiteral("127.0.0.1");

struct Choice {
    QString caption;
    QString address;
};

// "All networks", "This computer only", then the IPv4 address of each network that is up,
// named after its interface.
QList<Choice> choices();

// The host a phone types to reach a server listening on `address`: the address itself, or
// with every network the first one that leaves the computer, so the QR code works from the
// trailer's Wi-Fi. A computer with no network at all can only be reached from itself.
QString pageHost(const QString& address);

} // namespace CrewAddresses
