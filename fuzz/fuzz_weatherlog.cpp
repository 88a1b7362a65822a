// Any bytes as a day of the weather log: the replay and the lookup must read them without
// fault, never leave the log marked busy, and only ever return a row of the asked minute.
#include "core/LiveView.h"
#include "core/OpenViews.h"
#include "feed/LoggedWeather.h"
#include "feed/WeatherLog.h"
#include "feed/WeatherLogFormat.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <cstdlib>
#include <fuzzer/FuzzedDataProvider.h>

namespace {

void require(bool condition) {
    if (!condition)
        std::abort();
}

// Counts the points and checks that each time is a time of day.
class CheckingView : public LiveView {
public:
    int points = 0;
    void showReading(const WeatherRecord&, const QString&) override {}
    void addLoggedPoint(float t, const QList<float>&) override {
        require(t >= 0 && t < 1);
        ++points;
    }
};

const QDate Day(2026, 11, 22);

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    static QTemporaryDir home;
    qputenv("XDG_DATA_HOME", (home.path() + QStringLiteral("/data")).toLocal8Bit());
    qputenv("XDG_CONFIG_HOME", (home.path() + QStringLiteral("/config")).toLocal8Bit());
    static QCoreApplication application(*argc, *argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    FuzzedDataProvider input(data, size);
    const int minute = input.ConsumeIntegralInRange<int>(0, 24 * 60 - 1);
    const quint16 open = input.ConsumeIntegral<quint16>();
    const std::string bytes = input.ConsumeRemainingBytesAsString();

    const QString path = weatherLogPath(Day);
    {
        QFile file(path);
        require(file.open(QIODevice::WriteOnly));
        file.write(bytes.data(), qint64(bytes.size()));
    }

    OpenViews views;
    CheckingView view;
    const QList<ViewTable::View> charts = ViewTable::replayOrder();
    for (int i = 0; i < charts.size(); ++i) {
        if ((open >> i) & 1)
            views.open(charts[i], &view);
    }
    const int rows = loadLoggedWeather(path, views);
    require(rows >= 0 && view.points <= rows * int(charts.size()));

    WeatherLog log;
    const LoggedWeather found = log.find(Day, QTime(minute / 60, minute % 60));
    require(!log.isBusy());
    if (!found.Time.isEmpty()) {
        const auto second = readClockTime(found.Time);
        require(second && *second / 60 == minute);
    }
    return 0;
}
