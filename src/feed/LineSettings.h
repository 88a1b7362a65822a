#pragma once

#include <QChar>
#include <QString>
#include <optional>

// How a serial line is set up, read from the port's settings text "9600,N,8,1": baud rate,
// parity letter (N, O, E, M or S), data bits (4 to 8) and stop bits (1 or 2).
struct LineSettings {
    qint32 baud = 9600;
    QChar parity = u'N';
    int dataBits = 8;
    int stopBits = 1;

    bool operator==(const LineSettings&) const = default;
};

// nullopt when the text is not four such parts; a part left empty makes it invalid.
std::optional<LineSettings> parseLineSettings(const QString& text);

// The port's handshaking, in the order of the dialog's flow control list.
enum class Handshaking { None = 0, XonXoff = 1, Rts = 2, RtsXonXoff = 3 };
