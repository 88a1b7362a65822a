#pragma once

#include <QColor>

class QLabel;

// The colour of a warning in the program's windows: a dark orange-red that reads on the grey of
// the status bar and of the race log window.
inline const QColor WarningColor(0xB0, 0x30, 0x00);

// Shows a label's text in the warning colour, or back in the colour it takes from its window.
void showAsWarning(QLabel& label, bool warning);
