#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QString>
#include <QTimer>

// Tells when the instrument has gone quiet: while a link is open, a feed with no whole
// weather record for the threshold (10 s unless the settings say otherwise) is stale, and
// everything that shows or sends the live weather should say so. The clock is monotonic, so a
// change of the PC's time never raises or hides the alarm.
class FeedWatchdog : public QObject {
    Q_OBJECT
public:
    static constexpr int DefaultThreshold = 10;
    static constexpr int LeastThreshold = 2;

    explicit FeedWatchdog(QObject* parent = nullptr);

    // The stored threshold made usable: text that is no whole number of at least 2 seconds is
    // the default.
    static int thresholdFromText(const QString& text);
    // The NoWeatherSeconds setting, as the main window loads it.
    static int loadThreshold();

    int threshold() const { return thresholdSeconds; }
    // Takes effect at the next tick of the clock, which also ends an alarm the new threshold
    // does not call for.
    void setThreshold(int seconds) { thresholdSeconds = seconds; }
    // The user's choice: used from the next tick on and kept in the settings.
    void keepThreshold(int seconds);

    // A link opened: the clock starts now, and an alarm of an earlier link is over.
    void start();
    // No link is open: there is nothing to wait for, so no alarm either.
    void stop();
    // A whole record arrived: the clock starts again and the alarm is over.
    void recordArrived();

    bool isWatching() const { return tick.isActive(); }
    bool isStale() const { return stale; }
    // Whole seconds since the last record, or since the link opened when none came yet.
    int secondsSinceLast() const;

signals:
    // No record for `seconds` seconds, at least the threshold; said when the feed goes stale
    // and again each second while it stays so.
    void staleFor(int seconds);
    // The feed is no longer stale: a record came, or the links closed or opened again.
    void fresh();

private:
    void restartClock();
    void clearAlarm();
    void check();

    QTimer tick;
    QElapsedTimer sinceLast;
    int thresholdSeconds = DefaultThreshold;
    bool stale = false;
};
