#include "prediction/AirOutlook.h"

#include <QRandomGenerator>
#include <QTest>
#include <cmath>

using AirOutlook::Forecast;
using AirOutlook::Sample;

namespace {

constexpr qint64 Second = 1000;
constexpr qint64 Minute = 60 * Second;
const qint64 Now = QDateTime(QDate(2026, 11, 22), QTime(14, 0)).toMSecsSinceEpoch();

// A reading a second for the last `minutes` minutes, up to now: the altitude the function of
// the minutes before now gives.
QList<Sample> readings(int minutes, const std::function<double(double minutesBefore)>& aa) {
    QList<Sample> samples;
    for (qint64 at = Now - minutes * Minute; at <= Now; at += Second)
        samples.append({at, aa(double(Now - at) / Minute)});
    return samples;
}

} // namespace

class AirOutlookTest : public QObject {
    Q_OBJECT
private slots:
    void aSteadyRiseIsFollowedToEachHorizon() {
        // 2,000 ft now, rising 120 ft an hour: 2 ft a minute.
        const auto ahead = AirOutlook::forecast(
            readings(30, [](double before) { return 2000 - 2 * before; }), Now);
        QVERIFY(ahead);
        QVERIFY(std::fabs(ahead->feetPerHour - 120) < 1e-6);
        QVERIFY(std::fabs(ahead->aa[0] - (2000 + 2 * 30)) < 1e-6);
        QVERIFY(std::fabs(ahead->aa[1] - (2000 + 2 * 60)) < 1e-6);
        QVERIFY(std::fabs(ahead->aa[2] - (2000 + 2 * 90)) < 1e-6);
    }

    void theLineIsTheLeastSquaresLine() {
        // Four readings, 0, 5, 10 and 15 minutes after a start 15 minutes ago: x in hours
        // before now -0.25, -1/6, -1/12 and 0, mean -0.125; y 2000, 2030, 2010, 2040, mean 2020.
        const QList<Sample> samples{{Now - 15 * Minute, 2000},
                                    {Now - 10 * Minute, 2030},
                                    {Now - 5 * Minute, 2010},
                                    {Now, 2040}};
        const double dx[] = {-0.25 + 0.125, -1.0 / 6 + 0.125, -1.0 / 12 + 0.125, 0.125};
        const double dy[] = {-20, 10, -10, 20};
        double sxy = 0;
        double sxx = 0;
        for (int i = 0; i < 4; ++i) {
            sxy += dx[i] * dy[i];
            sxx += dx[i] * dx[i];
        }
        const double slope = sxy / sxx; // 120 ft an hour
        const auto ahead = AirOutlook::forecast(samples, Now);
        QVERIFY(ahead);
        QVERIFY(std::fabs(ahead->feetPerHour - slope) < 1e-9);
        QVERIFY(std::fabs(slope - 120) < 1e-9);
        QVERIFY(std::fabs(ahead->aa[1] - (2020 + slope * (1.0 + 0.125))) < 1e-9);
    }

    void anHourOfNoisyRisingAirGivesTheHourAheadWithinFiveFeet() {
        // A day of air rising 100 ft an hour from 1,800 ft, read each second with noise drawn
        // uniformly from -5 to +5 ft; the last half hour is what the program keeps.
        QRandomGenerator random(100);
        const auto trueAa = [](double minutesBefore) {
            return 1800 + 100 * (6 - minutesBefore / 60);
        };
        const QList<Sample> samples = readings(30, [&](double before) {
            return trueAa(before) + (random.generateDouble() * 2 - 1) * 5;
        });
        const auto ahead = AirOutlook::forecast(samples, Now);
        QVERIFY(ahead);
        const double expected = trueAa(-60); // 2,500 ft
        QCOMPARE(expected, 2500.0);
        QVERIFY2(std::fabs(ahead->aa[1] - expected) <= 5,
                 qPrintable(QString::number(ahead->aa[1])));
    }

    void lessThanTenMinutesOfReadingsSaysNothing() {
        QVERIFY(!AirOutlook::forecast({}, Now));
        QVERIFY(!AirOutlook::forecast({{Now, 2000}}, Now));
        QVERIFY(!AirOutlook::forecast(readings(9, [](double) { return 2000.0; }), Now));
        QVERIFY(AirOutlook::forecast(readings(10, [](double) { return 2000.0; }), Now));
        QCOMPARE(AirOutlook::line(std::nullopt, {}), QStringLiteral("Outlook: not enough weather"));
    }

    void theLineNamesEachHorizonWithItsAirAndEt() {
        const Forecast ahead{{2310.4, 2389.6, 2470}, 160};
        QCOMPARE(AirOutlook::line(ahead, {9.51321, 9.51638, 9.5196}),
                 QStringLiteral("In 30 min: AA 2,310 ft \u2192 9.5132 \u00b7 60 min: 2,390 \u2192 "
                                "9.5164 \u00b7 90 min: 2,470 \u2192 9.5196"));
        // A log with nothing to predict from gives the air alone.
        QCOMPARE(
            AirOutlook::line(ahead, {}),
            QStringLiteral("In 30 min: AA 2,310 ft \u00b7 60 min: 2,390 \u00b7 90 min: 2,470"));
    }

    void aFastChangeIsSaidAfterTheLine() {
        const Forecast rising{{2130, 2260, 2390}, 260.4};
        QVERIFY(AirOutlook::line(rising, {})
                    .endsWith(QStringLiteral("90 min: 2,390 (air changing fast: +260 ft/h)")));
        const Forecast falling{{870, 740, 610}, -260};
        QVERIFY(AirOutlook::line(falling, {})
                    .endsWith(QStringLiteral("90 min: 610 (air changing fast: -260 ft/h)")));
        const Forecast steady{{2100, 2200, 2300}, 200};
        QVERIFY(!AirOutlook::line(steady, {}).contains(QStringLiteral("fast")));
    }
};

QTEST_GUILESS_MAIN(AirOutlookTest)
#include "tst_airoutlook.moc"
