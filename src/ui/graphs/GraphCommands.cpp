#include "ui/graphs/GraphCommands.h"

#include "racelog/OpenRaceLogs.h"
#include "ui/graphs/PerformanceFactorWindow.h"
#include "ui/graphs/ThrottleStopGraphWindow.h"
#include "ui/graphs/TrendFinderWindow.h"
#include "ui/shell/MainWindow.h"
#include "ui/shell/SingleWindows.h"

#include <array>

namespace GraphCommands {

namespace {

// Makes a graph window; the window restores its own place when it loads.
using Maker = QWidget* (*)(OpenRaceLogs& raceLogs);

struct Graph {
    const char* command;
    const char* objectName;
    Maker make; // nullptr until the window is built
};

const std::array<Graph, 3> Graphs{{
    {"miGraphTS", "frmGraphTS", &ThrottleStopGraphWindow::make},
    {"miGraphET", "frmGraphET", &PerformanceFactorWindow::make},
    {"miGraph", "frmGraph", &TrendFinderWindow::make},
}};

void show(MainWindow& main, OpenRaceLogs& raceLogs, const Graph& graph) {
    SingleWindows::show(*main.mdiArea(), QLatin1String(graph.objectName),
                        [&] { return graph.make(raceLogs); });
}

} // namespace

void add(MainWindow& main, OpenRaceLogs& raceLogs) {
    for (const Graph& graph : Graphs) {
        if (graph.make)
            main.setCommand(QLatin1String(graph.command),
                            [&main, &raceLogs, &graph] { show(main, raceLogs, graph); });
    }
}

} // namespace GraphCommands
