#pragma once

#include "feed/InstrumentLink.h"

class QTcpSocket;

// The simulator as a client of the relay: it sends its lines to every program connected to
// the relay and hears the polls and pages they send.
class RelayLink : public InstrumentLink {
public:
    RelayLink(const QString& host, quint16 port, QObject* parent = nullptr);
    ~RelayLink() override;

    // Starts connecting; emits opened() once connected, or errorOccurred().
    void open();

    bool isOpen() const override;
    bool write(const QByteArray& bytes) override;
    void close() override;

private:
    QString host;
    quint16 port;
    QTcpSocket* socket;
};
