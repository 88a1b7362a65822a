// Any bytes as a day of the weather log: the replay and the lookup must read them without
// fault, never leave the log marked busy, and only ever return a row of the asked minute.
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
class CheckingSink : public WeatherReplaySink {
public:
    int points = 0;
    void windSpeed(float t, qint32) override { point(t); }
    void abp(float t, float) override { point(t); }
    void rh(float t, float, float) override { point(t); }
    void cf(float t, float) override { point(t); }
    void adr(float t, float) override { point(t); }
    void gr(float t, qint32) override { point(t); }
    void vp(float t, float, float) override { point(t); }
    void aada(float t, qint32, qint32) override { point(t); }
    void rosePlot(qint32, qint32) override { ++points; }

private:
    void point(float t) {
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

    const QString path = WeatherLogPath(Day);
    {
        QFile file(path);
        require(file.open(QIODevice::WriteOnly));
        file.write(bytes.data(), qint64(bytes.size()));
    }

    ViewFlags views;
    bool* flags[] = {&views.bWindSpeedOpen, &views.bABPOpen,  &views.bRHOpen,
                     &views.bCFOpen,        &views.bADROpen,  &views.bGROpen,
                     &views.bVPOpen,        &views.bAADAOpen, &views.bRosePlotOpen};
    for (int i = 0; i < 9; ++i)
        *flags[i] = (open >> i) & 1;
    CheckingSink sink;
    const int rows = LoadLoggedWeather(path, views, sink);
    require(rows >= 0 && sink.points <= rows * 9);

    AppState state;
    const LoggedWeather found = FindLoggedWeather(state, Day, QTime(minute / 60, minute % 60));
    require(!state.bLoggingWeather);
    if (!found.Time.isEmpty()) {
        const auto second = ReadClockTime(found.Time);
        require(second && *second / 60 == minute);
    }
    return 0;
}
