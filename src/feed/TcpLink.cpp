#include "feed/TcpLink.h"

TcpLink::TcpLink(QObject* parent) : InstrumentLink(parent) {
    connect(&socket, &QTcpSocket::connected, this, &TcpLink::opened);
    connect(&socket, &QTcpSocket::disconnected, this, &TcpLink::closed);
    connect(&socket, &QTcpSocket::readyRead, this,
            [this] { emit bytesReceived(socket.readAll()); });
    connect(&socket, &QTcpSocket::errorOccurred, this, &TcpLink::reportError);
}

void TcpLink::connectToHost(const QString& host, quint16 port) {
    // A graceful close would still be closing, and the socket takes no new host until it is
    // done, so the old connection is cut at once.
    socket.abort();
    socket.connectToHost(host, port);
}

bool TcpLink::isOpen() const {
    return socket.state() == QAbstractSocket::ConnectedState;
}

bool TcpLink::write(const QByteArray& bytes) {
    if (!isOpen())
        return false;
    return socket.write(bytes) == bytes.size();
}

void TcpLink::close() {
    if (socket.state() == QAbstractSocket::ConnectedState)
        socket.disconnectFromHost();
    else if (socket.state() != QAbstractSocket::UnconnectedState)
        socket.abort();
}

void TcpLink::reportError(QAbstractSocket::SocketError error) {
    // The relay hanging up is the end of the connection, not a fault.
    if (error == QAbstractSocket::RemoteHostClosedError)
        return;
    emit errorOccurred(int(error), socket.errorString());
}
