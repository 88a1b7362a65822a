// The live views under load: one feed line into all eleven open views with the repaint of
// what shows, the same line with no view open, a day's replay into every chart and the rose,
// and the memory all eleven take at full history.
#include "WeatherDay.h"
#include "core/ViewTable.h"
#include "feed/WeatherFeed.h"
#include "feed/WeatherStation.h"
#include "ui/charts/LiveViewWindow.h"
#include "ui/charts/ViewWindows.h"

#include <QCoreApplication>
#include <QFile>
#include <QMdiArea>
#include <benchmark/benchmark.h>

namespace {

const QByteArray Line = " 11/22/2026 10:42:07 29.92 71.5 43.2 2100 5.1 45 0.487 49 98.6 "
                        "1410 120 275 7 11 340\r";

// An MDI area on the screen with the views given open in it, tiled so each is in sight.
// A display instance writes no weather log row: only the views are measured.
struct OpenWindows {
    WeatherStation station{InstanceRole::Display};
    QMdiArea area;

    explicit OpenWindows(const QList<ViewTable::View>& views) {
        area.resize(1600, 1000);
        area.show();
        for (const ViewTable::View view : views)
            ViewWindows::show(area, station.views(), view);
        area.tileSubWindows();
        QCoreApplication::processEvents();
    }
};

// Every view, or none.
QList<ViewTable::View> allViews() {
    QList<ViewTable::View> views;
    for (const ViewTable::Entry& entry : ViewTable::Views)
        views << entry.view;
    return views;
}

// Handles events until the windows have repainted what the line changed.
void repaint() {
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
}

void feedLines(benchmark::State& bench, const QList<ViewTable::View>& views) {
    OpenWindows windows(views);
    WeatherFeed& feed = windows.station.feed();
    for (auto _ : bench) {
        feed.serialBytes(Line);
        repaint();
    }
    const auto* altitude =
        dynamic_cast<QWidget*>(windows.station.views().at(ViewTable::View::AADA));
    if (!views.isEmpty() &&
        (!altitude || !altitude->windowTitle().contains(QStringLiteral("1410"))))
        bench.SkipWithError("the captions did not follow the feed");
}

void BM_FeedLineIntoElevenViews(benchmark::State& bench) {
    feedLines(bench, allViews());
}
BENCHMARK(BM_FeedLineIntoElevenViews)->Unit(benchmark::kMillisecond);

void BM_FeedLineWithNoViewOpen(benchmark::State& bench) {
    feedLines(bench, {});
}
BENCHMARK(BM_FeedLineWithNoViewOpen)->Unit(benchmark::kMicrosecond);

// The replay of a whole day into the eight charts and the rose, drawn once at its end.
void BM_ReplayDayIntoEveryChart(benchmark::State& bench) {
    WeatherDay::write();
    OpenWindows windows(allViews());
    for (auto _ : bench) {
        const int rows =
            loadLoggedWeather(weatherLogPath(WeatherDay::Day), windows.station.views());
        repaint();
        if (rows != WeatherDay::Seconds)
            bench.SkipWithError("the day did not replay whole");
    }
}
BENCHMARK(BM_ReplayDayIntoEveryChart)->Unit(benchmark::kMillisecond)->Iterations(3);

// The peak resident memory of the process, in megabytes.
double peakMegabytes() {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith("VmHWM:"))
            return line.mid(6).trimmed().split(' ').constFirst().toDouble() / 1024;
    return 0;
}

// All eleven views fed 5,000 lines and more, so every chart is at its full history; the
// counter is the process's peak memory.
void BM_ElevenViewsAtFullHistory(benchmark::State& bench) {
    for (auto _ : bench) {
        OpenWindows windows(allViews());
        WeatherFeed& feed = windows.station.feed();
        for (int line = 0; line < 5200; ++line)
            feed.serialBytes(Line);
        repaint();
    }
    bench.counters["peak_MB"] = peakMegabytes();
}
BENCHMARK(BM_ElevenViewsAtFullHistory)->Unit(benchmark::kMillisecond)->Iterations(1);

} // namespace
