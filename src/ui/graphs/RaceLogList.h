#pragma once

#include <QObject>

class OpenRaceLogs;
class QComboBox;
class RaceLog;

// The list "Race Logs" of a graph window: the open race logs in slot order, each named by its
// page identifier or, without one, "Race Log# n", with its slot as the entry's data. A log
// opened while the window is open joins the list in its place. The entry of a log that has
// closed stays until it is chosen: then it goes, and the first entry left is chosen.
class RaceLogList : public QObject {
    Q_OBJECT
public:
    RaceLogList(QComboBox& list, OpenRaceLogs& logs);

    // The race log of the chosen entry; nullptr when nothing is chosen or its log has closed,
    // in which case the entry is taken out of the list.
    RaceLog* chosen();

private:
    void fill();
    void add(int slot);

    QComboBox& list;
    OpenRaceLogs& logs;
};
