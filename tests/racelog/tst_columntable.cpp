#include "racelog/ColumnTable.h"

#include <QSet>
#include <QTest>

using ColumnTable::Columns;
using ColumnTable::LoadForm;

class TestColumnTable : public QObject {
    Q_OBJECT
private slots:
    void columnsAreNumberedByTheirPlace() {
        QCOMPARE(int(Columns.size()), 34);
        for (int n = 0; n < ColumnTable::Count; ++n)
            QCOMPARE(Columns[n].number, n);
    }

    void everyColumn_data() {
        QTest::addColumn<int>("number");
        QTest::addColumn<QString>("caption");
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("menuItem");
        QTest::addColumn<QString>("checkBox");
        QTest::addColumn<QString>("toolTip");
        // clang-format off
        const struct { int n; const char *caption, *field, *value, *menu, *check, *tip; } rows[] = {
            {0, ">>>", "", "", "", "", ""},
            {1, "Time", "Time", "", "", "", ""},
            {2, "Date", "Date", "", "", "", ""},
            {3, "Lane", "Lane", "Lane", "miLane", "chkLane", ""},
            {4, "RT", "RT", "RT", "miRT", "chkRT", ""},
            {5, "Delay Box", "DelayBox", "Delay Box", "miDelayBox", "chkDelayBox", ""},
            {6, "60 ft", "ft60", "60 ft", "mi60ft", "chk60ft", ""},
            {7, "330 ft", "ft330", "330 ft", "mi330ft", "chk330ft", ""},
            {8, "660 ft", "ft660", "660 ft", "mi660ft", "chk660ft", ""},
            {9, "660 MPH", "mph660", "660 MPH", "mi660mph", "chk660mph", ""},
            {10, "1000 ft", "ft1000", "1000 ft", "mi1000ft", "chk1000ft", ""},
            {11, "1000 MPH", "mph1000", "1000 MPH", "mi1000mph", "chk1000mph", ""},
            {12, "1320 ft", "ft1320", "1320 ft", "mi1320ft", "chk1320ft", ""},
            {13, "1320 MPH", "mph1320", "1320 MPH", "mi1320mph", "chk1320mph", ""},
            {14, "Timer 2", "Timer2", "Timer 2", "miTimer2", "chkTimer2", ""},
            {15, "Timer 1", "Timer1", "Timer 1", "miTimer1", "chkTimer1", ""},
            {16, "Shift Time", "ShiftTime", "Shift Time", "miShiftTime", "chkShiftTime", ""},
            {17, "Dial-In", "DialIn", "Dial-In", "miDialIn", "chkDialIn", ""},
            {18, "T. Temp", "TrackTemp", "Track Temp", "miTrackTemp", "chkTrackTemp", "Track Temperature"},
            {19, "AA", "AA", "AA", "miAA", "chkAA", "Adjusted Altitude"},
            {20, "DA", "DA", "DA", "miDA", "chkDA", "Density Altitude"},
            {21, "VP", "VP", "VP", "miVP", "chkVP", "Vapor Pressure"},
            {22, "ABP", "ABP", "ABP", "miABP", "chkABP", "Absolute Barometric Pressure"},
            {23, "Temp", "TEMP", "Temp", "miTemp", "chkTemp", "Temperature in degrees F"},
            {24, "RH", "RH", "RH", "miRH", "chkRH", "Relative Humidity"},
            {25, "AH", "AH", "AH", "miAH", "chkAH", "Absolute Humidity"},
            {26, "GR", "GR", "GR", "miGR", "chkGR", "Grains per Lb"},
            {27, "DP", "DP", "DP", "miDP", "chkDP", "Dew Point"},
            {28, "ADR", "ADR", "ADR", "miADR", "chkADR", "Air Density Ratio"},
            {29, "PA", "PA", "PA", "miPA", "chkPA", "Pressure Altitude"},
            {30, "WD", "WD", "WD", "miWD", "chkWD", "Wind Direction"},
            {31, "WS", "WS", "WS", "miWS", "chkWS", "Wind Speed"},
            {32, "WG", "WG", "WG", "miWG", "chkWG", "Wind Gust"},
            {33, "AL", "AL", "AL", "miAL", "chkAL", "Ambient Light"},
        };
        // clang-format on
        for (const auto& r : rows)
            QTest::addRow("%d %s", r.n, r.caption)
                << r.n << r.caption << r.field << r.value << r.menu << r.check << r.tip;
    }
    void everyColumn() {
        QFETCH(int, number);
        QFETCH(QString, caption);
        QFETCH(QString, field);
        QFETCH(QString, value);
        QFETCH(QString, menuItem);
        QFETCH(QString, checkBox);
        QFETCH(QString, toolTip);
        const ColumnTable::Column& column = Columns[number];
        QCOMPARE(column.caption.toString(), caption);
        QCOMPARE(column.logField.toString(), field);
        QCOMPARE(column.visibilityValue.toString(), value);
        QCOMPARE(column.menuItem.toString(), menuItem);
        // The menu shows the name the settings use, which is the check box caption.
        QCOMPARE(column.menuText.toString(), value);
        QCOMPARE(column.checkBox.toString(), checkBox);
        QCOMPARE(column.checkBoxToolTip.toString(), toolTip);
        QCOMPARE(column.canBeHidden(), number >= 3);
        QVERIFY(!column.meaning.isEmpty());
    }

    void timerTwoComesBeforeTimerOne() {
        QCOMPARE(Columns[14].caption.toString(), QStringLiteral("Timer 2"));
        QCOMPARE(Columns[15].caption.toString(), QStringLiteral("Timer 1"));
        QCOMPARE(ColumnTable::columnOfLogField(u"Timer1"), 15);
        QCOMPARE(ColumnTable::columnOfLogField(u"Timer2"), 14);
    }

    void trackTempHasAShortCaption() {
        QCOMPARE(Columns[18].caption.toString(), QStringLiteral("T. Temp"));
        QCOMPARE(Columns[18].visibilityValue.toString(), QStringLiteral("Track Temp"));
        QCOMPARE(Columns[18].menuText.toString(), QStringLiteral("Track Temp"));
    }

    void loadForms_data() {
        QTest::addColumn<int>("number");
        QTest::addColumn<int>("form");
        QTest::addColumn<QString>("pattern");
        QTest::newRow("run number") << 0 << int(LoadForm::None) << "";
        QTest::newRow("Time") << 1 << int(LoadForm::TimeOfDay) << "";
        QTest::newRow("Date") << 2 << int(LoadForm::RunDate) << "";
        QTest::newRow("Lane") << 3 << int(LoadForm::AsStored) << "";
        QTest::newRow("RT") << 4 << int(LoadForm::Pattern) << "#.0000";
        QTest::newRow("Delay Box") << 5 << int(LoadForm::General) << "";
        for (int n : {6, 7, 8, 10, 12})
            QTest::addRow("time at mark %d", n)
                << n << int(LoadForm::PatternUnlessZero) << "##.0000";
        for (int n : {9, 11, 13})
            QTest::addRow("speed %d", n) << n << int(LoadForm::PatternUnlessZero) << "###.00";
        QTest::newRow("Timer 2") << 14 << int(LoadForm::General) << "";
        QTest::newRow("Timer 1") << 15 << int(LoadForm::General) << "";
        QTest::newRow("Shift Time") << 16 << int(LoadForm::General) << "";
        QTest::newRow("Dial-In") << 17 << int(LoadForm::PatternUnlessZero) << "##.00";
        QTest::newRow("T. Temp") << 18 << int(LoadForm::PatternUnlessZero) << "##0.0";
        for (int n = 19; n <= 33; ++n)
            QTest::addRow("weather %d", n) << n << int(LoadForm::General) << "";
    }
    void loadForms() {
        QFETCH(int, number);
        QFETCH(int, form);
        QFETCH(QString, pattern);
        QCOMPARE(int(Columns[number].loadForm), form);
        QCOMPARE(Columns[number].pattern.toString(), pattern);
        QCOMPARE(Columns[number].shownOnlyIfNotZero(), form == int(LoadForm::PatternUnlessZero));
    }

    void showColumnMenuOrder() {
        const QList<int> expected{3,  4,  5,  17, 18, 6,  7,  8,  9,  10, 11, 12, 13, 14, 15, 16,
                                  19, 20, 21, 22, 23, 24, 25, 26, 27, 28, 29, 30, 31, 32, 33};
        QCOMPARE(QList<int>(ColumnTable::ShowColumnMenuOrder.begin(),
                            ColumnTable::ShowColumnMenuOrder.end()),
                 expected);
        // Every hideable column once, no other.
        QSet<int> members(expected.begin(), expected.end());
        QCOMPARE(members.size(), ColumnTable::HideableCount);
        for (const auto& column : Columns)
            QCOMPARE(members.contains(column.number), column.canBeHidden());
    }

    void fieldNamesAreFoundWithoutRegardToCase() {
        QCOMPARE(ColumnTable::columnOfLogField(u"LANE"), 3);
        QCOMPARE(ColumnTable::columnOfLogField(u"dialin"), 17);
        QCOMPARE(ColumnTable::columnOfLogField(u"timer1"), 15);
        QCOMPARE(ColumnTable::columnOfLogField(u"Temp"), 23);
        QCOMPARE(ColumnTable::columnOfLogField(u"FT1320"), 12);
        QCOMPARE(ColumnTable::columnOfLogField(u"Notes"), -1);
        QCOMPARE(ColumnTable::columnOfLogField(u"GeneralID"), -1);
        QCOMPARE(ColumnTable::columnOfLogField(u""), -1);
    }
};

QTEST_APPLESS_MAIN(TestColumnTable)
#include "tst_columntable.moc"
