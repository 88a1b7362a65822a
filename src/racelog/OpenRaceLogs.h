#pragma once

#include <QList>
#include <QObject>

class RaceLog;

// The open race logs by slot: the documents the feed, the pager, the graphs and the windows
// reach a log through. A log keeps its slot while it is open, and its slot number names it
// (slot 0 is "Race Log# 1"); a closed log leaves its slot empty for the next one.
// Whoever walks the logs reads the slot afresh for each step, since a log may close while
// another one is busy.
class OpenRaceLogs : public QObject {
    Q_OBJECT
public:
    // Takes the first empty slot from 0 upward, or a new slot at the end when all are taken;
    // the log keeps the number of its slot.
    int open(RaceLog* log);
    // Empties the slot of the log; a log that is not open changes nothing.
    void close(RaceLog* log);
    // Every slot empty, as at start: one slot, empty.
    void reset();

    int slotCount() const { return int(logs.size()); }
    // The log in a slot; nullptr for an empty slot or one that does not exist.
    RaceLog* at(int slot) const { return logs.value(slot); }
    // Every slot in order, empty ones included.
    const QList<RaceLog*>& bySlot() const { return logs; }

signals:
    void opened(int slot);
    void closed(int slot);

private:
    QList<RaceLog*> logs{nullptr};
};
