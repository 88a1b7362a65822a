// The marks of a race log's runs on the open strip charts, with values worked out by hand.
#include "charts/RunAnnotations.h"
#include "racelog/RunTable.h"

#include <QSet>
#include <QTest>

namespace {

using View = ViewTable::View;
using Mark = RunAnnotations::Mark;

const QSet<View> AllCharts{View::WindSpeed, View::ABP,           View::RH,  View::ADR, View::CF,
                           View::GR,        View::VaporPressure, View::AADA};

// 2:35pm as a fraction of a day: (14 x 60 + 35) / 1440.
constexpr float TwoThirtyFive = float(875.0 / 1440.0);

// A run at the time with every quantity the charts take: VP 0.75, ABP 29.5, Temp 85, RH 40,
// AA 1500, GR 60, ADR 98.5, WS 7.
void fillRun(RunTable& runs, int row, const QString& time) {
    while (runs.tableRows() <= row)
        runs.addRun();
    runs.setCell(row, 1, time);
    runs.setCell(row, 19, QStringLiteral("1500"));
    runs.setCell(row, 21, QStringLiteral("0.75"));
    runs.setCell(row, 22, QStringLiteral("29.5"));
    runs.setCell(row, 23, QStringLiteral("85"));
    runs.setCell(row, 24, QStringLiteral("40"));
    runs.setCell(row, 26, QStringLiteral("60"));
    runs.setCell(row, 28, QStringLiteral("98.5"));
    runs.setCell(row, 31, QStringLiteral("7"));
}

RunAnnotations::Marks marksOn(const RunTable& runs, const QSet<View>& open,
                              const QString& page = QStringLiteral("Blue")) {
    return RunAnnotations::marks(runs, page, [&open](View view) { return open.contains(view); });
}

QStringList plots(const QList<Mark>& marks) {
    QStringList names;
    for (const Mark& mark : marks)
        names << mark.plot;
    return names;
}

} // namespace

class TestRunAnnotations : public QObject {
    Q_OBJECT

private slots:
    void aRunIsMarkedOnEveryOpenChartInTheOrderOfTheTable() {
        RunTable runs;
        fillRun(runs, 1, QStringLiteral("02:35pm"));
        const RunAnnotations::Marks result = marksOn(runs, AllCharts);
        QVERIFY(!result.failed);
        QCOMPARE(plots(result.marks),
                 (QStringList{"WS", "ABP", "RH", "ADR", "CF", "GR", "VP", "AA"}));
        const QList<float> values{7, 29.5f, 40, 98.5f, 0, 60, 0.75f, 1500};
        for (int i = 0; i < result.marks.size(); ++i) {
            const Mark& mark = result.marks[i];
            QCOMPARE(mark.text, QStringLiteral("1 Blue"));
            QCOMPARE(mark.x, TwoThirtyFive);
            if (mark.plot != QStringLiteral("CF"))
                QCOMPARE(mark.y, values[i]);
        }
        QCOMPARE(result.marks[0].view, View::WindSpeed);
        QCOMPARE(result.marks[6].view, View::VaporPressure);
        QCOMPARE(result.marks[7].view, View::AADA);
    }

    // (29.92 / 29.5) x sqrt((85 + 459.7) / 519.7) x (29.5 / (29.5 - 0.75)) = 1.06543282
    void theCorrectionFactorIsWorkedOutFromThePressuresAndTheTemperature() {
        RunTable runs;
        fillRun(runs, 1, QStringLiteral("02:35pm"));
        const RunAnnotations::Marks result = marksOn(runs, {View::CF});
        QCOMPARE(result.marks.size(), 1);
        QCOMPARE(result.marks[0].plot, QStringLiteral("CF"));
        QVERIFY(qAbs(result.marks[0].y - 1.0654328f) < 1e-6f);
    }

    void theCorrectionFactorNeedsAllThreeCells() {
        for (int column : {21, 22, 23}) {
            RunTable runs;
            fillRun(runs, 1, QStringLiteral("02:35pm"));
            runs.setCell(1, column, QString());
            const RunAnnotations::Marks result = marksOn(runs, {View::CF, View::WindSpeed});
            QVERIFY(!result.failed);
            QCOMPARE(plots(result.marks), QStringList{"WS"});
        }
    }

    void aRunWithoutAValueGoesWithoutThatMarkAlone() {
        RunTable runs;
        fillRun(runs, 1, QStringLiteral("02:35pm"));
        runs.setCell(1, 24, QString());
        runs.setCell(1, 31, QStringLiteral("calm"));
        const RunAnnotations::Marks result = marksOn(runs, AllCharts);
        QVERIFY(!result.failed);
        QCOMPARE(plots(result.marks), (QStringList{"ABP", "ADR", "CF", "GR", "VP", "AA"}));
    }

    void theCaptionIsTheRunNumberAndThePageIdentifier() {
        RunTable runs;
        fillRun(runs, 1, QStringLiteral("09:00am"));
        fillRun(runs, 2, QStringLiteral("10:30am"));
        fillRun(runs, 3, QStringLiteral("01:15pm"));
        const RunAnnotations::Marks result =
            marksOn(runs, {View::WindSpeed}, QStringLiteral("Red 77"));
        QCOMPARE(result.marks.size(), 3);
        QCOMPARE(result.marks[0].text, QStringLiteral("1 Red 77"));
        QCOMPARE(result.marks[1].text, QStringLiteral("2 Red 77"));
        QCOMPARE(result.marks[2].text, QStringLiteral("3 Red 77"));
        QCOMPARE(result.marks[0].x, 0.375f);
        QCOMPARE(result.marks[1].x, 0.4375f);
        QCOMPARE(result.marks[2].x, float(795.0 / 1440.0));
    }

    // The first run without a time ends the command, without a word.
    void aRunWithoutATimeStopsTheMarks() {
        RunTable runs;
        fillRun(runs, 1, QStringLiteral("09:00am"));
        fillRun(runs, 2, QString());
        fillRun(runs, 3, QStringLiteral("01:15pm"));
        const RunAnnotations::Marks result = marksOn(runs, {View::WindSpeed, View::ABP});
        QVERIFY(!result.failed);
        QCOMPARE(result.marks.size(), 2);
        QCOMPARE(result.marks[1].text, QStringLiteral("1 Blue"));

        runs.setCell(2, 1, QStringLiteral("late"));
        QCOMPARE(marksOn(runs, {View::WindSpeed}).marks.size(), 1);
    }

    void noChartOpenMakesNoMarks() {
        RunTable runs;
        fillRun(runs, 1, QStringLiteral("09:00am"));
        fillRun(runs, 2, QStringLiteral("10:00am"));
        const RunAnnotations::Marks result = marksOn(runs, {});
        QVERIFY(!result.failed);
        QVERIFY(result.marks.isEmpty());
    }

    // The pressure equal to the vapor pressure divides by zero: the marks before stand, the
    // rest are not made.
    void aFactorThatCannotBeWorkedOutFails() {
        RunTable runs;
        fillRun(runs, 1, QStringLiteral("09:00am"));
        fillRun(runs, 2, QStringLiteral("10:00am"));
        fillRun(runs, 3, QStringLiteral("11:00am"));
        runs.setCell(2, 21, QStringLiteral("29.5"));
        const RunAnnotations::Marks result = marksOn(runs, AllCharts);
        QVERIFY(result.failed);
        QCOMPARE(plots(result.marks), (QStringList{"WS", "ABP", "RH", "ADR", "CF", "GR", "VP", "AA",
                                                   "WS", "ABP", "RH", "ADR"}));
        QCOMPARE(result.marks.last().text, QStringLiteral("2 Blue"));
    }

    void aPressureOfZeroFails() {
        RunTable runs;
        fillRun(runs, 1, QStringLiteral("09:00am"));
        runs.setCell(1, 22, QStringLiteral("0"));
        runs.setCell(1, 21, QStringLiteral("0.5"));
        QVERIFY(marksOn(runs, {View::CF}).failed);
        // Without the correction factor's chart open, the same run is marked.
        QVERIFY(!marksOn(runs, {View::ABP}).failed);
    }

    void aNumberTooLargeForTheChartFails() {
        RunTable runs;
        fillRun(runs, 1, QStringLiteral("09:00am"));
        runs.setCell(1, 31, QStringLiteral("1e40"));
        const RunAnnotations::Marks result = marksOn(runs, {View::WindSpeed});
        QVERIFY(result.failed);
        QVERIFY(result.marks.isEmpty());
    }

    // A log from an earlier day shows its marks at the time of day of its runs.
    void aTimeAloneIsATimeOfDay() {
        QCOMPARE(RunAnnotations::runTime(QStringLiteral("02:35pm")), TwoThirtyFive);
        QCOMPARE(RunAnnotations::runTime(QStringLiteral("12:00pm")), 0.5f);
        QCOMPARE(RunAnnotations::runTime(QStringLiteral("12:00am")), 0.0f);
        QCOMPARE(RunAnnotations::runTime(QStringLiteral("nonsense")), std::nullopt);
        QCOMPARE(RunAnnotations::runTime(QString()), std::nullopt);
    }

    // 11/22/2026 is day 46348 after 12/30/1899; with 2:35pm that is 46348.6076, kept in single
    // precision as 46348.609375.
    void aDateCarriesItsWholeDays() {
        QCOMPARE(RunAnnotations::runTime(QStringLiteral("11/22/26 02:35pm")), 46348.609375f);
        QCOMPARE(RunAnnotations::runTime(QStringLiteral("11/22/2026")), 46348.0f);
        QCOMPARE(RunAnnotations::runTime(QStringLiteral("12/31/1899")), 1.0f);
    }
};

QTEST_APPLESS_MAIN(TestRunAnnotations)
#include "tst_runannotations.moc"
