#pragma once

#include <QString>
#include <QStringList>
#include <QtGlobal>

// The link settings as the user chose them in the port settings dialog: list positions for
// the serial line, and the relay host and port as text. They live in memory for the whole
// run; the settings tree sees them at start and at exit only.
struct PortSettings {
    qint16 comPort = 0;     // 0 none, 1 to 24 that COM port, 25 TCP/IP
    qint16 baud = 0;        // position in BaudRates
    qint16 parity = 0;      // position in ParityLetters
    qint16 dataBits = 0;    // position in DataBitsTexts
    qint16 stopBits = 0;    // position in StopBitsTexts
    qint16 flowControl = 0; // position in FlowControlNames
    QString host;           // relay host, or "None"
    QString tcpPort;        // relay port as text, or "None"

    bool operator==(const PortSettings&) const = default;
};

// The lists behind the positions. The dialog shows them in this order, and the settings
// text is built from them, so the two can never disagree.
inline const QStringList BaudRates = {"110",  "300",  "600",   "1200",
                                      "2400", "9600", "14400", "19200"};
inline const QStringList ParityLetters = {"N", "O", "E", "M", "S"};
inline const QStringList ParityNames = {"None", "Odd", "Even", "Mark", "Space"};
inline const QStringList DataBitsTexts = {"4", "5", "6", "7", "8"};
inline const QStringList StopBitsTexts = {"1", "2"};
inline const QStringList FlowControlNames = {"None", "Xon / Xoff", "RTS", "RTS / Xon / Xoff"};

inline constexpr qint16 NoComPort = 0;
inline constexpr qint16 LastComPort = 24;
inline constexpr qint16 TcpIpComPort = 25;

// Reads the eight values "0" to "7". A value that is missing is written from memory, except
// the host and port, which are seeded with "localhost" and "5555". There is deliberately no
// other default: a first run has no port at 110 baud, 4 data bits, and the user picks usable
// settings with Restore Defaults.
void loadPortSettings(PortSettings& settings);
// Writes, as text, each of the eight values that differs from what the load left in memory.
// A stored value the load could not read stays in the store untouched unless the user has
// chosen another value since; the user's text is never replaced by a default.
void savePortSettings(const PortSettings& settings, const PortSettings& asLoaded);

// The line settings as the port takes them, "9600,N,8,1": baud, parity letter, data bits and
// stop bits. A position out of its list leaves its part empty ("9600,,8,1").
QString settingsText(const PortSettings& settings);
