#pragma once

#include "core/InstanceRole.h"
#include "core/OpenViews.h"
#include "feed/FeedWatchdog.h"
#include "feed/InstrumentConnection.h"
#include "feed/PagerSchedule.h"
#include "feed/TrustKeeper.h"
#include "feed/WeatherFeed.h"
#include "feed/WeatherLog.h"
#include "prediction/PredictionSettings.h"
#include "racelog/OpenRaceLogs.h"

#include <QObject>
#include <QTimer>

// The live weather of the program, behind one object that needs no window: the links to the
// instrument (the serial port and the relay), the framing and parsing of its lines with the
// echo of each serial line to the relay, the poll, the daily weather log and the timing of the
// periodic page. It holds what each line goes to: the open race logs with the settings their
// predictions share, and the open views. Each line goes to the open race logs, the status
// line, the views and the weather log in the feed's fixed order; windows only listen.
//
// While a link is open and no whole record has come for the watchdog's threshold, the feed is
// stale: the status line says "No weather for N s" each second in place of the old reading,
// and every open race log marks its prediction, until the next whole record or until no link
// is open.
class WeatherStation : public QObject {
    Q_OBJECT
public:
    explicit WeatherStation(InstanceRole role = InstanceRole::Main, QObject* parent = nullptr);

    InstanceRole role() const { return instanceRole; }
    bool isDisplay() const { return instanceRole == InstanceRole::Display; }

    OpenRaceLogs& raceLogs() { return logs; }
    const OpenRaceLogs& raceLogs() const { return logs; }
    OpenViews& views() { return openViews; }
    const OpenViews& views() const { return openViews; }
    PredictionSettings& predictionSettings() { return prediction; }
    WeatherLog& weatherLog() { return dailyLog; }
    // The live weather and the status line made of it.
    const WeatherRecord& reading() const { return lines.reading(); }
    const QString& statusLine() const { return lines.statusLine(); }

    InstrumentConnection& link() { return connection; }
    WeatherFeed& feed() { return lines; }
    // Says when the feed goes stale and when it is live again.
    FeedWatchdog& watchdog() { return staleness; }
    const FeedWatchdog& watchdog() const { return staleness; }
    // What keeps each open log's measures of trust current, with the air of the last half hour.
    TrustKeeper& trust() { return trustKeeper; }
    // The poll (tmrMain, every 20 s) and the send tick (tmrSend, every 4 s).
    QTimer& pollTimer() { return poll; }
    QTimer& sendTimer() { return send; }

    // A main instance on a COM port opens it; one set to TCP/IP connects only when the user
    // applies the port settings, and a display instance reads the relay instead.
    void startSerialPort();
    void startTimers();
    void stopTimers();
    // The relay goes first, then the port.
    void closeLinks();

    // How many send ticks go by between two pages (0 to 135); a new frequency counts from the
    // next tick on.
    int pagerFrequency() const { return schedule.frequency(); }
    void setPagerFrequency(int frequency) { schedule.setFrequency(frequency); }
    // The user asked for a page: the next tick is due at once.
    void forcePage() { schedule.forcePage(); }

signals:
    // The text for the status line: each reading, a comm error or a link coming back.
    void statusText(const QString& text);
    // A line arrived (true), or the poll found none since the last one (false).
    void onlineChanged(bool online);
    // The periodic page is due now.
    void pageDue();

private:
    void relay(const QByteArray& line);
    void sendTick();
    void showStatus(const QString& text);
    void linkClosed();
    void feedStale(int seconds);
    void feedFresh();

    const InstanceRole instanceRole;
    OpenRaceLogs logs;
    OpenViews openViews;
    PredictionSettings prediction;
    WeatherLog dailyLog;
    InstrumentConnection connection;
    WeatherFeed lines;
    FeedWatchdog staleness;
    // The last text of the feed and the links; a stale feed holds it back, and it shows again
    // once the alarm is over.
    QString lastStatus;
    QTimer poll;
    QTimer send;
    PagerSchedule schedule;
    TrustKeeper trustKeeper;
};
