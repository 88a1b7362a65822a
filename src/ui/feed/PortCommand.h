#pragma once

class MainWindow;

// The main window's Properties command: the port settings of the window's own link.
namespace PortCommand {

void add(MainWindow& main);

} // namespace PortCommand
