// How long the weather feed takes for one instrument line, and the weather log for a day's
// replay and a lookup. Runs in a scratch home, so the settings tree and the log folder are
// fresh and hold what a user's would: the column selection and today's rows.
#include "ScratchHome.h"
#include "WeatherDay.h"
#include "core/LiveView.h"
#include "core/Registry.h"
#include "feed/SerialFramer.h"
#include "feed/StatusLine.h"
#include "feed/WeatherFeed.h"
#include "feed/WeatherLog.h"
#include "feed/WeatherLogFormat.h"
#include "feed/WeatherParser.h"
#include "feed/WeatherQuantities.h"
#include "feed/WeatherStation.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <benchmark/benchmark.h>

namespace {

const QByteArray Line =
    " 11/22/26 10:42:07 29.92 71.5 43.2 1250 5.1 45 0.33 49 98.6 1410 120 275 7 11 340\r";
const QDate Day = WeatherDay::Day;
constexpr int SecondsPerDay = WeatherDay::Seconds;

// Takes every point, as a chart would, and keeps a sum so nothing is optimised away.
class SummingView : public LiveView {
public:
    double sum = 0;
    void showReading(const WeatherRecord& reading, const QString&) override { sum += reading.ABP; }
    void addLoggedPoint(float t, const QList<float>& values) override {
        sum += t;
        for (float value : values)
            sum += value;
    }
};

// Every view that takes part in a replay open on one summing view.
void openEveryChart(OpenViews& views, SummingView& view) {
    for (const ViewTable::View kind : ViewTable::replayOrder())
        views.open(kind, &view);
}

// The whole way of a serial line on a main instance: framing, parsing, the quantities' texts,
// the status line and the weather log row (a file append).
void BM_FeedLine(benchmark::State& run) {
    WeatherStation station;
    WeatherFeed& feed = station.feed();
    for (auto _ : run)
        feed.serialBytes(Line);
    benchmark::DoNotOptimize(station.reading().AL);
}
BENCHMARK(BM_FeedLine)->Unit(benchmark::kMicrosecond);

// The same line on a display instance: no log row.
void BM_FeedLineNoLog(benchmark::State& run) {
    WeatherStation station(InstanceRole::Display);
    WeatherFeed& feed = station.feed();
    for (auto _ : run)
        feed.serialBytes(Line);
}
BENCHMARK(BM_FeedLineNoLog)->Unit(benchmark::kMicrosecond);

// The parts of a line, to see where its time goes.
void BM_FramingAndParsing(benchmark::State& run) {
    WeatherRecord record;
    SerialFramer framer([&](const QString& line) { parseWeatherLine(line, record); });
    for (auto _ : run)
        framer.receive(Line);
    benchmark::DoNotOptimize(record.AL);
}
BENCHMARK(BM_FramingAndParsing)->Unit(benchmark::kMicrosecond);

// The texts of the fifteen quantities, made once a line for the status line and the log row.
void BM_ReadingTexts(benchmark::State& run) {
    WeatherRecord record;
    parseWeatherLine(QString::fromLatin1(Line), record);
    for (auto _ : run)
        benchmark::DoNotOptimize(readingTexts(record));
}
BENCHMARK(BM_ReadingTexts)->Unit(benchmark::kMicrosecond);

void BM_StatusLine(benchmark::State& run) {
    WeatherRecord record;
    parseWeatherLine(QString::fromLatin1(Line), record);
    const ReadingTexts texts = readingTexts(record);
    for (auto _ : run)
        benchmark::DoNotOptimize(buildStatusLine(texts));
}
BENCHMARK(BM_StatusLine)->Unit(benchmark::kMicrosecond);

void BM_OneSettingsRead(benchmark::State& run) {
    for (auto _ : run)
        benchmark::DoNotOptimize(Registry::get(QStringLiteral("SOFTWARE\\Zorvane\\LogColumns\\"),
                                               QStringLiteral("ABP")));
}
BENCHMARK(BM_OneSettingsRead)->Unit(benchmark::kMicrosecond);

void BM_LogRowText(benchmark::State& run) {
    WeatherRecord record;
    parseWeatherLine(QString::fromLatin1(Line), record);
    const ReadingTexts texts = readingTexts(record);
    const QTime time(10, 42, 7);
    for (auto _ : run)
        benchmark::DoNotOptimize(weatherLogRow(time, texts));
}
BENCHMARK(BM_LogRowText)->Unit(benchmark::kMicrosecond);

void BM_LogRow(benchmark::State& run) {
    WeatherLog log;
    WeatherRecord reading;
    parseWeatherLine(QString::fromLatin1(Line), reading);
    const ReadingTexts texts = readingTexts(reading);
    const QDateTime now(Day.addDays(1), QTime(10, 42, 7));
    for (auto _ : run)
        log.writeRow(texts, now);
}
BENCHMARK(BM_LogRow)->Unit(benchmark::kMicrosecond);

void BM_ReplayDay(benchmark::State& run) {
    WeatherDay::write();
    OpenViews views;
    SummingView charts;
    openEveryChart(views, charts);
    for (auto _ : run) {
        const int rows = loadLoggedWeather(weatherLogPath(Day), views);
        if (rows != SecondsPerDay)
            run.SkipWithError("the day did not replay whole");
    }
    benchmark::DoNotOptimize(charts.sum);
}
BENCHMARK(BM_ReplayDay)->Unit(benchmark::kMillisecond);

void BM_ReplayDayNoViewOpen(benchmark::State& run) {
    WeatherDay::write();
    const OpenViews none;
    for (auto _ : run)
        benchmark::DoNotOptimize(loadLoggedWeather(weatherLogPath(Day), none));
}
BENCHMARK(BM_ReplayDayNoViewOpen)->Unit(benchmark::kMillisecond);

void BM_FindLastMinute(benchmark::State& run) {
    WeatherDay::write();
    WeatherLog log;
    for (auto _ : run) {
        const LoggedWeather found = log.find(Day, QTime(23, 59));
        if (found.Time != u"11:59:00pm")
            run.SkipWithError("the last minute was not found");
    }
}
BENCHMARK(BM_FindLastMinute)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    const ScratchHome home;
    QCoreApplication application(argc, argv);
    // A user's column selection: every quantity chosen.
    for (const WeatherQuantity& quantity : WeatherQuantities)
        Registry::set(QStringLiteral("SOFTWARE\\Zorvane\\LogColumns\\"),
                      QLatin1String(quantity.name), QStringLiteral("1"));

    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
