#pragma once

#include "core/Dialogs.h"
#include "feed/LineSettings.h"
#include "feed/PortLink.h"
#include "feed/PortSettings.h"
#include "feed/TcpLink.h"

#include <QObject>
#include <QTimer>
#include <memory>
#include <optional>

// The program's two channels to the instrument with their settings: the serial port, which
// a main instance reads and polls, and the TCP connection to the relay, which a display
// instance reads and over which a main instance passes on what its port received. Both can
// be active at once. The main window owns one; the port settings dialog works on it.
//
// Neither link gives up on its own: a serial port that goes away (an adapter pulled) is
// opened again each second until it is back, and a relay connection that is lost or refused
// is tried again every two seconds, until the user closes or changes the link. Meanwhile
// the status line says "Reconnecting...", and no box is shown for a retry.
class InstrumentConnection : public QObject {
    Q_OBJECT
public:
    explicit InstrumentConnection(QObject* parent = nullptr);
    ~InstrumentConnection() override;

    PortSettings portSettings; // the settings in memory, loaded at start and saved at exit

    PortLink& serialPort() const { return *serial; }
    TcpLink& ipPort() { return tcp; }
    // Puts another link in the serial port's place, the simulator or a replay for instance.
    // The link it replaces is closed.
    void setSerialPort(std::unique_ptr<PortLink> link);

    // Prepares a closed port and applies the settings to it; an open port is left alone.
    // A port that can't be opened shows nothing here: the program simply runs offline. False,
    // with a warning, only when the port can't be prepared.
    bool startComm();
    // Closes an open port; false, with a warning, when the port refuses.
    bool closeComm();
    // Closes the port, sets it up from portSettings and opens it when a COM port is chosen.
    // False when the settings are not valid or the port can't be opened.
    bool applyPortSettings();
    // What Apply and OK of the port settings dialog do with the settings in memory and the
    // texts of its host and port boxes: reopen the port, then reconnect or drop the relay.
    void applyLink(const QString& hostText, const QString& portText);
    // Connects to the relay named by host and tcpPort, dropping any connection first, and
    // keeps the connection up from then on. False, and no connection, when neither names one
    // or the port is not a number.
    bool connectIPPort();
    // Ends the relay connection for good: no retry follows.
    void closeRelay();
    // The regular tick: the online mark goes grey until the next line, and an open port is
    // asked for a line with "l" and a CR.
    void poll();
    // Whether the serial port or the relay connection is open: a feed can come in.
    bool anyLinkOpen() const;

signals:
    void serialBytesReceived(const QByteArray& bytes);
    // code: the serial comm event number, 0 when none fits
    void serialError(int code, const QString& text);
    void tcpBytesReceived(const QByteArray& bytes);
    void onlineMarkDisabled();
    // The relay connection is up, new or again; a line cut off by the old one is void.
    void relayConnected();
    // What the status line says about a link that is being brought back.
    void linkStatus(const QString& text);
    // The serial port or the relay connection opened, for the first time or again.
    void linkOpened();
    // The serial port or the relay connection closed, or the serial port was replaced; the
    // other one may still be open.
    void linkClosed();
    // A failure the user is to be told of, as the box that tells it. The connection goes on
    // only once every slot has returned, so a box shown from a slot comes before whatever the
    // connection does next.
    void warning(const Dialogs::Message& message);

private:
    std::unique_ptr<PortLink> serial;
    TcpLink tcp;

    // What the port was last set to. Like a port's own properties these stay between
    // applies, so a setting outside its list leaves the earlier one in force.
    int commPort = 1;
    Handshaking handshaking = Handshaking::None;

    // The serial port to keep open, once it was opened, and its retry.
    std::optional<PortOptions> serialWanted;
    QTimer serialRetry;
    // The relay to stay connected to, and its retry. Only the connection the user asked for
    // in the port settings shows its first failure in a box.
    bool relayWanted = false;
    QString relayHost;
    quint16 relayPortNumber = 0;
    QTimer relayRetry;
    bool showRelayFailure = false;

    void forgetSerialPort();
    void serialClosed();
    void reopenSerialPort();
    void relayLost();
    void reconnectRelay();
    void relayError(int code, const QString& text);
};
