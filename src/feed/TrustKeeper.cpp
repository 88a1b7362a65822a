#include "feed/TrustKeeper.h"

#include "prediction/LogPrediction.h"
#include "racelog/RaceLog.h"

TrustKeeper::TrustKeeper(OpenRaceLogs& logs, QObject* parent) : QObject(parent), logs(logs) {
    connect(&logs, &OpenRaceLogs::opened, this, &TrustKeeper::watch);
}

// Every step of the log's undo stack moves its index, and a load starts the log afresh; a log
// is weighed at once when it opens.
void TrustKeeper::watch(int slot) {
    RaceLog* log = logs.at(slot);
    weigh(*log);
    connect(&log->undoStack(), &QUndoStack::indexChanged, this, [this, log] { weigh(*log); });
    connect(log, &RaceLog::loaded, this, [this, log] { weigh(*log); });
}

void TrustKeeper::weigh(RaceLog& log) {
    LogPrediction::weigh(log, QDate::currentDate());
}
