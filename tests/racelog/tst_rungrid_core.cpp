#include "core/WeatherRecord.h"
#include "racelog/CellColor.h"
#include "racelog/RunCellText.h"
#include "racelog/RunClipboard.h"
#include "racelog/RunRows.h"
#include "racelog/RunTable.h"
#include "racelog/RunWeather.h"
#include "racelog/TypedKey.h"

#include <QKeyEvent>
#include <QSignalSpy>
#include <QTest>

namespace {

const QDateTime Now(QDate(2026, 11, 22), QTime(14, 35, 7));

// Every cell of a run gets a text of its own: "r<row>c<column>".
void fillRun(RunTable& table, int row) {
    for (int column = 1; column < table.cols(); ++column)
        table.setCell(row, column, QStringLiteral("r%1c%2").arg(row).arg(column));
}

QList<int> changedColumns(const QSignalSpy& spy) {
    QList<int> columns;
    for (const QList<QVariant>& signal : spy)
        columns << signal[0].toModelIndex().column() + 1;
    return columns;
}

int typed(Qt::Key key, Qt::KeyboardModifiers modifiers, const QString& text) {
    return typedKeyCode(QKeyEvent(QEvent::KeyPress, key, modifiers, text));
}

} // namespace

class TestRunGridCore : public QObject {
    Q_OBJECT
private slots:
    void timeCellTakesAnyReadableMoment() {
        QCOMPARE(RunCellText::settledTime(QStringLiteral("2:35pm"), Now),
                 QStringLiteral("02:35pm"));
        QCOMPARE(RunCellText::settledTime(QStringLiteral("14:35"), Now), QStringLiteral("02:35pm"));
        // A date alone is at midnight.
        QCOMPARE(RunCellText::settledTime(QStringLiteral("11/22/26"), Now),
                 QStringLiteral("12:00am"));
        QCOMPARE(RunCellText::settledTime(QStringLiteral("99:99"), Now), QStringLiteral("02:35pm"));
        QCOMPARE(RunCellText::settledTime(QString(), Now), QStringLiteral("02:35pm"));
    }

    void dateCellTakesAnyReadableMoment() {
        QCOMPARE(RunCellText::settledDate(QStringLiteral("11/22/2026"), Now),
                 QStringLiteral("11/22/26"));
        QCOMPARE(RunCellText::settledDate(QStringLiteral("2026-01-05"), Now),
                 QStringLiteral("01/05/26"));
        // A time alone falls on the first day of the calendar.
        QCOMPARE(RunCellText::settledDate(QStringLiteral("10:42am"), Now),
                 QStringLiteral("12/30/99"));
        QCOMPARE(RunCellText::settledDate(QStringLiteral("13/45"), Now),
                 QStringLiteral("11/22/26"));
    }

    void momentOfTimeAndDateTexts() {
        QCOMPARE(RunCellText::Moment(QStringLiteral("10:42am")),
                 QDateTime(QDate(1899, 12, 30), QTime(10, 42)));
        QCOMPARE(RunCellText::Moment(QStringLiteral("11/22/26")),
                 QDateTime(QDate(2026, 11, 22), QTime(0, 0)));
        QVERIFY(!RunCellText::Moment(QStringLiteral("teatime")));
        QVERIFY(!RunCellText::Moment(QString()));
    }

    void numberCellKeepsNumbersOnly() {
        QCOMPARE(RunCellText::settledNumber(QStringLiteral("-12.5")), QStringLiteral("-12.5"));
        QCOMPARE(RunCellText::settledNumber(QStringLiteral("x")), QString());
        QCOMPARE(RunCellText::settledNumber(QStringLiteral("1-2")), QString());
        QCOMPARE(RunCellText::settledNumber(QString()), QString());
    }

    void newRunIsStampedAndCarriesShiftDialInAndTimer1Only() {
        RunTable table;
        fillRun(table, 1);
        const int row = RunRows::appendRun(table, Now);
        QCOMPARE(row, 2);
        QCOMPARE(table.cell(2, 0), QStringLiteral("2"));
        QCOMPARE(table.cell(2, 1), QStringLiteral("02:35pm"));
        QCOMPARE(table.cell(2, 2), QStringLiteral("11/22/26"));
        for (int column = 3; column < table.cols(); ++column) {
            const bool carried = column == 15 || column == 16 || column == 17;
            QCOMPARE(table.cell(2, column), carried ? table.cell(1, column) : QString());
        }
    }

    void newRunCarriesInTheOrderShiftDialInTimer1() {
        RunTable table;
        fillRun(table, 1);
        QSignalSpy changes(&table, &RunTable::dataChanged);
        RunRows::appendRun(table, Now);
        QCOMPARE(changedColumns(changes), (QList<int>{1, 2, 16, 17, 15, 1}));
    }

    void onlyAnEvenNewRunIsBanded() {
        RunTable table;
        RunRows::appendRun(table, Now);
        RunRows::appendRun(table, Now);
        for (int column = 1; column < table.cols(); ++column) {
            QCOMPARE(table.look(2, column).background, CellColor::Band);
            QCOMPARE(table.look(3, column).background, CellColor::WindowBackground);
        }
    }

    void deletingTheOnlyRunBlanksItAndKeepsItsNumber() {
        RunTable table;
        fillRun(table, 1);
        RunRows::deleteRun(table, 1);
        QCOMPARE(table.tableRows(), 2);
        QCOMPARE(table.cell(1, 0), QStringLiteral("1"));
        for (int column = 1; column < table.cols(); ++column)
            QCOMPARE(table.cell(1, column), QString());
    }

    void deletingARunRenumbersTheRest() {
        RunTable table;
        for (int row = 1; row <= 3; ++row) {
            if (row > 1)
                table.addRun();
            fillRun(table, row);
        }
        RunRows::deleteRun(table, 2);
        QCOMPARE(table.tableRows(), 3);
        QCOMPARE(table.cell(2, 0), QStringLiteral("2"));
        QCOMPARE(table.cell(2, 12), QStringLiteral("r3c12"));
        QCOMPARE(table.cell(1, 12), QStringLiteral("r1c12"));
    }

    void clipboardCarriesColumns1To32() {
        RunTable table;
        table.addRun();
        fillRun(table, 1);
        const RunClipboard::Runs clipboard = RunClipboard::copy(table, 1, 1);
        QCOMPARE(clipboard.size(), 1);
        QCOMPARE(clipboard[0][0], QString());
        QCOMPARE(clipboard[0][1], QStringLiteral("r1c1"));
        QCOMPARE(clipboard[0][32], QStringLiteral("r1c32"));
        QCOMPARE(clipboard[0][33], QString());

        table.setCell(2, 33, QStringLiteral("7"));
        RunClipboard::paste(table, 2, clipboard);
        QCOMPARE(table.cell(2, 0), QStringLiteral("2"));
        QCOMPARE(table.cell(2, 5), QStringLiteral("r1c5"));
        QCOMPARE(table.cell(2, 32), QStringLiteral("r1c32"));
        QCOMPARE(table.cell(2, 33), QStringLiteral("7"));
    }

    void cutEmptiesColumns1To32() {
        RunTable table;
        fillRun(table, 1);
        const RunClipboard::Runs clipboard = RunClipboard::cut(table, 1, 1);
        QCOMPARE(clipboard.size(), 1);
        QCOMPARE(clipboard[0][20], QStringLiteral("r1c20"));
        for (int column = 1; column <= 32; ++column)
            QCOMPARE(table.cell(1, column), QString());
        QCOMPARE(table.cell(1, 33), QStringLiteral("r1c33"));
        QCOMPARE(table.cell(1, 0), QStringLiteral("1"));
    }

    void weatherGoesIntoItsColumnsInOrder() {
        RunTable table;
        table.setCell(1, 1, QStringLiteral("10:42am"));
        WeatherRecord weather;
        weather.ABP = 29.921f;
        weather.Temp = 71.5f;
        weather.RH = 43.2f;
        weather.AA = 1250;
        weather.AH = 5.1f;
        weather.GR = 45;
        weather.VP = 0.33f;
        weather.DP = -4;
        weather.ADR = 98.6f;
        weather.DA = 1410;
        weather.PA = 120;
        weather.WD = 275;
        weather.WS = 7;
        weather.WG = 11;
        weather.AL = 340;
        QSignalSpy changes(&table, &RunTable::dataChanged);
        writeRunWeather(table, 1, weather);
        QCOMPARE(changedColumns(changes),
                 (QList<int>{22, 23, 24, 19, 25, 26, 21, 27, 28, 20, 29, 30, 31, 32, 33}));
        const QStringList expected{"1250", "1410", "0.33", "29.921", "71.5", "43.2", "5.1", "45",
                                   "-4",   "98.6", "120",  "275",    "7",    "11",   "340"};
        for (int column = 19; column <= 33; ++column)
            QCOMPARE(table.cell(1, column), expected[column - 19]);
        QCOMPARE(table.cell(1, 1), QStringLiteral("10:42am"));
    }

    void typedKeyCodes() {
        QCOMPARE(typed(Qt::Key_C, Qt::ControlModifier, QStringLiteral("c")), 3);
        QCOMPARE(typed(Qt::Key_V, Qt::ControlModifier, QString(QChar(22))), 22);
        QCOMPARE(typed(Qt::Key_X, Qt::ControlModifier, QString()), 24);
        QCOMPARE(typed(Qt::Key_5, Qt::NoModifier, QStringLiteral("5")), int('5'));
        QCOMPARE(typed(Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r")), 13);
        QCOMPARE(typed(Qt::Key_Left, Qt::NoModifier, QString()), 0);
        QCOMPARE(typed(Qt::Key_Delete, Qt::NoModifier, QString(QChar(127))), 0);
    }
};

QTEST_MAIN(TestRunGridCore)
#include "tst_rungrid_core.moc"
