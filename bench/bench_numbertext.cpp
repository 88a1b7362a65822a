// How long the number texts take on their own. Every feed line writes fifteen readings in the
// general form twice, and each open race log reads about seven numbers and writes three with a
// digit pattern for its prediction, so these run thousands of times a minute on a busy day.
#include "core/NumberText.h"

#include <QList>
#include <QString>
#include <array>
#include <benchmark/benchmark.h>

namespace {

// The fifteen readings of one instrument line, as the feed hands them over.
constexpr std::array<float, 15> Readings = {29.92f, 71.5f,  43.2f, 1250.0f, 5.1f,
                                            45.0f,  0.33f,  49.0f, 98.6f,   1410.0f,
                                            120.0f, 275.0f, 7.0f,  11.0f,   340.0f};

void BM_GeneralOfFloat(benchmark::State& state) {
    for (auto _ : state) {
        for (float reading : Readings)
            benchmark::DoNotOptimize(NumberText::general(reading));
    }
    state.SetItemsProcessed(state.iterations() * qint64(Readings.size()));
}
BENCHMARK(BM_GeneralOfFloat);

// A prediction's three figures with the patterns the race log writes them in.
void BM_FormatPattern(benchmark::State& state) {
    const QString et = QStringLiteral("##.0000");
    const QString mph = QStringLiteral("###.00");
    const QString delta = QStringLiteral("#0.000");
    double value = 9.504077875;
    for (auto _ : state) {
        benchmark::DoNotOptimize(NumberText::format(value, et));
        benchmark::DoNotOptimize(NumberText::format(value * 15.3, mph));
        benchmark::DoNotOptimize(NumberText::format(value - 9.52, delta));
        value += 1e-7;
    }
    state.SetItemsProcessed(state.iterations() * 3);
}
BENCHMARK(BM_FormatPattern);

// The cells a prediction reads, with the odd blank or stray word among them.
void BM_IsNumeric(benchmark::State& state) {
    const QList<QString> cells = {QStringLiteral("7.9512"), QStringLiteral(" 29.92"),
                                  QStringLiteral("1250"),   QStringLiteral("-0.025"),
                                  QStringLiteral("4.6"),    QStringLiteral(""),
                                  QStringLiteral("DNF"),    QStringLiteral("1.5e-3\r")};
    for (auto _ : state) {
        for (const QString& cell : cells)
            benchmark::DoNotOptimize(NumberText::isNumeric(cell));
    }
    state.SetItemsProcessed(state.iterations() * cells.size());
}
BENCHMARK(BM_IsNumeric);

} // namespace

BENCHMARK_MAIN();
