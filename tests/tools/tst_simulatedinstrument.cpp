#include "InstrumentLineShape.h"

#include "core/NumberText.h"
#include "feed/SimulatedInstrument.h"

#include <QTest>

namespace {

const QDateTime morning(QDate(2026, 6, 1), QTime(8, 0));

// A run of lines from one instrument, one every given number of seconds.
QList<QByteArray> run(SimulatedInstrument::Options options, int count, int stepSeconds) {
    SimulatedInstrument instrument(options);
    QList<QByteArray> lines;
    for (int i = 0; i < count; ++i)
        lines.append(instrument.nextLine(morning.addSecs(qint64(i) * stepSeconds)));
    return lines;
}

double token(const QByteArray& line, int number) {
    return *NumberText::toDouble(QString::fromLatin1(line.trimmed().split(' ').at(number - 1)));
}

} // namespace

class TestSimulatedInstrument : public QObject {
    Q_OBJECT
private slots:
    void everyLineHasTheInstrumentsShape() {
        const QList<QByteArray> lines = run({.seed = 5}, 500, 173);
        for (const QByteArray& line : lines)
            QVERIFY2(hasInstrumentShape(line), line.constData());
    }

    void lineCarriesTheMomentAndTheReading() {
        SimulatedInstrument instrument({.seed = 9});
        const QByteArray line = instrument.nextLine(QDateTime(QDate(2026, 7, 4), QTime(13, 5, 9)));
        const SimulatedInstrument::Reading& r = instrument.lastReading();
        QVERIFY(line.startsWith(" 07/04/2026 13:05:09 "));
        const QList<double> expected = {r.abp,        r.temp,       r.rh,         double(r.aa),
                                        r.ah,         double(r.gr), r.vp,         double(r.dp),
                                        r.adr,        double(r.da), double(r.pa), double(r.wd),
                                        double(r.ws), double(r.wg), double(r.al)};
        for (int i = 0; i < expected.size(); ++i)
            QCOMPARE(token(line, i + 3), expected[i]);
    }

    void sameSeedGivesTheSameLines() {
        QCOMPARE(run({.seed = 42}, 50, 2), run({.seed = 42}, 50, 2));
        QCOMPARE(run({.seed = 42, .faults = true}, 50, 2),
                 run({.seed = 42, .faults = true}, 50, 2));
    }

    void otherSeedGivesOtherWeather() {
        QVERIFY(run({.seed = 42}, 5, 2) != run({.seed = 43}, 5, 2));
    }

    // Two days at seven-minute steps, from several seeds: every reading stays physical.
    void readingsStayInsideTheirRanges() {
        for (quint32 seed = 1; seed <= 5; ++seed) {
            SimulatedInstrument instrument({.seed = seed});
            for (int i = 0; i < 2 * 24 * 60 / 7; ++i) {
                instrument.nextLine(morning.addSecs(qint64(i) * 7 * 60));
                const SimulatedInstrument::Reading& r = instrument.lastReading();
                QVERIFY(r.abp >= 28.5 && r.abp <= 30.2);
                QVERIFY(r.rh >= 5 && r.rh <= 100);
                // The dew point is a whole degree, so it may round up past the temperature.
                QVERIFY(r.dp <= r.temp + 0.5);
                QVERIFY(r.adr > 80 && r.adr < 110);
                QVERIFY(r.wd >= 0 && r.wd <= 359);
                QVERIFY(r.ws >= 0);
                QVERIFY(r.wg >= r.ws);
                QVERIFY(r.al >= 0 && r.al <= 1000);
            }
        }
    }

    void lightFollowsTheSun() {
        SimulatedInstrument instrument({.seed = 3});
        instrument.nextLine(QDateTime(QDate(2026, 6, 1), QTime(2, 0)));
        QCOMPARE(instrument.lastReading().al, 0);
        instrument.nextLine(QDateTime(QDate(2026, 6, 1), QTime(13, 0)));
        QVERIFY(instrument.lastReading().al > 0);
    }

    // Ten days at one-hour steps: the afternoon is warmer and drier than the hour before dawn.
    void humidityFallsAsTheDayWarms() {
        SimulatedInstrument instrument({.seed = 11});
        double dawnTemp = 0, dawnRh = 0, afternoonTemp = 0, afternoonRh = 0;
        for (int hour = 0; hour < 10 * 24; ++hour) {
            const QDateTime moment = QDateTime(QDate(2026, 6, 1), QTime(0, 0)).addSecs(hour * 3600);
            instrument.nextLine(moment);
            const SimulatedInstrument::Reading& r = instrument.lastReading();
            if (moment.time().hour() == 5) {
                dawnTemp += r.temp;
                dawnRh += r.rh;
            } else if (moment.time().hour() == 15) {
                afternoonTemp += r.temp;
                afternoonRh += r.rh;
            }
        }
        QVERIFY(afternoonTemp > dawnTemp);
        QVERIFY(afternoonRh < dawnRh);
    }

    // Standard air: 29.92 inHg, 59 F, dry. It is the air every altitude is measured against.
    void standardAirReadsAsStandard() {
        const auto air = SimulatedInstrument::stillAir(29.92, 59, 0);
        QVERIFY(qAbs(air.adr - 100.0) <= 0.05);
        QVERIFY(qAbs(air.da) <= 10);
        QVERIFY(qAbs(air.pa) <= 10);
        QVERIFY(qAbs(air.aa) <= 10);
        QCOMPARE(air.gr, 0);
    }

    // Psychrometric table values for 68 F at 50 %: vapor pressure 0.345 inHg, dew point
    // 48.7 F, 50.8 grains per lb at sea-level pressure.
    void humidityMatchesThePsychrometricTables() {
        const auto air = SimulatedInstrument::stillAir(29.92, 68, 50);
        QVERIFY(qAbs(air.vp - 0.345) <= 0.003);
        QCOMPARE(air.dp, 49);
        QCOMPARE(air.gr, 51);
        QVERIFY(qAbs(air.ah - 8.6) <= 0.1); // grams per cubic metre
    }

    // The standard atmosphere: 24.89 inHg is at 5000 ft.
    void pressureAltitudeFollowsTheStandardAtmosphere() {
        QVERIFY(qAbs(SimulatedInstrument::stillAir(24.89, 59, 0).pa - 5000) <= 15);
    }

    void vaporPressureDewPointAndGrainsRiseWithHumidity() {
        const auto dry = SimulatedInstrument::stillAir(29.5, 80, 30);
        const auto humid = SimulatedInstrument::stillAir(29.5, 80, 60);
        QVERIFY(humid.vp > dry.vp);
        QVERIFY(humid.dp > dry.dp);
        QVERIFY(humid.gr > dry.gr);
        QVERIFY(humid.ah > dry.ah);
    }

    void densityAltitudeRisesWithTemperature() {
        const auto cool = SimulatedInstrument::stillAir(29.5, 60, 40);
        const auto hot = SimulatedInstrument::stillAir(29.5, 90, 40);
        QVERIFY(hot.da > cool.da);
        QVERIFY(hot.aa > cool.aa);
        QVERIFY(hot.adr < cool.adr);
        QCOMPARE(hot.pa, cool.pa);
    }

    void densityAltitudeFallsWithPressure() {
        QVERIFY(SimulatedInstrument::stillAir(28.8, 75, 40).da >
                SimulatedInstrument::stillAir(29.9, 75, 40).da);
    }

    // Water vapor thins the air but also takes the place of oxygen: the adjusted altitude
    // counts only the dry part, so it is the higher of the two in humid air.
    void adjustedAltitudeCountsOnlyTheDryAir() {
        const auto humid = SimulatedInstrument::stillAir(29.5, 90, 80);
        QVERIFY(humid.aa > humid.da + 100);
        const auto dry = SimulatedInstrument::stillAir(29.5, 90, 0);
        QVERIFY(qAbs(dry.aa - dry.da) <= 2);
    }

    void faultsSpoilSomeLinesAndLeaveTheRest() {
        const QList<QByteArray> lines = run({.seed = 8, .faults = true}, 300, 2);
        const auto spoiled = std::count_if(
            lines.begin(), lines.end(), [](const QByteArray& l) { return !hasInstrumentShape(l); });
        QVERIFY(spoiled > 10);
        QVERIFY(spoiled < 150);
        for (const QByteArray& line : lines)
            QVERIFY(line.endsWith('\r'));
    }
};

QTEST_GUILESS_MAIN(TestSimulatedInstrument)
#include "tst_simulatedinstrument.moc"
