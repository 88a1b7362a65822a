// How long the spreadsheet export of a long season takes: 500 runs with every column filled,
// written into the standard template and saved. Should stay under 200 ms.
#include "exchange/ExcelExport.h"
#include "racelog/RaceLog.h"
#include "racelog/RunTable.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

namespace {

constexpr int Runs = 500;

void fill(RaceLog& log) {
    log.setField(RaceLog::Field::RaceTrack, QStringLiteral("Gainesville"));
    log.setField(RaceLog::Field::Notes, QStringLiteral("A long season"));
    RunTable& runs = log.runs();
    while (runs.tableRows() <= Runs)
        runs.addRun();
    for (int run = 1; run <= Runs; ++run) {
        runs.setCell(run, 1, QStringLiteral("02:35pm"));
        runs.setCell(run, 2, QStringLiteral("11/22/26"));
        runs.setCell(run, 3, run % 2 ? QStringLiteral("L") : QStringLiteral("R"));
        for (int column = 4; column < RunTable::ColumnCount; ++column)
            runs.setCell(run, column, QString::number(column * 1.25 + run / 100.0));
    }
}

void BM_ExportFiveHundredRuns(benchmark::State& state) {
    QTemporaryDir folder;
    RaceLog log;
    fill(log);
    const QString target = folder.filePath(QStringLiteral("season.xlsx"));
    for (auto _ : state) {
        if (ExcelExport::write(log, target, QStringLiteral(TARNWICK_STANDARD_TEMPLATE)))
            state.SkipWithError("the export failed");
    }
}
BENCHMARK(BM_ExportFiveHundredRuns)->Unit(benchmark::kMillisecond);

// The same runs in the plain table, which writes every column.
void BM_ExportFiveHundredRunsPlain(benchmark::State& state) {
    QTemporaryDir folder;
    const QString plain = folder.filePath(QStringLiteral("team.xlsx"));
    QFile::copy(QStringLiteral(TARNWICK_STANDARD_TEMPLATE), plain);
    RaceLog log;
    fill(log);
    const QString target = folder.filePath(QStringLiteral("season.xlsx"));
    for (auto _ : state) {
        if (ExcelExport::write(log, target, plain))
            state.SkipWithError("the export failed");
    }
}
BENCHMARK(BM_ExportFiveHundredRunsPlain)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
