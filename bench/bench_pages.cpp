// Printed pages: a race log of 1,000 runs laid out as its times table, and the same written
// as PDF bytes, and a viewer opened on a log of 200 runs up to its first painted page.
#include "pages/PageDocument.h"
#include "pages/PdfFile.h"
#include "pages/RaceLogPages.h"
#include "pages/Viewers.h"
#include "racelog/ColumnTable.h"
#include "racelog/RaceLog.h"
#include "ui/output/PagePreview.h"
#include "ui/output/ViewerWindow.h"

#include <QMdiArea>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

namespace {

// A log of full time slips, every run dated and timed.
void fillRuns(RaceLog& log, int runs) {
    RunTable& table = log.runs();
    while (table.tableRows() - 1 < runs)
        table.addRun();
    const QStringList slip{"02:35pm", "11/22/26", "L",      "0.4512", "1.25",   "1.3211", "3.8123",
                           "6.0234",  "110.5",    "7.9012", "140.25", "9.5041", "150.75", "2"};
    for (int row = 1; row < table.tableRows(); ++row) {
        for (int column = 1; column <= slip.size(); ++column)
            table.setCell(row, column, slip[column - 1]);
        table.setCell(row, 17, QStringLiteral("9.5"));
    }
}

void BM_TimesTableOf1000RunsLaidOut(benchmark::State& bench) {
    RaceLog log;
    fillRuns(log, 1000);
    for (auto _ : bench) {
        PageDocument pages = Viewers::newDocument(Viewers::Kind::Pages);
        RaceLogPages::showTimes(pages, log, ColumnTable::everyColumn());
        benchmark::DoNotOptimize(pages.pageCount());
    }
}
BENCHMARK(BM_TimesTableOf1000RunsLaidOut)->Unit(benchmark::kMillisecond);

// The goal: under 300 ms from the log to the PDF.
void BM_TimesTableOf1000RunsAsPdf(benchmark::State& bench) {
    RaceLog log;
    fillRuns(log, 1000);
    QTemporaryDir dir;
    for (auto _ : bench) {
        PageDocument pages = Viewers::newDocument(Viewers::Kind::Pages);
        RaceLogPages::showTimes(pages, log, ColumnTable::everyColumn());
        if (!writePdf(pages, dir.filePath(QStringLiteral("times.pdf"))))
            bench.SkipWithError("the PDF was not written");
    }
}
BENCHMARK(BM_TimesTableOf1000RunsAsPdf)->Unit(benchmark::kMillisecond);

// The goal: under 200 ms from the command to the first painted page.
void BM_ViewerOn200RunLogToFirstPaint(benchmark::State& bench) {
    RaceLog log;
    fillRuns(log, 200);
    QMdiArea area;
    area.resize(1200, 800);
    area.show();
    for (auto _ : bench) {
        PageDocument pages = Viewers::newDocument(Viewers::Kind::Pages);
        RaceLogPages::showTimes(pages, log, ColumnTable::everyColumn());
        ViewerWindow* viewer =
            ViewerWindow::open(area, Viewers::Kind::Pages, std::move(pages), QString());
        benchmark::DoNotOptimize(viewer->findChild<PagePreview*>()->grab());
    }
}
BENCHMARK(BM_ViewerOn200RunLogToFirstPaint)->Unit(benchmark::kMillisecond);

} // namespace
