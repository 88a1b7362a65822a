#include "ui/graphs/GraphCommands.h"

#include "core/AppState.h"
#include "ui/graphs/PerformanceFactorWindow.h"
#include "ui/graphs/ThrottleStopGraphWindow.h"
#include "ui/graphs/TrendFinderWindow.h"
#include "ui/shell/MainWindow.h"
#include "ui/shell/SingleWindows.h"

#include <array>

namespace GraphCommands {

namespace {

// Makes a graph window; the window restores its own place when it loads.
using Maker = QWidget* (*)(AppState& state);

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

void show(MainWindow& main, AppState& state, const Graph& graph) {
    SingleWindows::show(*main.mdiArea(), QLatin1String(graph.objectName),
                        [&] { return graph.make(state); });
}

} // namespace

void add(MainWindow& main, AppState& state) {
    for (const Graph& graph : Graphs) {
        if (graph.make)
            main.setCommand(QLatin1String(graph.command),
                            [&main, &state, &graph] { show(main, state, graph); });
    }
}

} // namespace GraphCommands
