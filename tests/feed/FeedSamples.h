#pragma once

#include "core/WeatherRecord.h"
#include "prediction/RunCells.h"
#include "racelog/RaceLog.h"

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QStringList>
#include <functional>

// Lines and records shared by the feed's tests.
namespace FeedSamples {

// A full instrument line: a space, the date, the time and the fifteen quantities, a CR.
inline const QString FullLine = QStringLiteral(
    " 11/22/26 10:42:07 29.92 71.5 43.2 1250 5.1 45 0.33 49 98.6 1410 120 275 7 11 340\r");

// The reading of FullLine.
inline WeatherRecord FullRecord() {
    WeatherRecord r;
    r.Date = QStringLiteral("11/22/26");
    r.ABP = 29.92f;
    r.Temp = 71.5f;
    r.RH = 43.2f;
    r.AA = 1250;
    r.AH = 5.1f;
    r.GR = 45;
    r.VP = 0.33f;
    r.DP = 49;
    r.ADR = 98.6f;
    r.DA = 1410;
    r.PA = 120;
    r.WD = 275;
    r.WS = 7;
    r.WG = 11;
    r.AL = 340;
    return r;
}

// The row the weather log writes for FullRecord at 10:42:07 in the morning.
inline const QByteArray FullRow =
    "\"10:42:07am\",29.92,71.5,43.2,1250,5.1,45,0.33,49,98.6,1410,120,275,7,11,340\r\n";

// A log row with the given time text and values, CR LF included.
inline QByteArray Row(const QString& time, float abp = 29.92f, float temp = 71.5f, float vp = 0.33f,
                      int ws = 7) {
    return QStringLiteral("\"%1\",%2,%3,43.2,1250,5.1,45,%4,49,98.6,1410,120,275,%5,11,340\r\n")
        .arg(time)
        .arg(double(abp))
        .arg(double(temp))
        .arg(double(vp))
        .arg(ws)
        .toLatin1();
}

inline bool WriteFile(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

inline QByteArray ReadFile(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// A race log with a reference run and a performance factor, so that each feed line publishes a
// prediction. It writes down into a list shared with the test what the feed did to it: the live
// adjusted altitude taken, and each prediction published.
class RecordingRaceLog : public RaceLog {
public:
    RecordingRaceLog(QString name, QStringList& events) : name(std::move(name)), events(events) {
        runs().setCell(1, RunColumn::Ft1320, QStringLiteral("9.5"));
        runs().setCell(1, RunColumn::AA, QStringLiteral("2000"));
        // What the user typed, until the feed writes.
        change({}, [](RaceLogData& data) {
            data.pf = QStringLiteral("5");
            data.aa = QStringLiteral("-1");
            data.vp = QStringLiteral("-1");
        });
        settle();
        QObject::connect(this, &RaceLog::fieldChanged, [this](RaceLog::Field field) {
            if (field == RaceLog::Field::AA)
                this->events << this->name + QStringLiteral(" takeLiveWeather");
        });
        QObject::connect(&prediction(), &PublishedPrediction::published, [this] {
            ++predictions;
            this->events << this->name + QStringLiteral(" updatePredictions");
            if (onPredict)
                onPredict();
        });
    }

    qint32 aa() const { return field(Field::AA).toInt(); }
    float vp() const { return field(Field::VP).toFloat(); }

    int predictions = 0;
    std::function<void()> onPredict;

private:
    QString name;
    QStringList& events;
};

} // namespace FeedSamples
