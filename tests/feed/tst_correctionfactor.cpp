#include "feed/CorrectionFactor.h"

#include <QTest>

class TestCorrectionFactor : public QObject {
    Q_OBJECT
private slots:
    void standardDayGivesOne() {
        const auto factor = correctionFactor(29.92f, 60.0f, 0.0f);
        QVERIFY(factor);
        QCOMPARE(*factor, 1.0f);
    }

    void warmHumidLowPressure() {
        // t = 1.02376986, p = 1.03172410, h = 1.02836883, each a float.
        QCOMPARE(*correctionFactor(29.0f, 85.0f, 0.8f), 1.08621264f);
    }

    void pressureZeroFaults() { QVERIFY(!correctionFactor(0.0f, 60.0f, 0.0f)); }

    void pressureEqualToVaporPressureFaults() { QVERIFY(!correctionFactor(0.5f, 60.0f, 0.5f)); }

    void temperatureBelowAbsoluteZeroFaults() { QVERIFY(!correctionFactor(29.92f, -500.0f, 0.0f)); }

    void termTooLargeForAFloatFaults() { QVERIFY(!correctionFactor(1e-38f, 60.0f, 0.0f)); }
};

QTEST_GUILESS_MAIN(TestCorrectionFactor)
#include "tst_correctionfactor.moc"
