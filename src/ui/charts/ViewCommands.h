#pragma once

class MainWindow;
struct AppState;

// The main window's commands that show the live views, one for each view of the view table.
namespace ViewCommands {

void add(MainWindow& main, AppState& state);

} // namespace ViewCommands
