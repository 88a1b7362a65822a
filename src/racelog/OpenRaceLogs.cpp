#include "racelog/OpenRaceLogs.h"

#include "racelog/RaceLog.h"

int OpenRaceLogs::open(RaceLog* log) {
    qsizetype slot = logs.indexOf(nullptr);
    if (slot < 0) {
        slot = logs.size();
        logs.append(nullptr);
    }
    logs[slot] = log;
    log->setSlot(int(slot));
    emit opened(int(slot));
    return int(slot);
}

void OpenRaceLogs::close(RaceLog* log) {
    const qsizetype slot = log ? logs.indexOf(log) : -1;
    if (slot < 0)
        return;
    logs[slot] = nullptr;
    emit closed(int(slot));
}

void OpenRaceLogs::reset() {
    logs = {nullptr};
}
