#pragma once

#include <QList>
#include <QObject>

class RaceLogDocument;

// The open race logs by slot. A log keeps its slot while it is open, and its slot number
// names it (slot 0 is "Race Log# 1"); a closed log leaves its slot empty for the next one.
// Whoever walks the logs reads the slot afresh for each step, since a log may close while
// another one is busy.
class OpenRaceLogs : public QObject {
    Q_OBJECT
public:
    // Takes the first empty slot from 0 upward, or a new slot at the end when all are taken.
    int open(RaceLogDocument* log);
    // Empties the slot of the log; a log that is not open changes nothing.
    void close(RaceLogDocument* log);
    // Every slot empty, as at start: one slot, empty.
    void reset();

    int slotCount() const { return int(logs.size()); }
    // The log in a slot; nullptr for an empty slot or one that does not exist.
    RaceLogDocument* at(int slot) const { return logs.value(slot); }
    // Every slot in order, empty ones included.
    const QList<RaceLogDocument*>& bySlot() const { return logs; }

signals:
    void opened(int slot);
    void closed(int slot);

private:
    QList<RaceLogDocument*> logs{nullptr};
};
