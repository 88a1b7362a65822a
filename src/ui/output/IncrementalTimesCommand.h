#pragma once

#include "pages/IncrementalTimes.h"

class MainWindow;
class QMdiArea;
class ViewerWindow;

// The main window's command for the incremental times report: it asks for the category and
// the tag cars, then shows the report in the report viewer, replacing the report shown last.
namespace IncrementalTimesCommand {

void add(MainWindow& main);

// Reads the log afresh, since the report uses it up, and shows the report of it; nullptr
// when the log can't be read.
ViewerWindow* showReport(QMdiArea& area, const IncrementalTimes::Request& request);

} // namespace IncrementalTimesCommand
