// The main of the benchmarks that open windows: offscreen, with settings and weather log rows
// in a folder of their own rather than the user's.
#include "ScratchHome.h"
#include <QApplication>
#include <benchmark/benchmark.h>

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const ScratchHome home;
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
