// The arithmetic of the performance factor graph: the slope through a run, the ends of its
// line, the runs of a table that take part, and the line colours.
#include "SampleRunTable.h"
#include "prediction/ComputeFault.h"
#include "prediction/PerformanceFactorGraph.h"

#include <QTest>

using namespace RunColumn;
namespace Graph = PerformanceFactorGraph;

namespace {

// The slope as the model has it, written out: the line through a run at AA a rises a feet
// while the model moves its time by sensitivity x (1 - a) x ET.
double expectedSlope(double et, double aa, double pf) {
    const double sensitivity = 8.5e-6 - pf * 8.5e-7;
    return -aa / (sensitivity * (1.0 - aa) * et);
}

template <typename F> bool faults(F&& step) {
    try {
        step();
    } catch (const ComputeFault&) {
        return true;
    }
    return false;
}

} // namespace

class TestPerformanceFactorGraph : public QObject {
    Q_OBJECT
private slots:
    // 9.5 s at 2000 ft with PF 5: 24780.19 ft a second, worked out by hand.
    void slopeOfTheWorkedRun() {
        QCOMPARE(Graph::slope(9.5, 2000, 5), 24780.191953561924);
        const Graph::Line line = Graph::lineThrough({9.5, 2000, Graph::slope(9.5, 2000, 5)});
        QCOMPARE(line.x[0], 9.510088703125);
        QCOMPARE(line.y[0], 2250.0);
        QCOMPARE(line.x[1], 9.489911296875);
        QCOMPARE(line.y[1], 1750.0);
    }

    void slopeFollowsTheModel_data() {
        QTest::addColumn<double>("et");
        QTest::addColumn<double>("aa");
        QTest::addColumn<double>("pf");
        QTest::newRow("below sea level") << 10.2 << -350.0 << 5.0;
        QTest::newRow("PF 0") << 7.85 << 1200.0 << 0.0;
        QTest::newRow("PF above 10") << 11.02 << 3400.0 << 12.5;
        QTest::newRow("negative PF") << 6.4 << 800.0 << -3.0;
        // The far-away pivot is never taken: these runs pivot on themselves like any other.
        QTest::newRow("above 100 ft") << 9.5 << 150.0 << 5.0;
        QTest::newRow("below -100 ft") << 9.5 << -150.0 << 5.0;
        QTest::newRow("at 100 ft") << 9.5 << 100.0 << 5.0;
    }
    void slopeFollowsTheModel() {
        QFETCH(double, et);
        QFETCH(double, aa);
        QFETCH(double, pf);
        const double slope = Graph::slope(et, aa, pf);
        QCOMPARE(slope, expectedSlope(et, aa, pf));
        const Graph::Line line = Graph::lineThrough({et, aa, slope});
        QCOMPARE(line.x[0], et + 250.0 / slope);
        QCOMPARE(line.x[1], et - 250.0 / slope);
        QCOMPARE(line.y[0], aa + 250.0);
        QCOMPARE(line.y[1], aa - 250.0);
    }

    // A run at AA 0 has a flat slope, and its line cannot be drawn.
    void aRunAtZeroAltitudeHasNoLine() {
        const double slope = Graph::slope(9.5, 0, 5);
        QCOMPARE(slope, 0.0);
        QVERIFY(faults([&] { Graph::lineThrough({9.5, 0, slope}); }));
    }

    // PF 10 leaves the model no sensitivity: there is nothing to divide the slope by.
    void pf10HasNoSlope() {
        QVERIFY(faults([] { Graph::slope(9.5, 2000, 10); }));
        // An AA of exactly 1 foot is the same case for any factor.
        QVERIFY(faults([] { Graph::slope(9.5, 1, 5); }));
        // A time of 0 too.
        QVERIFY(faults([] { Graph::slope(0, 2000, 5); }));
    }

    void usableRunsTakeEveryRowWithTimeAndAltitude() {
        SampleRunTable table;
        table.addRun({{Ft1320, "9.5"}, {Ft660, "6.1"}, {AA, "2000"}});
        table.addRun({{Ft60, "1.32"}, {AA, "-350"}});
        table.addRun({{Ft1000, "7.8"}, {Ft330, "3.9"}, {AA, "1500"}});
        const QList<Graph::Run> runs = Graph::usableRuns(table.cells(), 3, 5);
        QCOMPARE(runs.size(), 3);
        // The farthest mark a run has is its time.
        QCOMPARE(runs[0].et, 9.5);
        QCOMPARE(runs[0].aa, 2000.0);
        QCOMPARE(runs[0].slope, expectedSlope(9.5, 2000, 5));
        QCOMPARE(runs[1].et, 1.32);
        QCOMPARE(runs[1].aa, -350.0);
        QCOMPARE(runs[1].slope, expectedSlope(1.32, -350, 5));
        QCOMPARE(runs[2].et, 7.8);
        QCOMPARE(runs[2].slope, expectedSlope(7.8, 1500, 5));
    }

    // The lists stop at the first row that lacks a time or an AA; later good rows are left
    // out too.
    void usableRunsStopAtTheFirstUnusableRow_data() {
        QTest::addColumn<int>("column");
        QTest::addColumn<QString>("text");
        QTest::newRow("no time") << int(Ft1320) << QString();
        QTest::newRow("a time that is no number") << int(Ft1320) << "9.x";
        QTest::newRow("no AA") << int(AA) << QString();
        QTest::newRow("an AA that is no number") << int(AA) << "abc";
    }
    void usableRunsStopAtTheFirstUnusableRow() {
        QFETCH(int, column);
        QFETCH(QString, text);
        SampleRunTable table;
        table.addRun({{Ft1320, "9.5"}, {AA, "2000"}});
        const int broken = table.addRun({{Ft1320, "9.6"}, {AA, "2100"}});
        table.addRun({{Ft1320, "9.7"}, {AA, "2200"}});
        table.set(broken, column, text);
        const QList<Graph::Run> runs = Graph::usableRuns(table.cells(), 3, 5);
        QCOMPARE(runs.size(), 1);
        QCOMPARE(runs[0].et, 9.5);
    }

    // A row whose slope cannot be computed ends the lists there, without a fault.
    void usableRunsStopAtARunWithoutSlope() {
        SampleRunTable table;
        table.addRun({{Ft1320, "9.5"}, {AA, "2000"}});
        table.addRun({{Ft1320, "9.6"}, {AA, "1"}});
        table.addRun({{Ft1320, "9.7"}, {AA, "2200"}});
        QCOMPARE(Graph::usableRuns(table.cells(), 3, 5).size(), 1);
        QCOMPARE(Graph::usableRuns(table.cells(), 3, 10).size(), 0);
    }

    // The header row is not a run, and a log whose only run is blank has none.
    void aBlankLogHasNoRuns() {
        SampleRunTable table;
        table.addRun({});
        QVERIFY(Graph::usableRuns(table.cells(), 1, 5).isEmpty());
        QVERIFY(Graph::usableRuns(table.cells(), 0, 5).isEmpty());
    }

    // A new factor gives new slopes; PF 10 faults at the first run, which keeps its old one.
    void reslopeWithAnotherFactor() {
        QList<Graph::Run> runs{{9.5, 2000, 1.0}, {10.2, -350, 2.0}};
        Graph::reslope(runs, 3);
        QCOMPARE(runs[0].slope, expectedSlope(9.5, 2000, 3));
        QCOMPARE(runs[1].slope, expectedSlope(10.2, -350, 3));

        QList<Graph::Run> faulted{{9.5, 2000, 1.0}, {10.2, 1, 2.0}, {7.8, 1500, 3.0}};
        QVERIFY(faults([&] { Graph::reslope(faulted, 4); }));
        QCOMPARE(faulted[0].slope, expectedSlope(9.5, 2000, 4));
        QCOMPARE(faulted[1].slope, 2.0);
        QCOMPARE(faulted[2].slope, 3.0);
    }

    // White, then green, red, yellow, blue, cyan, magenta; the eighth plot is white again.
    void plotColoursGoRound() {
        const QList<QColor> expected{
            QColor(255, 255, 255), QColor(0, 255, 0),     QColor(255, 0, 0),
            QColor(255, 255, 0),   QColor(0, 0, 255),     QColor(0, 255, 255),
            QColor(255, 0, 255),   QColor(255, 255, 255), QColor(0, 255, 0)};
        for (int plot = 1; plot <= expected.size(); ++plot)
            QCOMPARE(Graph::plotColour(plot), expected[plot - 1]);
    }
};

QTEST_APPLESS_MAIN(TestPerformanceFactorGraph)
#include "tst_performancefactorgraph.moc"
