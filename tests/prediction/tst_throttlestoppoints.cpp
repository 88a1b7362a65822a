// The points of the throttle stop graph and the ratio read off it.
#include "SampleRunTable.h"
#include "prediction/ThrottleStopPoints.h"

#include <QTest>

using namespace ThrottleStopPoints;

class TestThrottleStopPoints : public QObject {
    Q_OBJECT

private slots:
    // PF 5 gives a sensitivity of 8.5e-6 - 5 x 8.5e-7 = 4.25e-6. A 9.5 at AA 2000 taken to
    // altitude 0: 9.5 + 4.25e-6 x (1 - 2000) x 9.5 = 9.5 - 0.080709625.
    void aRunIsTakenToTheCommonAltitude() {
        QCOMPARE(correctedEt(9.5, 2000, 4.25e-6), 9.419290375);
        SampleRunTable table;
        const int last = table.addRun({{12, "9.5"}, {19, "2000"}, {14, "1.5"}});
        const std::optional<Lanes> lanes = collect(table.cells(), last, "5", "9.50");
        QVERIFY(lanes);
        QCOMPARE(lanes->left.size(), 1u);
        QVERIFY(lanes->right.empty());
        QCOMPARE(lanes->left[0].x, 9.419290375);
        QCOMPARE(lanes->left[0].y, 1.5);
    }

    // The time is the farthest mark the run has; here the 660 ft time 6.1 at AA 1000 with PF
    // 0: 6.1 + 8.5e-6 x (1 - 1000) x 6.1 = 6.1 - 0.05179815.
    void theFarthestMarkIsTheTime() {
        SampleRunTable table;
        const int last = table.addRun({{6, "1.2"}, {8, "6.1"}, {19, "1000"}, {14, "2"}});
        const std::optional<Lanes> lanes = collect(table.cells(), last, "0", "6");
        QVERIFY(lanes);
        QCOMPARE(lanes->left[0].x, 6.1 - 0.05179815);
    }

    // Only "Right" exactly goes right; "right", "RIGHT", "Left" and an empty cell go left.
    void onlyRightExactlyGoesRight() {
        SampleRunTable table;
        const QStringList laneTexts{"Right", "right", "RIGHT", "", "Left", "Right "};
        int last = 0;
        for (int i = 0; i < laneTexts.size(); ++i)
            last = table.addRun(
                {{3, laneTexts[i]}, {12, "9.5"}, {19, "0"}, {14, QString::number(i + 1)}});
        const std::optional<Lanes> lanes = collect(table.cells(), last, "10", "9");
        QVERIFY(lanes);
        QCOMPARE(lanes->right.size(), 1u);
        QCOMPARE(lanes->right[0].y, 1.0);
        QCOMPARE(lanes->left.size(), 5u);
        QCOMPARE(lanes->left[0].y, 2.0);
        QCOMPARE(lanes->left[4].y, 6.0);
    }

    void onlyLeftLaneRunsLeaveTheRightEmpty() {
        SampleRunTable table;
        table.addRun({{3, "Left"}, {12, "9.5"}, {19, "2000"}, {14, "1.5"}});
        const int last = table.addRun({{3, "Left"}, {12, "9.6"}, {19, "2100"}, {14, "1.4"}});
        const std::optional<Lanes> lanes = collect(table.cells(), last, "5", "9.5");
        QVERIFY(lanes);
        QCOMPARE(lanes->left.size(), 2u);
        QVERIFY(lanes->right.empty());
    }

    // One run lacking a time, an AA or a timer stops everything: no point is drawn.
    void oneIncompleteRunLeavesTheGraphEmpty_data() {
        QTest::addColumn<int>("column");
        QTest::addColumn<QString>("text");
        QTest::newRow("no time yet") << 12 << "";
        QTest::newRow("no AA") << 19 << "";
        QTest::newRow("AA not a number") << 19 << "n/a";
        QTest::newRow("no timer") << 14 << "";
    }
    void oneIncompleteRunLeavesTheGraphEmpty() {
        QFETCH(int, column);
        QFETCH(QString, text);
        SampleRunTable table;
        table.addRun({{12, "9.5"}, {19, "2000"}, {14, "1.5"}});
        const int last = table.addRun({{12, "9.6"}, {19, "2100"}, {14, "1.4"}});
        table.set(last, column, text);
        QVERIFY(!collect(table.cells(), last, "5", "9.5"));
    }

    void aLogWithoutPfOrTargetShowsNoGraph() {
        SampleRunTable table;
        const int last = table.addRun({{12, "9.5"}, {19, "2000"}, {14, "1.5"}});
        QVERIFY(!collect(table.cells(), last, "", "9.5"));
        QVERIFY(!collect(table.cells(), last, "5", "none"));
        QVERIFY(collect(table.cells(), last, "5", "9.5"));
    }

    // (1.5 - 1.3) / (9.4 - 9.6) x 0.01 = -0.01.
    void theRatioIsTheSlopeInHundredths() {
        const std::optional<float> found = ratio(9.4f, 1.5f, 9.6f, 1.3f);
        QVERIFY(found);
        QVERIFY(qAbs(*found - (-0.01f)) < 1e-6f);
        // Falling points show as a positive ratio.
        QCOMPARE(captionWithRatio("Throttle Stop Ratio", *found), "Throttle Stop Ratio: 0.010000");
        // The caption with an old ratio keeps only its first 19 characters.
        QCOMPARE(captionWithRatio("Throttle Stop Ratio: 0.500000", 0.0253f),
                 "Throttle Stop Ratio: 0.025300");
    }

    // Level cursors keep the ratio found before; upright ones give none.
    void levelOrUprightCursorsGiveNoRatio() {
        QVERIFY(!ratio(9.4f, 1.5f, 9.6f, 1.5f));
        QVERIFY(!ratio(9.4f, 1.5f, 9.4f, 1.3f));
    }

    // Points on timer = 0.25 x ET - 1.1, each ET twice with the timer 0.003 above and below
    // the line: the line stays the best fit, and every point is 0.003 off it.
    void theFitIsTheLineThePointsStraddle() {
        std::vector<Point> points;
        for (const double et : {9.40, 9.45, 9.52, 9.60}) {
            points.push_back({et, 0.25 * et - 1.1 + 0.003});
            points.push_back({et, 0.25 * et - 1.1 - 0.003});
        }
        const auto fit = fitLine(points);
        QVERIFY(fit);
        QVERIFY(qAbs(fit->slope - 0.25) < 1e-9);
        QVERIFY(qAbs(fit->intercept + 1.1) < 1e-9);
        QCOMPARE(fit->firstX, 9.40);
        QCOMPARE(fit->lastX, 9.60);
        QVERIFY(qAbs(fit->rms - 0.003) < 1e-12);
        QVERIFY(qAbs(fit->at(9.5) - (0.25 * 9.5 - 1.1)) < 1e-9);
    }

    void pointsOnALineFitWithNoResidual() {
        const std::vector<Point> points{{9.6, 1.2}, {9.4, 1.7}, {9.5, 1.45}};
        const auto fit = fitLine(points);
        QVERIFY(fit);
        QVERIFY(qAbs(fit->slope + 2.5) < 1e-9);
        QCOMPARE(fit->firstX, 9.4);
        QCOMPARE(fit->lastX, 9.6);
        QVERIFY(fit->rms < 1e-12);
    }

    void noLineThroughOnePointOrOneEt() {
        QVERIFY(!fitLine({}));
        QVERIFY(!fitLine({{9.5, 1.2}}));
        QVERIFY(!fitLine({{9.5, 1.2}, {9.5, 1.4}}));
    }

    void theRatioIsReadFromTheCaption() {
        QCOMPARE(ratioInCaption("Throttle Stop Ratio: 0.010000"), QString("0.010000"));
        // Before any cursor move the caption holds no number.
        QVERIFY(!ratioInCaption("Throttle Stop Ratio"));
        QVERIFY(!ratioInCaption("Throttle Stop Ratio: "));
    }
};

QTEST_GUILESS_MAIN(TestThrottleStopPoints)
#include "tst_throttlestoppoints.moc"
