// How long a time-slip look-up takes on the log of a long event: 10,000 records (5,000
// pairings) read from the receiver's file through the settings, and the car found near the end.
// Runs in a scratch home, so the settings tree holds only the log's path.
#include "ScratchHome.h"
#include "core/Registry.h"
#include "core/SettingKeys.h"
#include "exchange/TimeSlip.h"

#include <QCoreApplication>
#include <QFile>
#include <benchmark/benchmark.h>

namespace {

constexpr int Records = 10000;
const QDateTime EventStart(QDate(2025, 10, 12), QTime(8, 0));

// A pairing every 20 seconds, the two lanes of it, laid out as the receiver writes them.
QByteArray eventLog() {
    QByteArray text;
    for (int i = 0; i < Records; ++i) {
        const QDateTime run = EventStart.addSecs(20 * (i / 2));
        const bool left = i % 2 == 0;
        text += QStringLiteral("%1,\"%2\",\"Super Pro, Round %3\",E%4,\"%5\",,%6,0,1,"
                               "0.%7,1.1%8,3.21,4.98,140.25,6.40,170.11,7.65%9,181.20,,,\r\n")
                    .arg(i)
                    .arg(run.toString(QStringLiteral("M/d/yyyy h:mm:ss AP")))
                    .arg(i / 200 + 1)
                    .arg(i / 2)
                    .arg(100 + i % 400)
                    .arg(left ? QStringLiteral("L") : QStringLiteral("R"))
                    .arg(500 + i % 90)
                    .arg(i % 10)
                    .arg(i % 7)
                    .toUtf8();
    }
    return text;
}

void BM_LoadTenThousandRecordLog(benchmark::State& run) {
    TimeSlipLog log;
    for (auto _ : run) {
        if (loadTimeSlipLog(log) != TimeSlipLoad::Read)
            run.SkipWithError("the log did not read");
        benchmark::DoNotOptimize(log.rows.size());
    }
}
BENCHMARK(BM_LoadTenThousandRecordLog)->Unit(benchmark::kMillisecond);

// The whole look-up of the command: load, then match a car whose slip is among the last.
void BM_FindTimeSlipInTenThousandRecordLog(benchmark::State& run) {
    TimeSlipLog log;
    const QDateTime when = EventStart.addSecs(20 * (Records / 2 - 3));
    const QString car = QString::number(100 + (Records - 6) % 400);
    for (auto _ : run) {
        const TimeSlipSearch search = findTimeSlip(log, when, car);
        if (search.row < 0)
            run.SkipWithError("no slip found");
        benchmark::DoNotOptimize(search.row);
    }
}
BENCHMARK(BM_FindTimeSlipInTenThousandRecordLog)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    const ScratchHome home;
    QCoreApplication application(argc, argv);
    const QString path = home.filePath(QStringLiteral("icard.csv"));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(eventLog()) < 0)
        return 1;
    file.close();
    Registry::set(SettingKeys::ReceiverLogFile, path);

    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
