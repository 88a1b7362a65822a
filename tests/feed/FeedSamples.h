#pragma once

#include "core/RaceLogDocument.h"
#include "core/WeatherRecord.h"

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

// A race log that writes down what the feed asks of it, into a list shared with the test.
class RecordingRaceLog : public RaceLogDocument {
public:
    RecordingRaceLog(QString name, QStringList& events) : name(std::move(name)), events(events) {}
    void takeLiveWeather(qint32 adjustedAltitude, float vaporPressure) override {
        aa = adjustedAltitude;
        vp = vaporPressure;
        events << name + QStringLiteral(" takeLiveWeather");
    }
    void updatePredictions() override {
        ++predictions;
        events << name + QStringLiteral(" updatePredictions");
        if (onPredict)
            onPredict();
    }

    qint32 aa = -1; // what the user typed, until the feed writes
    float vp = -1;
    int predictions = 0;
    std::function<void()> onPredict;

private:
    QString name;
    QStringList& events;
};

} // namespace FeedSamples
