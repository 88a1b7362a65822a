#include "feed/TrustKeeper.h"

#include "prediction/LogPrediction.h"
#include "racelog/RaceLog.h"

TrustKeeper::TrustKeeper(OpenRaceLogs& logs, QObject* parent)
    : QObject(parent), logs(logs), day(QDate::currentDate()) {
    minute.setObjectName(QStringLiteral("tmrOutlook"));
    minute.setInterval(60 * 1000);
    minute.setParent(this);
    connect(&minute, &QTimer::timeout, this,
            [this] { minutePassed(QDateTime::currentDateTime()); });
    connect(&logs, &OpenRaceLogs::opened, this, &TrustKeeper::watch);
}

void TrustKeeper::takeRecord(const WeatherRecord& record, const QDateTime& at) {
    air.add(at.toMSecsSinceEpoch(), record.AA);
}

void TrustKeeper::updateOutlook(const QDateTime& now) {
    air.forgetBefore(now.toMSecsSinceEpoch());
    forecast = AirOutlook::forecast(air.samples(), now.toMSecsSinceEpoch());
    for (int slot = 0; slot < logs.slotCount(); ++slot) {
        if (RaceLog* log = logs.at(slot))
            log->trust().setOutlook(LogPrediction::outlookLine(*log, forecast));
    }
}

void TrustKeeper::minutePassed(const QDateTime& now) {
    if (now.date() != day) {
        day = now.date();
        for (int slot = 0; slot < logs.slotCount(); ++slot) {
            if (RaceLog* log = logs.at(slot))
                weigh(*log, day);
        }
    }
    updateOutlook(now);
}

// Every step of the log's undo stack moves its index, and a load starts the log afresh; a log
// is weighed at once when it opens.
void TrustKeeper::watch(int slot) {
    RaceLog* log = logs.at(slot);
    const auto weighToday = [this, log] { weigh(*log, QDate::currentDate()); };
    weighToday();
    connect(&log->undoStack(), &QUndoStack::indexChanged, this, weighToday);
    connect(log, &RaceLog::loaded, this, weighToday);
}

void TrustKeeper::weigh(RaceLog& log, const QDate& today) {
    LogPrediction::weigh(log, today);
    log.trust().setOutlook(LogPrediction::outlookLine(log, forecast));
}
