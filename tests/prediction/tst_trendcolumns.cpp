// The columns of the Trend Finder, read from the run table.
#include "SampleRunTable.h"
#include "prediction/TrendColumns.h"

#include <QTest>

class TestTrendColumns : public QObject {
    Q_OBJECT

private slots:
    void everyQuantityHasItsColumnAndPlot() {
        QCOMPARE(TrendColumns::Quantities.size(), 13u);
        QCOMPARE(TrendColumns::Quantities[0].plot, u"ft60");
        QCOMPARE(TrendColumns::Quantities[4].column, 12);
        QCOMPARE(TrendColumns::Quantities[10].entry, u"DA");
        QCOMPARE(TrendColumns::Quantities[10].column, 20);
        QCOMPARE(TrendColumns::Quantities[12].entry, u"Track Temp");
        QCOMPARE(TrendColumns::Quantities[12].column, 18);
        QCOMPARE(TrendColumns::Quantities[12].plot, u"TrackTemp");
    }

    // A column is read run after run as single precision values, up to its first gap.
    void aGapEndsTheColumn() {
        SampleRunTable table;
        table.addRun({{22, "29.92"}});
        table.addRun({{22, "30.1"}});
        table.addRun({{22, ""}});
        const int last = table.addRun({{22, "29.5"}});
        QCOMPARE(TrendColumns::values(table.cells(), last, 22),
                 std::vector<float>({29.92f, 30.1f}));
    }

    void textInTheFirstRunDrawsNothing() {
        SampleRunTable table;
        table.addRun({{6, "n/a"}});
        const int last = table.addRun({{6, "1.25"}});
        QVERIFY(TrendColumns::values(table.cells(), last, 6).empty());
    }
};

QTEST_GUILESS_MAIN(TestTrendColumns)
#include "tst_trendcolumns.moc"
