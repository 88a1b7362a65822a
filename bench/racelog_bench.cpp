// A race log of 1,000 runs, a long season in one file: its save and its load must not make
// the user wait (aim: under 50 ms each).
#include "racelog/ColumnTable.h"
#include "racelog/Database.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

namespace {

constexpr int Runs = 1000;

// Every cell of every run filled, as after a day of entry and weather imports.
void fillLog(RaceLogData& log) {
    while (log.grid.tableRows() <= Runs) {
        log.grid.addRun();
        log.refRunItems << QString::number(log.refRunItems.size() + 1);
    }
    for (int row = 1; row <= Runs; ++row) {
        log.grid.setCell(row, 1, QStringLiteral("02:35pm"));
        log.grid.setCell(row, 2, QStringLiteral("07/04/26"));
        log.grid.setCell(row, 3, row % 2 ? QStringLiteral("Left") : QStringLiteral("Right"));
        for (int column = 4; column < ColumnTable::Count; ++column)
            log.grid.setCell(row, column, QString::number(row * 0.001 + column, 'f', 3));
    }
    log.date = QStringLiteral("07/04/2026");
    log.carNumber = QStringLiteral("A123");
    log.raceTrack = QStringLiteral("Maple Grove Raceway");
    log.pageIdentifier = QStringLiteral("SUPERPRO");
    log.notes = QStringLiteral("A long season.");
}

QString benchFile(const QTemporaryDir& dir) {
    return dir.path() + QStringLiteral("/season.trl");
}

// Saving over the existing file: all runs replaced and the log's row updated, in one change.
void BM_SaveThousandRuns(benchmark::State& run) {
    QTemporaryDir dir;
    RaceLogData log;
    fillLog(log);
    for (auto _ : run) {
        if (Database::saveRaceLog(benchFile(dir), log) != Database::SaveResult::Ok)
            run.SkipWithError("the save failed");
    }
}
BENCHMARK(BM_SaveThousandRuns)->Unit(benchmark::kMillisecond);

// The first save of a log: the file is made with its tables, then written.
void BM_SaveThousandRunsToANewFile(benchmark::State& run) {
    QTemporaryDir dir;
    RaceLogData log;
    fillLog(log);
    for (auto _ : run) {
        run.PauseTiming();
        QFile::remove(benchFile(dir));
        run.ResumeTiming();
        if (Database::saveRaceLog(benchFile(dir), log) != Database::SaveResult::Ok)
            run.SkipWithError("the save failed");
    }
}
BENCHMARK(BM_SaveThousandRunsToANewFile)->Unit(benchmark::kMillisecond);

// Opening the file into a new log, as the window does.
void BM_LoadThousandRuns(benchmark::State& run) {
    QTemporaryDir dir;
    {
        RaceLogData log;
        fillLog(log);
        if (Database::saveRaceLog(benchFile(dir), log) != Database::SaveResult::Ok)
            run.SkipWithError("the save failed");
    }
    for (auto _ : run) {
        RaceLogData log;
        if (!Database::loadLog(benchFile(dir), log) || log.grid.tableRows() != Runs + 1)
            run.SkipWithError("the load failed");
    }
}
BENCHMARK(BM_LoadThousandRuns)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    // The database driver is a plugin, which needs the application object to be found.
    QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
