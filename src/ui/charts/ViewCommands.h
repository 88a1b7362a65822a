#pragma once

class MainWindow;
class OpenViews;

// The main window's commands that show the live views, one for each view of the view table.
namespace ViewCommands {

void add(MainWindow& main, OpenViews& views);

} // namespace ViewCommands
