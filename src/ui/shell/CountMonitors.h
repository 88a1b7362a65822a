#pragma once

class QWidget;

// Places a display instance: with two or more monitors the main window goes, centred, onto
// the second monitor found and is maximised there; with one nothing moves. False when the
// monitors can't be examined.
bool countMonitors(QWidget& mainWindow);
