// The run graphs on a long log: a log of 1,000 runs chosen in the throttle stop graph and in
// the Trend Finder with the graph drawn, and a cursor moved in the throttle stop graph with
// its caption worked out; the same log chosen in the performance factor graph with every run
// drawn.
#include "core/Dialogs.h"
#include "feed/WeatherStation.h"
#include "racelog/RaceLog.h"
#include "racelog/RunTable.h"
#include "ui/graphs/PerformanceFactorWindow.h"
#include "ui/graphs/RunGraph.h"
#include "ui/graphs/ThrottleStopGraphWindow.h"
#include "ui/graphs/TrendFinderWindow.h"
#include "ui/racelog/RaceLogWindow.h"
#include "ui/racelog/RunGrid.h"

#include <QComboBox>
#include <benchmark/benchmark.h>
#include <qcustomplot.h>

#include <memory>

namespace {

// The run clipboard the logs share.
RunClipboard::Runs clipboard;

// An open log of the given number of runs in both lanes, each with a time, an AA, a timer
// and its weather.
std::unique_ptr<RaceLogWindow> logWithRuns(WeatherStation& station, int runs) {
    auto log = std::make_unique<RaceLogWindow>(station, clipboard);
    station.raceLogs().open(&log->document());
    log->load(QColor(Qt::white));
    RunGrid& grid = *log->grid;
    while (grid.table().tableRows() - 1 < runs)
        grid.newRun();
    RunTable& table = grid.table();
    for (int row = 1; row < table.tableRows(); ++row) {
        table.setCell(row, 3, row % 2 ? QStringLiteral("Left") : QStringLiteral("Right"));
        table.setCell(row, 12, QString::number(9.4 + (row % 50) * 0.004, 'f', 3));
        table.setCell(row, 14, QString::number(1.2 + (row % 40) * 0.01, 'f', 3));
        table.setCell(row, 19, QString::number(1200 + (row % 80) * 25));
        table.setCell(row, 23, QString::number(70 + row % 20));
    }
    RaceLog& document = log->document();
    document.setField(RaceLog::Field::PF, QStringLiteral("5"));
    document.setField(RaceLog::Field::TargetET, QStringLiteral("9.50"));
    return log;
}

// Choosing the log again in the list, as the user does, with the chart drawn each time.
void BM_ThrottleStopGraphChooses1000RunLog(benchmark::State& bench) {
    WeatherStation station;
    auto log = logWithRuns(station, 1000);
    ThrottleStopGraphWindow window(station.raceLogs());
    window.resize(window.sizeHint());
    window.show();
    for (auto _ : bench) {
        window.raceLogList->setCurrentIndex(-1);
        window.raceLogList->setCurrentIndex(0);
        window.graph->replot();
    }
}
BENCHMARK(BM_ThrottleStopGraphChooses1000RunLog)->Unit(benchmark::kMillisecond);

// One step of a cursor drag: the cursor's reading, the line and the caption, and the cursors
// drawn again over the runs.
void BM_ThrottleStopGraphCursorMove(benchmark::State& bench) {
    WeatherStation station;
    auto log = logWithRuns(station, 1000);
    ThrottleStopGraphWindow window(station.raceLogs());
    window.resize(window.sizeHint());
    window.show();
    window.raceLogList->setCurrentIndex(0);
    window.mouseModeList->setCurrentIndex(1);
    double step = 0;
    for (auto _ : bench) {
        step = step > 0.1 ? 0 : step + 0.001;
        window.graph->setCursorPosition(0, QPointF(9.4 + step, 1.3 + step));
    }
}
BENCHMARK(BM_ThrottleStopGraphCursorMove)->Unit(benchmark::kMicrosecond);

// The Trend Finder answers its clearing question with Yes: each round starts on a clean chart.
class AnswerYes : public Dialogs::Presenter {
public:
    Dialogs::Answer message(const Dialogs::Message&) override { return Dialogs::Answer::Yes; }
    std::optional<Dialogs::FileChoice> chooseFile(const Dialogs::FileRequest&) override {
        return std::nullopt;
    }
    std::optional<QColor> chooseColor(const QColor&) override { return std::nullopt; }
    bool choosePrinter(QPagedPaintDevice&) override { return false; }
    bool usePrinter(QPagedPaintDevice&) override { return false; }
};

// The log chosen, the clearing question answered and the 1320 ft column drawn.
void BM_TrendFinderDraws1000RunLog(benchmark::State& bench) {
    WeatherStation station;
    auto log = logWithRuns(station, 1000);
    AnswerYes answers;
    Dialogs::install(&answers);
    TrendFinderWindow window(station.raceLogs());
    window.resize(window.sizeHint());
    window.show();
    for (auto _ : bench) {
        window.raceLogList->setCurrentIndex(-1);
        window.raceLogList->setCurrentIndex(0);
        emit window.quantityList->activated(4);
        window.graph->replot();
    }
    Dialogs::install(nullptr);
}
BENCHMARK(BM_TrendFinderDraws1000RunLog)->Unit(benchmark::kMillisecond);

// The performance factor graph: the long log chosen and "All" drawn. A short log is chosen
// between the rounds, so that each round chooses the long one afresh.
void BM_PerformanceFactorGraph1000Runs(benchmark::State& bench) {
    WeatherStation station;
    auto small = logWithRuns(station, 1);
    auto log = logWithRuns(station, 1000);
    PerformanceFactorWindow window(station.raceLogs());
    window.resize(760, 520);
    window.show();
    for (auto _ : bench) {
        bench.PauseTiming();
        window.raceLogList->setCurrentIndex(0);
        bench.ResumeTiming();
        window.raceLogList->setCurrentIndex(1);
        window.runList->setCurrentIndex(0);
        // Drawn and painted into the graph's buffer by the pick itself.
        emit window.runList->activated(0);
    }
    if (window.graph->plottableCount() != 1000)
        bench.SkipWithError("not every run was drawn");
}
BENCHMARK(BM_PerformanceFactorGraph1000Runs)->Unit(benchmark::kMillisecond);

} // namespace
