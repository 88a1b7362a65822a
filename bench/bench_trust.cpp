// How long the measures of trust take. A log is weighed again on every change the crew makes,
// and every open log's outlook is worked out once a minute, so neither may hold up typing in
// a time slip or a line of weather.
#include "feed/TrustKeeper.h"
#include "prediction/LogPrediction.h"
#include "racelog/RaceLog.h"

#include <QDateTime>
#include <benchmark/benchmark.h>
#include <cmath>

namespace {

constexpr int Time = 1;
constexpr int Date = 2;
constexpr int Ft1320 = 12;
constexpr int AA = 19;

// A 200-run log at PF 5 made today, two minutes apart, in air from 1,500 to 3,500 ft of AA,
// with run 1 its reference.
void fillTwoHundredRuns(RaceLog& log) {
    log.change(QStringLiteral("Runs"), [](RaceLogData& data) {
        const QDate today = QDate::currentDate();
        for (int i = 0; i < 200; ++i) {
            if (i > 0)
                data.grid.addRun();
            const double aa = 1500 + std::fmod(i * 733.0, 2000.0);
            const double et = 7.9 * std::exp((8.5e-6 - 5 * 8.5e-7) * aa) + 0.003 * std::sin(i);
            data.grid.setCell(i + 1, Time, QTime(6, 0).addSecs(120 * i).toString("hh:mmap"));
            data.grid.setCell(i + 1, Date, today.toString("MM/dd/yy"));
            data.grid.setCell(i + 1, Ft1320, QString::number(et, 'f', 4));
            data.grid.setCell(i + 1, AA, QString::number(aa, 'f', 0));
        }
        data.pf = QStringLiteral("5");
    });
}

// The check as predicted on the day with its likely miss, and the track's drift.
void BM_WeighTwoHundredRunLog(benchmark::State& state) {
    RaceLog log;
    fillTwoHundredRuns(log);
    const QDate today = QDate::currentDate();
    LogPrediction::weigh(log, today);
    if (!log.trust().likelyMiss() || !log.trust().drift())
        state.SkipWithError("the log has no likely miss or no drift");
    for (auto _ : state) {
        LogPrediction::weigh(log, today);
        benchmark::DoNotOptimize(log.trust().likelyMiss());
    }
}
BENCHMARK(BM_WeighTwoHundredRunLog)->Unit(benchmark::kMillisecond);

// A minute's outlook: the line through half an hour of readings, one a second, and the ETs
// of a 200-run log at its three horizons.
void BM_OutlookOf1800Records(benchmark::State& state) {
    OpenRaceLogs logs;
    TrustKeeper keeper(logs);
    RaceLog log;
    fillTwoHundredRuns(log);
    logs.open(&log);
    const QDateTime now = QDateTime::currentDateTime();
    for (int second = 1800; second > 0; --second) {
        WeatherRecord record;
        record.AA = 2000 + (1800 - second) / 36;
        keeper.takeRecord(record, now.addSecs(-second));
    }
    for (auto _ : state) {
        keeper.updateOutlook(now);
        benchmark::DoNotOptimize(log.trust().outlook());
    }
    if (keeper.recentAir().samples().size() != 1800 ||
        !log.trust().outlook().startsWith(QStringLiteral("In 30 min")))
        state.SkipWithError("the outlook was not made from 1,800 readings");
}
BENCHMARK(BM_OutlookOf1800Records)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
