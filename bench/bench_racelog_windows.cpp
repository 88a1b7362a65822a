// The race log window under load: a run added and a cell edited in a log of 1,000 runs, by the
// grid's editor and by the model's setData, a prediction on such a log, the undo of a paste of 500
// runs, and one feed line reaching twenty open logs of 500 runs each.
#include "feed/WeatherFeed.h"
#include "feed/WeatherStation.h"
#include "racelog/RunEdits.h"
#include "racelog/RunTable.h"
#include "ui/racelog/RaceLogWindow.h"
#include "ui/racelog/RunGrid.h"

#include <QCoreApplication>
#include <QLineEdit>
#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

namespace {

// The run clipboard the logs share.
RunClipboard::Runs clipboard;

// A loaded log with the given number of runs and run 1 as a complete reference run.
std::unique_ptr<RaceLogWindow> logWithRuns(WeatherStation& station, int runs, int slot) {
    auto log = std::make_unique<RaceLogWindow>(station, clipboard);
    log->document().setSlot(slot);
    log->load(QColor(Qt::white));
    log->show(); // the in-place editors only open on a window that shows
    RunGrid& grid = *log->grid;
    while (grid.table().tableRows() - 1 < runs)
        grid.newRun();
    RunTable& table = grid.table();
    for (int row = 1; row < table.tableRows(); ++row) {
        table.setCell(row, 12, QStringLiteral("9.5"));
        table.setCell(row, 19, QStringLiteral("2000"));
        table.setCell(row, 14, QStringLiteral("1.5"));
        table.setCell(row, 21, QStringLiteral("0.512"));
    }
    const auto field = [&log](const char* name, const char* text) {
        log->findChild<QLineEdit*>(QLatin1String(name))->setText(QLatin1String(text));
    };
    field("txtPF", "5");
    field("txtTSR", "0.25");
    field("txtTargetET", "9.50");
    field("txtAA", "2100");
    field("txtVP", "0.487");
    return log;
}

void BM_NewRunIn1000RunLog(benchmark::State& bench) {
    WeatherStation station;
    auto log = logWithRuns(station, 1000, 0);
    RunGrid& grid = *log->grid;
    for (auto _ : bench) {
        grid.newRun();
        bench.PauseTiming();
        log->document().undoStack().undo();
        bench.ResumeTiming();
    }
}
BENCHMARK(BM_NewRunIn1000RunLog)->Unit(benchmark::kMicrosecond);

void BM_CellEditIn1000RunLog(benchmark::State& bench) {
    WeatherStation station;
    auto log = logWithRuns(station, 1000, 0);
    RunGrid& grid = *log->grid;
    grid.setCurrentRunCell(500, 6);
    for (auto _ : bench) {
        grid.beginCellEdit('5');
        grid.commitCellEdit();
        // The closed editor goes when the event loop next runs, as it would in the program,
        // so closed editors do not pile up over the run.
        bench.PauseTiming();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        bench.ResumeTiming();
    }
    if (grid.table().cell(500, 6) != QStringLiteral("5"))
        bench.SkipWithError("the edit did not reach the cell");
}
BENCHMARK(BM_CellEditIn1000RunLog)->Unit(benchmark::kMicrosecond);

// One cell written through the model, as the grid's delegate writes it: a step of the undo
// stack, which the window's grid follows.
void BM_SetDataIn1000RunLog(benchmark::State& bench) {
    WeatherStation station;
    auto log = logWithRuns(station, 1000, 0);
    RunTable& table = log->grid->table();
    const QModelIndex cell = table.index(499, 5);
    const QString text = QStringLiteral("5");
    for (auto _ : bench) {
        table.setData(cell, text);
        bench.PauseTiming();
        log->document().undoStack().undo();
        bench.ResumeTiming();
    }
    log->document().undoStack().redo();
    if (table.cell(500, 6) != text)
        bench.SkipWithError("the edit did not reach the cell");
}
BENCHMARK(BM_SetDataIn1000RunLog)->Unit(benchmark::kMicrosecond);

void BM_UpdatePredictions1000Runs(benchmark::State& bench) {
    WeatherStation station;
    auto log = logWithRuns(station, 1000, 0);
    for (auto _ : bench)
        log->updatePredictions();
}
BENCHMARK(BM_UpdatePredictions1000Runs)->Unit(benchmark::kMicrosecond);

// A log of 500 runs that took 500 more in one paste, shown in its window: the undo of that
// paste, with the grid following.
void BM_UndoPasteOf500Runs(benchmark::State& bench) {
    WeatherStation station;
    auto log = logWithRuns(station, 500, 0);
    RaceLog& document = log->document();
    RunEdits::pasteRuns(document, 501, RunClipboard::copy(document.runs(), 1, 500));
    for (auto _ : bench) {
        document.undoStack().undo();
        bench.PauseTiming();
        document.undoStack().redo();
        bench.ResumeTiming();
    }
    if (document.runs().tableRows() != 1001 || log->grid->model()->rowCount() != 1000)
        bench.SkipWithError("the paste did not come back");
}
BENCHMARK(BM_UndoPasteOf500Runs)->Unit(benchmark::kMillisecond);

// From the bytes of one serial line to every open log's caption updated and the weather log
// row written.
void feedLineToLogs(benchmark::State& bench, int logCount) {
    WeatherStation station;
    std::vector<std::unique_ptr<RaceLogWindow>> logs;
    for (int slot = 0; slot < logCount; ++slot) {
        logs.push_back(logWithRuns(station, 500, slot));
        station.raceLogs().open(&logs.back()->document());
    }
    WeatherFeed& feed = station.feed();
    const QByteArray line = " 11/22/2026 10:42:07 29.92 71.5 43.2 2100 5.1 45 0.487 49 98.6 "
                            "1410 120 275 7 11 340\r";
    for (auto _ : bench)
        feed.serialBytes(line);
    if (!logs.empty() && !logs.back()->windowTitle().contains(QStringLiteral("ET: ")))
        bench.SkipWithError("the captions did not follow the feed");
}

// The same line with no log open, the base the logs add to.
void BM_FeedLineWithNoLog(benchmark::State& bench) {
    feedLineToLogs(bench, 0);
}
BENCHMARK(BM_FeedLineWithNoLog)->Unit(benchmark::kMicrosecond);

void BM_FeedLineWithOneLogOf500Runs(benchmark::State& bench) {
    feedLineToLogs(bench, 1);
}
BENCHMARK(BM_FeedLineWithOneLogOf500Runs)->Unit(benchmark::kMicrosecond);

void BM_FeedLineWith20LogsOf500Runs(benchmark::State& bench) {
    feedLineToLogs(bench, 20);
}
BENCHMARK(BM_FeedLineWith20LogsOf500Runs)->Unit(benchmark::kMicrosecond);

} // namespace
