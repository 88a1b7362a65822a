// The wind rose's sums: the sector a compass direction lands in, the whole-number sums of wind
// speed, the needle's angle, and what Clear leaves.
#include "charts/WindRose.h"

#include <QTest>

class TestWindRose : public QObject {
    Q_OBJECT

private slots:
    void startsWithThirtySectorsOfTwelveDegreesAndNothingSummed() {
        const WindRose rose;
        for (int sector = 0; sector < 30; ++sector) {
            QCOMPARE(rose.width(sector), 12);
            QCOMPARE(rose.sum(sector), 0);
        }
        QCOMPARE(rose.sum(30), 0);
        QCOMPARE(rose.lastAngle(), qint16(0));
        QCOMPARE(rose.maximum(), 0);
    }

    void compassDirectionsTurnIntoPlotAngles() {
        QCOMPARE(WindRose::plotAngle(90), 0);
        QCOMPARE(WindRose::plotAngle(91), 359);
        QCOMPARE(WindRose::plotAngle(0), 90);
        QCOMPARE(WindRose::plotAngle(360), 90);
        QCOMPARE(WindRose::plotAngle(180), 270);
        QCOMPARE(WindRose::plotAngle(270), 180);
        // Only one turn is ever added or taken away.
        QCOMPARE(WindRose::plotAngle(-280), 10);
        QCOMPARE(WindRose::plotAngle(-270), 360);
        QCOMPARE(WindRose::plotAngle(500), -50);
    }

    void anEastWindLandsInTheFirstSector() {
        WindRose rose;
        QVERIFY(rose.addWind(10, 90));
        QCOMPARE(rose.sum(0), 10);
        QCOMPARE(rose.lastAngle(), qint16(0));
    }

    void oneDegreeFurtherLandsInTheLastSector() {
        WindRose rose;
        QVERIFY(rose.addWind(5, 91));
        QCOMPARE(rose.sum(29), 5);
        QCOMPARE(rose.lastAngle(), qint16(359));
        QCOMPARE(rose.sum(0), 0);
    }

    void northAndAFullTurnShareTheirSector() {
        WindRose rose;
        QVERIFY(rose.addWind(3, 0));
        QVERIFY(rose.addWind(4, 360));
        // 90 / 12 = 7
        QCOMPARE(rose.sum(7), 7);
        QCOMPARE(rose.lastAngle(), qint16(90));
    }

    void anAngleOfTwelveStartsTheSecondSector() {
        WindRose rose;
        QVERIFY(rose.addWind(6, 78)); // 90 - 78 = 12
        QCOMPARE(rose.sum(1), 6);
        QVERIFY(rose.addWind(2, 79)); // 11
        QCOMPARE(rose.sum(0), 2);
    }

    void aSumIsReadByPlotAngleWithoutConversion() {
        WindRose rose;
        rose.addWind(8, 0);  // plot angle 90, sector 7
        rose.addWind(3, 90); // plot angle 0, sector 0
        QCOMPARE(rose.sumAt(90), 8.0f);
        QCOMPARE(rose.sumAt(0), 3.0f);
        QCOMPARE(rose.sumAt(95), 8.0f);
        QCOMPARE(rose.sumAt(96), 0.0f);
    }

    void sumsAreWindSpeedsRoundedToWholeNumbers() {
        WindRose rose;
        rose.addWind(2.5f, 90); // 2.5 -> 2, the tie going to the even number
        QCOMPARE(rose.sum(0), 2);
        rose.addWind(0.5f, 90); // 2.5 -> 2
        QCOMPARE(rose.sum(0), 2);
        rose.addWind(1.5f, 90); // 3.5 -> 4
        QCOMPARE(rose.sum(0), 4);
        rose.addWind(0.6f, 90); // 4.6 -> 5
        QCOMPARE(rose.sum(0), 5);
    }

    void aCalmReadingMovesTheNeedleOnly() {
        WindRose rose;
        rose.addWind(4, 90);
        QVERIFY(rose.addWind(0, 180));
        QCOMPARE(rose.lastAngle(), qint16(270));
        QCOMPARE(rose.sum(22), 0);
        QCOMPARE(rose.sum(0), 4);
    }

    void aSumBeyondThirtyTwoBitsIsRefused() {
        WindRose rose;
        QVERIFY(rose.addWind(2e9f, 90));
        QCOMPARE(rose.sum(0), 2000000000);
        QVERIFY(!rose.addWind(2e9f, 90));
        QCOMPARE(rose.sum(0), 2000000000);
        QVERIFY(!rose.addWind(-5e9f, 90));
        QCOMPARE(rose.sum(0), 2000000000);
    }

    void aDirectionWhoseAngleOverflowsIsRefusedBeforeTheNeedleMoves() {
        WindRose rose;
        rose.addWind(1, 0);
        // 90 - (-32768) is beyond a 16-bit number.
        QVERIFY(!rose.addWind(1, -32768));
        QCOMPARE(rose.lastAngle(), qint16(90));
        QCOMPARE(rose.sum(7), 1);
    }

    void aDirectionOutsideTheSectorsAddsNothing() {
        WindRose rose;
        QVERIFY(!rose.addWind(9, 500)); // plot angle -50
        for (int sector = 0; sector <= 30; ++sector)
            QCOMPARE(rose.sum(sector), 0);
    }

    void clearEmptiesTheSectorsAndKeepsTheNeedle() {
        WindRose rose;
        rose.addWind(5, 0);
        rose.addWind(7, 135);
        rose.clearSums();
        for (int sector = 0; sector < 30; ++sector)
            QCOMPARE(rose.sum(sector), 0);
        QCOMPARE(rose.lastAngle(), qint16(315));
        QCOMPARE(rose.maximum(), 0);
    }

    void theSlotPastTheSectorsIsNeitherClearedNorCounted() {
        WindRose rose;
        // Compass -270 gives plot angle 360 and so the slot 360 / 12 = 30.
        QVERIFY(rose.addWind(7, -270));
        QCOMPARE(rose.sum(30), 7);
        QCOMPARE(rose.sumAt(360), 7.0f);
        QCOMPARE(rose.lastAngle(), qint16(360));
        QCOMPARE(rose.maximum(), 0);
        rose.clearSums();
        QCOMPARE(rose.sum(30), 7);
    }

    void theMaximumIsTheLargestDrawnSum() {
        WindRose rose;
        rose.addWind(3, 0);
        rose.addWind(11, 200);
        rose.addWind(-20, 90);
        QCOMPARE(rose.maximum(), 11);
        WindRose against;
        against.addWind(-4, 10);
        QCOMPARE(against.maximum(), 0);
    }
};

QTEST_APPLESS_MAIN(TestWindRose)
#include "tst_windrose.moc"
