#include "pellamor-sim/RelayLink.h"

#include <QTcpSocket>

RelayLink::RelayLink(const QString& host, quint16 port, QObject* parent)
    : InstrumentLink(parent), host(host), port(port), socket(new QTcpSocket(this)) {
    connect(socket, &QTcpSocket::connected, this, &RelayLink::opened);
    connect(socket, &QTcpSocket::readyRead, this,
            [this] { emit bytesReceived(socket->readAll()); });
    connect(socket, &QTcpSocket::disconnected, this, &RelayLink::closed);
    connect(socket, &QTcpSocket::errorOccurred, this,
            [this] { emit errorOccurred(0, socket->errorString()); });
}

// Going away is no news to anyone listening to this link.
RelayLink::~RelayLink() {
    socket->disconnect(this);
}

void RelayLink::open() {
    socket->connectToHost(host, port);
}

bool RelayLink::isOpen() const {
    return socket->state() == QAbstractSocket::ConnectedState;
}

bool RelayLink::write(const QByteArray& bytes) {
    return isOpen() && socket->write(bytes) == bytes.size();
}

void RelayLink::close() {
    socket->disconnectFromHost();
}
