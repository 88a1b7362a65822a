#pragma once

#include "feed/LineSettings.h"
#include "feed/PortLink.h"
#include "feed/PortSettings.h"
#include "feed/TcpLink.h"

#include <QObject>
#include <memory>

// The program's two channels to the instrument with their settings: the serial port, which
// a main instance reads and polls, and the TCP connection to the relay, which a display
// instance reads and over which a main instance passes on what its port received. Both can
// be active at once. The main window owns one; the port settings dialog works on it.
class InstrumentConnection : public QObject {
    Q_OBJECT
public:
    explicit InstrumentConnection(QObject* parent = nullptr);

    PortSettings portSettings; // the settings in memory, loaded at start and saved at exit

    PortLink& serialPort() const { return *serial; }
    TcpLink& IPPort() { return tcp; }
    // Puts another link in the serial port's place, the simulator or a replay for instance.
    // The link it replaces is closed.
    void setSerialPort(std::unique_ptr<PortLink> link);

    // Prepares a closed port and applies the settings to it; an open port is left alone.
    // A port that can't be opened shows nothing here: the program simply runs offline. False,
    // with a warning, only when the port can't be prepared.
    bool StartComm();
    // Closes an open port; false, with a warning, when the port refuses.
    bool CloseComm();
    // Closes the port, sets it up from portSettings and opens it when a COM port is chosen.
    // False when the settings are not valid or the port can't be opened.
    bool ApplyPortSettings();
    // What Apply and OK of the port settings dialog do with the settings in memory and the
    // texts of its host and port boxes: reopen the port, then reconnect or drop the relay.
    void applyLink(const QString& hostText, const QString& portText);
    // Connects to the relay named by sHost and sTcpPort, dropping any connection first. False,
    // and no connection, when neither names one or the port is not a number.
    bool connectIPPort();
    // The regular tick: the online mark goes grey until the next line, and an open port is
    // asked for a line with "l" and a CR.
    void poll();

signals:
    void serialBytesReceived(const QByteArray& bytes);
    // code: the serial comm event number, 0 when none fits
    void serialError(int code, const QString& text);
    void tcpBytesReceived(const QByteArray& bytes);
    void onlineMarkDisabled();

private:
    std::unique_ptr<PortLink> serial;
    TcpLink tcp;

    // What the port was last set to. Like a port's own properties these stay between
    // applies, so a setting outside its list leaves the earlier one in force.
    int commPort = 1;
    Handshaking handshaking = Handshaking::None;

    void showNetworkError(int code, const QString& text);
};
