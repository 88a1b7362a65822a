#include "core/OpenRaceLogs.h"

int OpenRaceLogs::open(RaceLogDocument* log) {
    qsizetype slot = logs.indexOf(nullptr);
    if (slot < 0) {
        slot = logs.size();
        logs.append(nullptr);
    }
    logs[slot] = log;
    emit opened(int(slot));
    return int(slot);
}

void OpenRaceLogs::close(RaceLogDocument* log) {
    const qsizetype slot = log ? logs.indexOf(log) : -1;
    if (slot < 0)
        return;
    logs[slot] = nullptr;
    emit closed(int(slot));
}

void OpenRaceLogs::reset() {
    logs = {nullptr};
}
