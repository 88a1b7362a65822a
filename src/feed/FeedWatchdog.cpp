#include "feed/FeedWatchdog.h"

#include "core/NumberText.h"
#include "core/Registry.h"

FeedWatchdog::FeedWatchdog(QObject* parent) : QObject(parent) {
    // A precise tick keeps to the millisecond, so each tick reads one more whole second.
    tick.setTimerType(Qt::PreciseTimer);
    tick.setInterval(1000);
    connect(&tick, &QTimer::timeout, this, &FeedWatchdog::check);
}

int FeedWatchdog::thresholdFromText(const QString& text) {
    const std::optional<double> number = NumberText::toDouble(text);
    const std::optional<qint32> whole = number ? NumberText::roundToInt32(*number) : std::nullopt;
    if (!whole || *whole < LeastThreshold)
        return DefaultThreshold;
    return *whole;
}

int FeedWatchdog::loadThreshold() {
    return thresholdFromText(Registry::get(SettingKeys::NoWeatherSeconds));
}

void FeedWatchdog::keepThreshold(int seconds) {
    setThreshold(seconds);
    Registry::set(SettingKeys::NoWeatherSeconds, QString::number(seconds));
}

void FeedWatchdog::start() {
    restartClock();
    clearAlarm();
}

void FeedWatchdog::stop() {
    tick.stop();
    clearAlarm();
}

// A record while no link is open (a replay fed by hand, say) starts nothing.
void FeedWatchdog::recordArrived() {
    if (!isWatching())
        return;
    restartClock();
    clearAlarm();
}

int FeedWatchdog::secondsSinceLast() const {
    return sinceLast.isValid() ? int(sinceLast.elapsed() / 1000) : 0;
}

// The clock goes first, so every tick reads at least its own whole number of seconds.
void FeedWatchdog::restartClock() {
    sinceLast.start();
    tick.start();
}

void FeedWatchdog::clearAlarm() {
    if (!stale)
        return;
    stale = false;
    emit fresh();
}

void FeedWatchdog::check() {
    const int seconds = secondsSinceLast();
    if (seconds < thresholdSeconds) {
        clearAlarm();
        return;
    }
    stale = true;
    emit staleFor(seconds);
}
