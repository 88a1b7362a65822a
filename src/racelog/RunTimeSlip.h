#pragma once

#include <QString>
#include <QStringList>
#include <QTime>

class RunTable;

// A time slip of the track's timing receiver as a run takes it: the time of the run, the lane
// as the receiver writes it ("L" or "R"), and the timing figures as they stand on the slip.
struct RunTimeSlip {
    QTime time;
    QString lane;
    // Reaction time, 60 ft, 330 ft, 660 ft, 660 ft speed, 1000 ft, 1000 ft speed, 1320 ft and
    // 1320 ft speed.
    QStringList timing;
};

// Writes the slip into the timing cells of a run: the time as "hh:mmam/pm", the lane ("L" is
// "Left", "R" is "Right", anything else leaves the lane cell alone), the reaction time and the
// times and speeds as the receiver wrote them. The date, the delay box, the timers, the shift
// time and the dial-in are the team's own and stay as they are.
void writeRunTimeSlip(RunTable& table, int row, const RunTimeSlip& slip);
