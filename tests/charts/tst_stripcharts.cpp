// The table of the eight strip charts and the time of day their time axis shows, written out
// by hand.
#include "charts/StripCharts.h"

#include <QTest>

namespace {

using View = ViewTable::View;

const StripCharts::Chart& chart(View view) {
    const StripCharts::Chart* found = StripCharts::find(view);
    if (!found)
        qFatal("no strip chart for the view");
    return *found;
}

QStringList plotNames(const StripCharts::Chart& chart) {
    QStringList names;
    for (const StripCharts::Plot& plot : chart.plots)
        names << plot.name.toString();
    return names;
}

} // namespace

class TestStripCharts : public QObject {
    Q_OBJECT

private slots:
    void everyStripChartHasItsRow_data() {
        QTest::addColumn<View>("view");
        QTest::addColumn<QString>("control");
        QTest::addColumn<QStringList>("plots");
        QTest::addColumn<double>("timeFrom");
        QTest::addRow("frmWindSpeed") << View::WindSpeed << "windSpeed" << QStringList{"WS"} << 0.3;
        QTest::addRow("frmVP") << View::VaporPressure << "graphVP" << QStringList{"VP", "TEMP"}
                               << 0.2;
        QTest::addRow("frmAADA") << View::AADA << "graphAA" << QStringList{"AA", "DA"} << 0.2;
        QTest::addRow("frmABP") << View::ABP << "graphABP" << QStringList{"ABP"} << 0.3;
        QTest::addRow("frmGR") << View::GR << "graphGR" << QStringList{"GR"} << 0.3;
        QTest::addRow("frmRH") << View::RH << "graphRH" << QStringList{"RH", "TEMP"} << 0.2;
        QTest::addRow("frmCF") << View::CF << "Graph" << QStringList{"CF"} << 0.3;
        QTest::addRow("frmADR") << View::ADR << "Graph" << QStringList{"ADR"} << 0.3;
    }
    void everyStripChartHasItsRow() {
        QFETCH(View, view);
        QFETCH(QString, control);
        QFETCH(QStringList, plots);
        QFETCH(double, timeFrom);
        const StripCharts::Chart& row = chart(view);
        QCOMPARE(row.control.toString(), control);
        QCOMPARE(plotNames(row), plots);
        QCOMPARE(row.time.lower, timeFrom);
        QCOMPARE(row.time.upper, 1.0);
        QCOMPARE(row.time.majorTick, 0.2);
        QCOMPARE(row.time.minorTick, 0.1);
    }

    void theOtherViewsAreNoStripCharts() {
        QCOMPARE(StripCharts::find(View::RosePlot), nullptr);
        QCOMPARE(StripCharts::find(View::WindDirection), nullptr);
        QCOMPARE(StripCharts::find(View::Weather), nullptr);
    }

    void theLinesHaveTheirColours() {
        QCOMPARE(chart(View::WindSpeed).plots[0].color, QColor(27, 250, 239));
        QCOMPARE(chart(View::VaporPressure).plots[0].color, QColor(0, 202, 202));
        QCOMPARE(chart(View::VaporPressure).plots[1].color, QColor(255, 0, 0));
        QCOMPARE(chart(View::RH).plots[1].color, QColor(255, 0, 0));
        QCOMPARE(chart(View::AADA).plots[0].color, QColor(255, 255, 0));
        QCOMPARE(chart(View::AADA).plots[1].color, QColor(0, 255, 0));
        QCOMPARE(chart(View::ABP).plots[0].color, QColor(255, 0, 255));
        QCOMPARE(chart(View::GR).plots[0].color, QColor(0, 255, 255));
        QCOMPARE(chart(View::RH).plots[0].color, QColor(0, 255, 0));
        QCOMPARE(chart(View::CF).plots[0].color, QColor(217, 38, 199));
        QCOMPARE(chart(View::ADR).plots[0].color, QColor(255, 0, 128));
    }

    void theValueAxesStartAtTheirLimits() {
        for (View view : {View::WindSpeed, View::ABP, View::GR, View::CF, View::ADR, View::RH}) {
            for (const StripCharts::Plot& plot : chart(view).plots) {
                QCOMPARE(plot.axis.lower, 1.0);
                QCOMPARE(plot.axis.upper, 10.0);
                QCOMPARE(plot.axis.majorTick, 1.0);
                QCOMPARE(plot.axis.minorTick, 0.5);
            }
        }
        for (const StripCharts::Plot& plot : chart(View::VaporPressure).plots) {
            QCOMPARE(plot.axis.lower, 0.0);
            QCOMPARE(plot.axis.upper, 1.0);
            QCOMPARE(plot.axis.majorTick, 0.2);
            QCOMPARE(plot.axis.minorTick, 0.1);
        }
        const StripCharts::Axis aa = chart(View::AADA).plots[0].axis;
        QCOMPARE(aa.lower, 1000.0);
        QCOMPARE(aa.upper, 2000.0);
        QCOMPARE(aa.majorTick, 200.0);
        QCOMPARE(aa.minorTick, 100.0);
        const StripCharts::Axis da = chart(View::AADA).plots[1].axis;
        QCOMPARE(da.lower, 2000.0);
        QCOMPARE(da.upper, 3000.0);
    }

    void theCursorsStartWhereTheyWereDesigned() {
        const auto cursor = [](View view, int plot) { return *chart(view).plots[plot].cursor; };
        QCOMPARE(cursor(View::WindSpeed, 0).x, 0.37);
        QCOMPARE(cursor(View::WindSpeed, 0).y, 1.9);
        QCOMPARE(cursor(View::WindSpeed, 0).color, QColor(255, 255, 0));
        QCOMPARE(cursor(View::VaporPressure, 1).x, 0.44);
        QCOMPARE(cursor(View::VaporPressure, 1).y, 2.8);
        QCOMPARE(cursor(View::VaporPressure, 1).color, QColor(255, 0, 0));
        QCOMPARE(cursor(View::AADA, 0).x, 0.28);
        QCOMPARE(cursor(View::AADA, 0).y, 0.1);
        QCOMPARE(cursor(View::AADA, 1).x, 0.36);
        QCOMPARE(cursor(View::AADA, 1).y, 1200.0);
        QCOMPARE(cursor(View::AADA, 1).color, QColor(0, 255, 0));
        QCOMPARE(cursor(View::CF, 0).menuName.toString(), QStringLiteral("miCFCursor"));
        QCOMPARE(cursor(View::VaporPressure, 1).menuText.toString(), QStringLiteral("Temp Cursor"));
    }

    // The temperature of the humidity chart has no cursor, unlike that of the vapor pressure.
    void theHumidityChartHasOneCursor() {
        QVERIFY(chart(View::RH).plots[0].cursor.has_value());
        QVERIFY(!chart(View::RH).plots[1].cursor.has_value());
        QCOMPARE(StripCharts::centerEntry(chart(View::RH)).text, QStringLiteral("Center Cursor"));
    }

    void theMenuSpeaksOfOneCursorOrOfSeveral() {
        for (const StripCharts::Chart& row : StripCharts::Charts) {
            const bool plural = row.view == View::VaporPressure || row.view == View::AADA;
            QCOMPARE(StripCharts::centerEntry(row).name,
                     plural ? QStringLiteral("miCenterCursors") : QStringLiteral("miCenterCursor"));
            QCOMPARE(StripCharts::centerEntry(row).text,
                     plural ? QStringLiteral("Center Cursors") : QStringLiteral("Center Cursor"));
            QCOMPARE(StripCharts::removeEntry(row).name,
                     plural ? QStringLiteral("miRemoveCursors") : QStringLiteral("miRemoveCursor"));
            QCOMPARE(StripCharts::removeEntry(row).text,
                     plural ? QStringLiteral("Remove Cursors") : QStringLiteral("Remove Cursor"));
        }
    }

    void theTimeOfDayIsAFractionOfADay() {
        QCOMPARE(StripCharts::dayFraction(QTime(12, 0)), 0.5f);
        QCOMPARE(StripCharts::dayFraction(QTime(18, 0)), 0.75f);
        QCOMPARE(StripCharts::dayFraction(QTime(0, 0)), 0.0f);
        QCOMPARE(StripCharts::dayFraction(QTime(14, 5, 9)), 0.5869097222222223f);
    }

    void theTimeAxisReadsAsATwelveHourClock() {
        QCOMPARE(StripCharts::timeOfDayText(0.5869097222222223), QStringLiteral("2:05:09p"));
        QCOMPARE(StripCharts::timeOfDayText(0.0), QStringLiteral("12:00:00a"));
        QCOMPARE(StripCharts::timeOfDayText(0.5), QStringLiteral("12:00:00p"));
        QCOMPARE(StripCharts::timeOfDayText(0.3), QStringLiteral("7:12:00a"));
        QCOMPARE(StripCharts::timeOfDayText(0.8), QStringLiteral("7:12:00p"));
        QCOMPARE(StripCharts::timeOfDayText(1.0), QStringLiteral("12:00:00a"));
        // A point that carries a date shows its time of day.
        QCOMPARE(StripCharts::timeOfDayText(46348.25), QStringLiteral("6:00:00a"));
    }
};

QTEST_APPLESS_MAIN(TestStripCharts)
#include "tst_stripcharts.moc"
