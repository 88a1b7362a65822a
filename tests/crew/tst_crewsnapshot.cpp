// The live socket's message, checked field by field against predictions worked out here from
// the logs' reference runs and the line the instrument sent, and the frame it goes in.
#include "common/ModelByHand.h"
#include "common/TestHome.h"
#include "crew/CrewFrame.h"
#include "crew/CrewSnapshot.h"
#include "feed/WeatherStation.h"
#include "racelog/RaceLog.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

namespace {

// A reading with an adjusted altitude of 2100 ft and a vapor pressure of 0.487.
const QByteArray Line =
    " 11/22/26 10:42:07 29.92 71.5 43.2 2100 5.1 45 0.487 49 98.6 1410 120 275 7 11 340\r";
const QString LineStatus =
    QStringLiteral("ABP=29.92 Temp=71.5 RH=43.2 AA=2100 AH=5.1 GR=45 VP=0.487 DP=49 ADR=98.6 "
                   "DA=1410 PA=120 WD=275 WS=7 WG=11 AL=340");

QString fourPlaces(double value) {
    return QString::number(value, 'f', 4);
}

void prepare(RaceLog& log, const QString& page, double refEt, double refAltitude,
             const QString& timer, double pf, const QString& ratio, const QString& target) {
    log.runs().setCell(1, 12, QString::number(refEt));
    log.runs().setCell(1, 19, QString::number(refAltitude));
    if (!timer.isEmpty())
        log.runs().setCell(1, 14, timer);
    log.change(QStringLiteral("Set up"), [&](RaceLogData& data) {
        data.pageIdentifier = page;
        data.pf = QString::number(pf);
        data.tsr = ratio;
        data.targetET = target;
    });
}

QJsonObject parse(const QByteArray& json) {
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError)
        qFatal("not JSON: %s", qPrintable(error.errorString()));
    return document.object();
}

} // namespace

class TestCrewSnapshot : public QObject {
    Q_OBJECT

private slots:
    void theMessageCarriesTheWeatherAndEachLogsPrediction() {
        TestHome home;
        WeatherStation station;
        RaceLog red;
        RaceLog plain;
        prepare(red, QStringLiteral("Red"), 9.5, 2000, QStringLiteral("1.5"), 5,
                QStringLiteral("0.25"), QStringLiteral("9.50"));
        prepare(plain, QString(), 10.2, 1500, QString(), 3, QStringLiteral("0"),
                QStringLiteral("0.00"));
        station.raceLogs().open(&red);
        station.raceLogs().open(&plain);
        station.feed().tcpBytes(Line);

        const QDateTime redTime(QDate(2026, 11, 22), QTime(10, 42, 7, 250));
        const QDateTime now(QDate(2026, 11, 22), QTime(10, 42, 8));
        const CrewSnapshot::PublishTimes times{{&red.prediction(), redTime}};
        const QJsonObject message = parse(CrewSnapshot::json(station, times, now));

        const QJsonObject status = message[u"status"].toObject();
        QCOMPARE(status[u"live"].toBool(), true);
        QCOMPARE(status[u"text"].toString(), LineStatus);

        // The status line names each quantity and its value, in the table's order.
        const QStringList pieces = LineStatus.split(u' ');
        const QJsonArray quantities = message[u"quantities"].toArray();
        QCOMPARE(quantities.size(), 15);
        for (int i = 0; i < 15; ++i) {
            const QString label = pieces[i].section(u'=', 0, 0);
            const QJsonObject quantity = quantities[i].toObject();
            QCOMPARE(quantity[u"name"].toString(), label);
            QCOMPARE(quantity[u"label"].toString(), label + u'=');
            QCOMPARE(quantity[u"value"].toString(), pieces[i].section(u'=', 1));
        }

        const QJsonArray logs = message[u"logs"].toArray();
        QCOMPARE(logs.size(), 2);
        const double redEt = ModelByHand::etAt(9.5, 2000, 2100, 5);
        const double redStop = ModelByHand::throttleStopFor(9.5, 2000, 1.5, 9.50, 2100, 5, 0.25);
        const QJsonObject redLog = logs[0].toObject();
        QCOMPARE(redLog[u"slot"].toInt(), 0);
        QCOMPARE(redLog[u"name"].toString(), QStringLiteral("Red"));
        QCOMPARE(redLog[u"predictedEt"].toString(), fourPlaces(redEt));
        QCOMPARE(redLog[u"throttleStop"].toString(), fourPlaces(redStop));
        QCOMPARE(redLog[u"targetEt"].toString(), QStringLiteral("9.50"));
        QCOMPARE(redLog[u"referenceRun"].toInt(), 0);
        QCOMPARE(redLog[u"aa"].toString(), QStringLiteral("2100"));
        QCOMPARE(redLog[u"vp"].toString(), QStringLiteral("0.487"));
        QCOMPARE(redLog[u"line"].toString(), QStringLiteral("Red> ET: %1  TS @ 9.50: %2")
                                                 .arg(fourPlaces(redEt), fourPlaces(redStop)));
        QCOMPARE(redLog[u"updated"].toString(), QStringLiteral("2026-11-22T10:42:07.250"));
        QCOMPARE(redLog[u"stale"].toBool(), false);

        const QJsonObject plainLog = logs[1].toObject();
        QCOMPARE(plainLog[u"slot"].toInt(), 1);
        QCOMPARE(plainLog[u"name"].toString(), QStringLiteral("Race Log# 2"));
        QCOMPARE(plainLog[u"predictedEt"].toString(),
                 fourPlaces(ModelByHand::etAt(10.2, 1500, 2100, 3)));
        QCOMPARE(plainLog[u"throttleStop"].toString(), QString());
        QCOMPARE(plainLog[u"line"].toString(),
                 QStringLiteral("RaceLog# 2> ET: ") +
                     fourPlaces(ModelByHand::etAt(10.2, 1500, 2100, 3)));
        QCOMPARE(plainLog[u"updated"].toString(), QString());

        QCOMPARE(message[u"time"].toString(), QStringLiteral("2026-11-22T10:42:08.000"));
    }

    // The card puts the likely miss after the ET and the next rounds' line under it.
    void theMessageCarriesEachLogsLikelyMissAndOutlook() {
        TestHome home;
        WeatherStation station;
        RaceLog weighed;
        RaceLog fresh;
        prepare(weighed, QStringLiteral("Red"), 9.5, 2000, QString(), 5, QStringLiteral("0"),
                QStringLiteral("0.00"));
        prepare(fresh, QStringLiteral("Blue"), 9.5, 2000, QString(), 5, QStringLiteral("0"),
                QStringLiteral("0.00"));
        const QString outlook = QStringLiteral("In 30 min: AA 2,310 ft \u2192 9.5132");
        station.raceLogs().open(&weighed);
        station.raceLogs().open(&fresh);
        // Set as the log's predictor would once it has weighed twelve predictions.
        weighed.trust().setMeasures(PredictionTrust::Miss{0.0042, 12}, std::nullopt);
        weighed.trust().setOutlook(outlook);
        station.feed().tcpBytes(Line);

        const QJsonArray logs =
            parse(CrewSnapshot::json(station, {}, QDateTime::currentDateTime()))[u"logs"].toArray();
        QCOMPARE(logs[0].toObject()[u"likelyMiss"].toString(), QStringLiteral("\u00b10.004"));
        QCOMPARE(logs[0].toObject()[u"outlook"].toString(), outlook);
        QCOMPARE(logs[1].toObject()[u"likelyMiss"].toString(), QString());
        QCOMPARE(logs[1].toObject()[u"outlook"].toString(), fresh.trust().outlook());
    }

    // A log whose weather stopped coming says so; a closed slot is left out.
    void aStaleLogIsMarkedAndAnEmptySlotLeftOut() {
        TestHome home;
        WeatherStation station;
        RaceLog first;
        RaceLog second;
        station.raceLogs().open(&first);
        station.raceLogs().open(&second);
        station.raceLogs().close(&first);
        second.prediction().markStale(12);
        const QJsonArray logs =
            parse(CrewSnapshot::json(station, {}, QDateTime::currentDateTime()))[u"logs"].toArray();
        QCOMPARE(logs.size(), 1);
        QCOMPARE(logs[0].toObject()[u"slot"].toInt(), 1);
        QCOMPARE(logs[0].toObject()[u"stale"].toBool(), true);
        QCOMPARE(logs[0].toObject()[u"predictedEt"].toString(), QString());
    }

    // A name may hold anything a user types or pastes: it comes back as it was, and the text
    // is plain compact JSON with its keys in order, as a JSON library writes it.
    void anyNameComesBackAsItWas() {
        TestHome home;
        WeatherStation station;
        station.feed().serialBytes(Line);
        RaceLog log;
        const QString name = QStringLiteral("Say \"Red\" \\ C:\\cars\n\ttab\r\b\f") + QChar(0x01) +
                             QChar(0x1f) + QStringLiteral(" Zürich ñ €") + QChar(0x7f) +
                             QStringLiteral(" \U0001F3C1 </script>");
        prepare(log, name, 9.5, 2000, QString(), 5, QString(), QStringLiteral("0.00"));
        station.raceLogs().open(&log);
        const QByteArray json = CrewSnapshot::json(station, {}, QDateTime::currentDateTime());
        const QJsonObject message = parse(json);
        QCOMPARE(message[u"logs"][0][u"name"].toString(), name);
        QCOMPARE(QJsonDocument(message).toJson(QJsonDocument::Compact), json);
        station.raceLogs().close(&log);
    }

    // The message goes to every phone as one final, unmasked text frame; its length takes the
    // second byte up to 125, two more bytes up to 65,535, eight more beyond, in network order.
    void theMessageGoesAsOneTextFrame_data() {
        QTest::addColumn<int>("length");
        QTest::addColumn<QByteArray>("header");
        QTest::newRow("empty") << 0 << QByteArray("\x81\x00", 2);
        QTest::newRow("125") << 125 << QByteArray("\x81\x7D");
        QTest::newRow("126") << 126 << QByteArray("\x81\x7E\x00\x7E", 4);
        QTest::newRow("1100") << 1100 << QByteArray("\x81\x7E\x04\x4C");
        QTest::newRow("65535") << 65535 << QByteArray("\x81\x7E\xFF\xFF");
        QTest::newRow("65536") << 65536
                               << QByteArray("\x81\x7F\x00\x00\x00\x00\x00\x01\x00\x00", 10);
    }

    void theMessageGoesAsOneTextFrame() {
        QFETCH(int, length);
        QFETCH(QByteArray, header);
        const QByteArray message(length, 'x');
        QCOMPARE(CrewFrame::text(message), header + message);
    }
};

QTEST_GUILESS_MAIN(TestCrewSnapshot)
#include "tst_crewsnapshot.moc"
