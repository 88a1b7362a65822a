#pragma once

#include "racelog/OpenRaceLogs.h"

#include <QObject>

class RaceLog;

// Keeps every open race log's measures of trust current. A log is weighed again whenever its
// runs or fields change or a change is taken back, never on a feed line, which changes
// neither.
class TrustKeeper : public QObject {
    Q_OBJECT
public:
    explicit TrustKeeper(OpenRaceLogs& logs, QObject* parent = nullptr);

private:
    void watch(int slot);
    void weigh(RaceLog& log);

    OpenRaceLogs& logs;
};
