// How long the Prediction Check takes on a long log: every run predicted from every other,
// the summary of the errors and the factor of least error. The dialog does all of it again on
// each change of the log, so it has to stay quick while the crew types in time slips.
#include "prediction/PredictionCheck.h"

#include <QList>
#include <QStringList>
#include <QTime>
#include <benchmark/benchmark.h>
#include <cmath>

namespace {

// A season of runs at PF 5, ten minutes apart, in air from 1,500 to 3,500 ft of AA.
struct SeasonLog {
    explicit SeasonLog(int runs) {
        rows.append(QStringList(34));
        for (int i = 0; i < runs; ++i) {
            QStringList row(34);
            const double aa = 1500 + std::fmod(i * 733.0, 2000.0);
            const double et = 7.9 * std::exp((8.5e-6 - 5 * 8.5e-7) * aa) + 0.003 * std::sin(i);
            row[0] = QString::number(i + 1);
            row[1] = QTime(8, 0).addSecs(600 * (i % 60)).toString(QStringLiteral("hh:mmap"));
            row[12] = QString::number(et, 'f', 4);
            row[19] = QString::number(aa, 'f', 0);
            rows.append(row);
        }
    }
    PredictionCheck::Inputs inputs() const {
        return {[this](int row, int column) { return rows[row][column]; }, int(rows.size()),
                QStringLiteral("4.6")};
    }
    QList<QStringList> rows;
};

void BM_PredictionCheck(benchmark::State& state) {
    const SeasonLog log(int(state.range(0)));
    for (auto _ : state) {
        const auto report = PredictionCheck::check(log.inputs(), PredictionCheck::Mode::EveryOther);
        benchmark::DoNotOptimize(report.meanAbsoluteError);
        benchmark::DoNotOptimize(report.best);
    }
}
BENCHMARK(BM_PredictionCheck)->Arg(40)->Arg(200)->Arg(500)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
