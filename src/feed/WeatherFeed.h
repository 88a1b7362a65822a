#pragma once

#include "core/WeatherRecord.h"
#include "feed/SerialFramer.h"
#include "feed/TcpLineSplitter.h"
#include "feed/WeatherQuantities.h"

#include <QByteArray>
#include <QObject>
#include <QString>

class OpenRaceLogs;
class OpenViews;
class WeatherLog;
struct PredictionSettings;

// The weather feed: bytes from the instrument's serial port or from the TCP relay become the
// live weather, and each line is handed on in a fixed order to the open race logs, the online
// mark, the status line, the open views and the weather log.
class WeatherFeed : public QObject {
    Q_OBJECT
public:
    // Where each reading goes: the open race logs with the settings of their predictions, the
    // open views, and the weather log, which a display instance does not write (nullptr).
    struct Destinations {
        OpenRaceLogs& raceLogs;
        const PredictionSettings& prediction;
        const OpenViews& views;
        WeatherLog* weatherLog;
    };

    explicit WeatherFeed(const Destinations& destinations, QObject* parent = nullptr);

    // Reads a line into the live weather and hands the reading on.
    void processWeatherRecord(const QString& line);

    // The live weather: the last reading, kept between lines (a broken line changes only the
    // values it could read).
    const WeatherRecord& reading() const { return current; }
    // The status line made of the last reading.
    const QString& statusLine() const { return status; }

    // Forgets the partial serial line and every buffered byte.
    void resetReceiveState();
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
    void updateRaceLogs(const ReadingTexts& texts);

    Destinations to;
    WeatherRecord current;
    QString status;
    SerialFramer framer;
    TcpLineSplitter splitter;
};
