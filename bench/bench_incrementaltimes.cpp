// How long the incremental times report takes on the time-slip log of a long event: 2,000
// records of one category and session, filtered, ranked in each measure and laid out over
// many pages; and the same report written as PDF.
#include "exchange/TimeSlip.h"
#include "pages/IncrementalTimes.h"
#include "pages/PageDocument.h"
#include "pages/PdfFile.h"
#include "pages/Viewers.h"

#include <QGuiApplication>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

namespace {

constexpr int Records = 2000;

// Every car of the field in "Super Pro Q1" but a few in another round, with marks that
// spread so each column ranks the cars in another order.
TimeSlipLog eventLog() {
    TimeSlipLog log;
    for (int i = 0; i < Records; ++i) {
        QStringList fields(TimeSlipFieldCount);
        fields[SlipCategory] =
            i % 50 == 0 ? QStringLiteral("Super Pro E1") : QStringLiteral("Super Pro Q1");
        fields[SlipCarNumber] = QString::number(100 + i);
        fields[SlipLane] = i % 2 ? QStringLiteral("R") : QStringLiteral("L");
        const auto mark = [i](double at, int spread) {
            return QString::number(at + (i * 37 % spread) / 1000.0, 'f', 3);
        };
        fields[Slip60ft] = mark(1.0, 300);
        fields[Slip330ft] = mark(3.0, 500);
        fields[Slip660ft] = mark(4.9, 700);
        fields[Slip660Mph] = mark(140.0, 9000);
        fields[Slip1000ft] = mark(6.3, 900);
        fields[Slip1000Mph] = mark(170.0, 9000);
        fields[Slip1320ft] = mark(7.6, 1100);
        fields[Slip1320Mph] = mark(180.0, 9000);
        log.rows.append(fields);
    }
    return log;
}

const IncrementalTimes::Request Request{QStringLiteral("super pro q1"), QStringLiteral("150"),
                                        QStringLiteral("1234"), false};

void BM_IncrementalTimesOf2000Records(benchmark::State& run) {
    const TimeSlipLog field = eventLog();
    for (auto _ : run) {
        TimeSlipLog log = field;
        PageDocument document = Viewers::newDocument(Viewers::Kind::Report);
        IncrementalTimes::write(document, log, Request);
        benchmark::DoNotOptimize(document.pageCount());
    }
}
BENCHMARK(BM_IncrementalTimesOf2000Records)->Unit(benchmark::kMillisecond);

void BM_IncrementalTimesOf2000RecordsAsPdf(benchmark::State& run) {
    const TimeSlipLog field = eventLog();
    QTemporaryDir folder;
    for (auto _ : run) {
        TimeSlipLog log = field;
        PageDocument document = Viewers::newDocument(Viewers::Kind::Report);
        IncrementalTimes::write(document, log, Request);
        if (!writePdf(document, folder.filePath(QStringLiteral("report.pdf"))))
            run.SkipWithError("the PDF was not written");
    }
}
BENCHMARK(BM_IncrementalTimesOf2000RecordsAsPdf)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
