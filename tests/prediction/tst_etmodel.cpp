#include "SampleRunTable.h"
#include "prediction/EtModel.h"
#include "prediction/RunCells.h"

#include <QTest>

using namespace RunColumn;

class TestEtModel : public QObject {
    Q_OBJECT
private slots:
    void sensitivityFollowsThePerformanceFactor_data() {
        QTest::addColumn<double>("pf");
        QTest::addColumn<double>("sensitivity");
        QTest::newRow("PF 5") << 5.0 << 4.25e-6;
        QTest::newRow("PF 0") << 0.0 << 8.5e-6;
        QTest::newRow("PF 10 is exactly zero") << 10.0 << 0.0;
        QTest::newRow("PF 12 turns the sign") << 12.0 << -1.7e-6;
    }
    void sensitivityFollowsThePerformanceFactor() {
        QFETCH(double, pf);
        QFETCH(double, sensitivity);
        QCOMPARE(EtModel::sensitivity(pf), sensitivity);
    }

    // The quantities of the checked example: 9.5 s at 2000 ft, now 2100 ft, PF 5.
    void workedCaseQuantities() {
        const double s = EtModel::sensitivity(5);
        QCOMPARE(EtModel::etAtAltitude(9.5, 2000, 2100, s), 9.504077875);
        QCOMPARE(EtModel::etAtAltitude(9.5, 2000, 0, s), 9.419290375);
        QCOMPARE(EtModel::etAtAltitude(9.5, 2100, 0, s), 9.415252875);
    }

    void sameAltitudeStillMovesTheTime() {
        const double s = EtModel::sensitivity(5);
        QCOMPARE(EtModel::etAtAltitude(9.5, 2000, 2000, s), 9.5 + s * 9.5);
        QVERIFY(EtModel::etAtAltitude(9.5, 2000, 2000, s) != 9.5);
    }

    void pf10IgnoresTheAir_data() {
        QTest::addColumn<double>("aaFrom");
        QTest::addColumn<double>("aaTo");
        QTest::newRow("higher") << 2000.0 << 2100.0;
        QTest::newRow("lower") << 2000.0 << -3000.0;
        QTest::newRow("far") << -5000.0 << 90000.0;
        QTest::newRow("same") << 2000.0 << 2000.0;
    }
    void pf10IgnoresTheAir() {
        QFETCH(double, aaFrom);
        QFETCH(double, aaTo);
        QCOMPARE(EtModel::etAtAltitude(9.5, aaFrom, aaTo, EtModel::sensitivity(10)), 9.5);
    }

    void pfAbove10TurnsTheCorrection() {
        const double slower = EtModel::etAtAltitude(9.5, 2000, 2100, EtModel::sensitivity(5));
        const double faster = EtModel::etAtAltitude(9.5, 2000, 2100, EtModel::sensitivity(12));
        QVERIFY(slower > 9.5);
        QVERIFY(faster < 9.5);
    }

    void referenceEtTakesTheFarthestMark_data() {
        QTest::addColumn<int>("column");
        QTest::addColumn<QString>("text");
        QTest::newRow("1320 ft over all") << int(Ft1320) << "9.50";
        QTest::newRow("1000 ft over 660") << int(Ft1000) << "7.80";
        QTest::newRow("660 ft over 330") << int(Ft660) << "6.10";
        QTest::newRow("330 ft over 60") << int(Ft330) << "4.90";
        QTest::newRow("60 ft alone") << int(Ft60) << "1.25";
    }
    void referenceEtTakesTheFarthestMark() {
        QFETCH(int, column);
        QFETCH(QString, text);
        SampleRunTable table;
        const int row = table.addRun({});
        // Fill the marks from the nearest out to the one under test.
        const QList<std::pair<int, QString>> marks{
            {Ft60, "1.25"}, {Ft330, "4.90"}, {Ft660, "6.10"}, {Ft1000, "7.80"}, {Ft1320, "9.50"}};
        for (const auto& [markColumn, markText] : marks) {
            table.set(row, markColumn, markText);
            if (markColumn == column)
                break;
        }
        QCOMPARE(referenceEtText(table.cells(), row), std::optional<QString>(text));
    }

    void referenceEtSkipsCellsThatAreNoNumber() {
        SampleRunTable table;
        const int row = table.addRun({{Ft1320, "DNF"}, {Ft1000, ""}, {Ft660, "6.10"}});
        QCOMPARE(referenceEtText(table.cells(), row), std::optional<QString>("6.10"));
    }

    void headerRowHasNoReferenceEt() {
        SampleRunTable table;
        table.addRun({{Ft1320, "9.50"}, {AA, "2000"}});
        QCOMPARE(referenceEtText(table.cells(), 0), std::nullopt);
    }
};

QTEST_GUILESS_MAIN(TestEtModel)
#include "tst_etmodel.moc"
