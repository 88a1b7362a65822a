#pragma once

class MainWindow;
class OpenRaceLogs;

// The main window's commands that show the graphs of the race logs' runs: the throttle stop
// graph, the performance factor graph and the Trend Finder. Each shows its one window,
// bringing it to the front when it is open already.
namespace GraphCommands {

void add(MainWindow& main, OpenRaceLogs& raceLogs);

} // namespace GraphCommands
