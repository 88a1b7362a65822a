#pragma once

#include <QString>
#include <QStringList>

// The desktop's calculator, started beside the program for the quick sums at the track.
namespace Calculator {

// The calculator programs to look for, in order of preference.
QStringList candidates();
// The first candidate found on the search path; empty when there is none.
QString findProgram();
// Starts the calculator without waiting for it. Nothing happens when none can be started.
void launch();

} // namespace Calculator
