#pragma once

#include "core/AppState.h"
#include "feed/SerialFramer.h"
#include "feed/TcpLineSplitter.h"

#include <QByteArray>
#include <QObject>
#include <QString>

// The weather feed: bytes from the instrument's serial port or from the TCP relay become the
// live weather, and each line is handed on in a fixed order to the open race logs, the online
// mark, the status line, the open views and the weather log.
class WeatherFeed : public QObject {
    Q_OBJECT
public:
    explicit WeatherFeed(AppState& state, QObject* parent = nullptr);

    // Reads a line into the live weather and hands the reading on.
    void ProcessWeatherRecord(const QString& line);

    // Forgets the partial serial line and every buffered byte.
    void ResetReceiveState();
    // Forgets the partial relay line: its connection is gone.
    void resetRelayLine();

    // Lines dropped, on either link, for being longer than a record can be.
    quint64 overlongLines() const;

public slots:
    // Bytes from the serial port: framed into lines, each handled and then relayed.
    void serialBytes(const QByteArray& bytes);
    // Bytes from the TCP relay: cut into lines and handled; never relayed again.
    void tcpBytes(const QByteArray& bytes);
    // A comm error of a link: the partial line is lost and the status bar says what happened,
    // in the instrument's words for its comm event or, where it has none, in the link's.
    void commError(int code, const QString& linkText);

signals:
    // A serial line as it came, leading space and CR included, for a display instance.
    void relayLine(const QByteArray& line);
    // A line arrived (good or bad): the feed is alive.
    void onlineMarkEnabled();
    // The text for the status bar.
    void statusText(const QString& text);
    // The line just handled was a whole weather record, not garbage nor a broken line; said
    // last, once everything else has taken the line.
    void recordRead();

private:
    void serialLine(const QString& line);
    void updateRaceLogs();

    AppState& state;
    SerialFramer framer;
    TcpLineSplitter splitter;
};
