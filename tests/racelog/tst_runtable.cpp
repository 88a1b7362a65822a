#include "racelog/CellColor.h"
#include "racelog/ColumnTable.h"
#include "racelog/RunTable.h"

#include <QAbstractItemModelTester>
#include <QBrush>
#include <QFont>
#include <QSignalSpy>
#include <QTest>
#include <tuple>

namespace {

bool isBanded(const RunTable& table, int row, int column) {
    return table.look(row, column).background == CellColor::Band;
}

} // namespace

class TestRunTable : public QObject {
    Q_OBJECT
private slots:
    void newTableHasTheHeaderAndRunOne() {
        RunTable table;
        QCOMPARE(table.tableRows(), 2);
        QCOMPARE(table.cols(), 34);
        // The corner is the window's.
        QCOMPARE(table.cell(0, 0), QString());
        QCOMPARE(table.cell(1, 0), QStringLiteral("1"));
        for (int column = 1; column < table.cols(); ++column) {
            QCOMPARE(table.cell(0, column), ColumnTable::Columns[column].caption.toString());
            QCOMPARE(table.cell(1, column), QString());
        }
        QCOMPARE(table.cell(0, 14), QStringLiteral("Timer 2"));
        QCOMPARE(table.cell(0, 18), QStringLiteral("T. Temp"));
    }

    void cellsOutsideTheTableReadEmptyAndAreNotWritten() {
        RunTable table;
        QVERIFY(!table.setCell(2, 1, QStringLiteral("x")));
        QVERIFY(!table.setCell(1, 34, QStringLiteral("x")));
        QVERIFY(!table.setCell(-1, 0, QStringLiteral("x")));
        QVERIFY(!table.setCell(1, -1, QStringLiteral("x")));
        QCOMPARE(table.cell(2, 1), QString());
        QCOMPARE(table.cell(1, 34), QString());
        QCOMPARE(table.tableRows(), 2);
    }

    void addedRunsAreNumberedByTheirRow() {
        RunTable table;
        QCOMPARE(table.addRun(), 2);
        QCOMPARE(table.addRun(), 3);
        QCOMPARE(table.tableRows(), 4);
        QCOMPARE(table.cell(3, 0), QStringLiteral("3"));
        QCOMPARE(table.cell(3, 1), QString());
    }

    void removingARunNumbersTheRestAgain() {
        RunTable table;
        for (int i = 0; i < 3; ++i)
            table.addRun();
        for (int row = 1; row <= 4; ++row)
            table.setCell(row, 12, QStringLiteral("10.%1").arg(row));
        QVERIFY(table.removeRun(2));
        QCOMPARE(table.tableRows(), 4);
        QCOMPARE(table.cell(2, 12), QStringLiteral("10.3"));
        QCOMPARE(table.cell(3, 12), QStringLiteral("10.4"));
        for (int row = 1; row < table.tableRows(); ++row)
            QCOMPARE(table.cell(row, 0), QString::number(row));
    }

    void captionsAndRunNumbersAreNotWritten() {
        RunTable table;
        QVERIFY(!table.setCell(0, 5, QStringLiteral("x")));
        QVERIFY(!table.setCell(1, 0, QStringLiteral("x")));
        QCOMPARE(table.cell(0, 5), QStringLiteral("Delay Box"));
        QCOMPARE(table.cell(1, 0), QStringLiteral("1"));
    }

    void theOnlyRunAndTheHeaderAreNeverRemoved() {
        RunTable table;
        QVERIFY(!table.removeRun(1));
        QVERIFY(!table.removeRun(0));
        table.addRun();
        QVERIFY(!table.removeRun(0));
        QVERIFY(!table.removeRun(3));
        QCOMPARE(table.tableRows(), 3);
    }

    void oneRunHasNoBand() {
        RunTable table;
        table.paintRowBands();
        for (int column = 0; column < table.cols(); ++column)
            QVERIFY(!isBanded(table, 1, column));
    }

    void twoRunsBandTheSecond() {
        RunTable table;
        table.addRun();
        table.paintRowBands();
        QVERIFY(!isBanded(table, 2, 0));
        for (int column = 1; column < table.cols(); ++column) {
            QVERIFY(isBanded(table, 2, column));
            QVERIFY(!isBanded(table, 1, column));
        }
        QVERIFY(!isBanded(table, 0, 1));
    }

    void aNewRunPaintsOnlyItsOwnRow() {
        RunTable table;
        table.paintRowBand(table.addRun());
        QVERIFY(isBanded(table, 2, 33));
        table.paintRowBand(table.addRun());
        QVERIFY(!isBanded(table, 3, 33));
        QVERIFY(!isBanded(table, 1, 1));
    }

    void bandsTravelWithTheirRowsOnDelete() {
        RunTable table;
        table.addRun();
        table.addRun();
        table.paintRowBands();
        QVERIFY(table.removeRun(1));
        // The banded run 2 is now run 1; run 3 became run 2 and is not banded.
        QVERIFY(isBanded(table, 1, 5));
        QVERIFY(!isBanded(table, 2, 5));
        QVERIFY(table.runs().at(0).banded);
        QVERIFY(!table.runs().at(1).banded);
    }

    // Runs put back, as undo puts back a deleted run, come with their bands.
    void bandsTravelWithTheirRowsWhenPutBack() {
        RunTable table;
        table.addRun();
        table.addRun();
        table.paintRowBands();
        const RunTable::Runs before = table.runs();
        table.removeRun(2);
        table.restoreRuns(before);
        QCOMPARE(table.tableRows(), 4);
        QVERIFY(!isBanded(table, 1, 7));
        QVERIFY(isBanded(table, 2, 7));
        QVERIFY(!isBanded(table, 3, 7));
    }

    void theReferenceRunIsMarkedGreenAndBold() {
        RunTable table;
        table.addRun();
        table.addRun();
        QVERIFY(table.markReferenceRun(2));
        QCOMPARE(table.look(2, 0).background, CellColor::ReferenceRun);
        QVERIFY(table.look(2, 0).bold);
        QVERIFY(table.markReferenceRun(3));
        QCOMPARE(table.look(2, 0).background, CellColor::ButtonFace);
        QVERIFY(!table.look(2, 0).bold);
        QCOMPARE(table.look(3, 0).background, CellColor::ReferenceRun);
        QVERIFY(!table.markReferenceRun(0));
        QVERIFY(!table.markReferenceRun(4));
        QCOMPARE(table.look(3, 0).background, CellColor::ReferenceRun);
        QCOMPARE(table.look(1, 0).background, CellColor::ButtonFace);
    }

    void aReferenceRunThatIsBandedKeepsBothMarks() {
        RunTable table;
        table.addRun();
        table.paintRowBands();
        table.markReferenceRun(2);
        QCOMPARE(table.look(2, 0),
                 (RunTable::CellLook{CellColor::ReferenceRun, CellColor::ButtonText, true}));
        QCOMPARE(table.look(2, 1),
                 (RunTable::CellLook{CellColor::Band, CellColor::WindowText, false}));
        QCOMPARE(table.look(0, 4),
                 (RunTable::CellLook{CellColor::ButtonFace, CellColor::ButtonText, false}));
        table.unmarkReferenceRun();
        QCOMPARE(table.look(2, 0).background, CellColor::ButtonFace);
        QVERIFY(!table.look(2, 0).bold);
    }

    // A table of its own writes an edit made through the model; only run cells can be edited.
    void aTableOnItsOwnTakesEditsDirectly() {
        RunTable table;
        QVERIFY(table.setData(table.index(0, 11), QStringLiteral("10.95")));
        QCOMPARE(table.cell(1, 12), QStringLiteral("10.95"));
        QVERIFY(!table.setData(table.index(0, 11), QStringLiteral("9"), Qt::DisplayRole));
        QVERIFY(!table.setData(QModelIndex(), QStringLiteral("9")));
        QCOMPARE(table.cell(1, 12), QStringLiteral("10.95"));
        QVERIFY(table.flags(table.index(0, 0)).testFlag(Qt::ItemIsEditable));
        QCOMPARE(table.flags(QModelIndex()), Qt::NoItemFlags);
        QCOMPARE(table.data(table.index(0, 11), Qt::EditRole).toString(), QStringLiteral("10.95"));
    }

    void anEditThroughTheModelGoesWhereTheTableIsTold() {
        RunTable table;
        QList<std::tuple<int, int, QString>> edits;
        table.setCellEdit([&edits](int row, int column, const QString& text) {
            edits.append({row, column, text});
        });
        QVERIFY(table.setData(table.index(0, 2), QStringLiteral("Left")));
        QCOMPARE(edits.size(), 1);
        QCOMPARE(edits[0], std::make_tuple(1, 3, QStringLiteral("Left")));
        QCOMPARE(table.cell(1, 3), QString());
    }

    void colorsAreBlueGreenRed() {
        QCOMPARE(CellColor::toQColor(CellColor::Band), QColor(255, 255, 192));
        QCOMPARE(CellColor::toQColor(CellColor::ReferenceRun), QColor(0x12, 0xCD, 0x20));
        QCOMPARE(CellColor::toQColor(2149650), QColor(0x12, 0xCD, 0x20));
        QCOMPARE(CellColor::toQColor(CellColor::Link), QColor(0, 0, 255));
        QVERIFY(!CellColor::toQColor(CellColor::ButtonFace).isValid());
    }

    void viewsSeeRunsWithHeaderRowAndNumberColumnAsHeaders() {
        RunTable table;
        table.addRun();
        table.setCell(2, 12, QStringLiteral("10.95"));
        table.paintRowBands();
        table.markReferenceRun(2);
        QCOMPARE(table.rowCount(), 2);
        QCOMPARE(table.columnCount(), 33);
        QCOMPARE(table.data(table.index(1, 11)).toString(), QStringLiteral("10.95"));
        QCOMPARE(table.data(table.index(1, 11), Qt::BackgroundRole).value<QBrush>().color(),
                 QColor(255, 255, 192));
        QVERIFY(!table.data(table.index(0, 11), Qt::BackgroundRole).isValid());
        QCOMPARE(table.data(table.index(0, 0), Qt::TextAlignmentRole).toInt(),
                 int(Qt::AlignCenter));
        QCOMPARE(table.headerData(17, Qt::Horizontal).toString(), QStringLiteral("T. Temp"));
        QCOMPARE(table.headerData(1, Qt::Vertical).toString(), QStringLiteral("2"));
        QVERIFY(table.headerData(1, Qt::Vertical, Qt::FontRole).value<QFont>().bold());
        QCOMPARE(table.headerData(1, Qt::Vertical, Qt::BackgroundRole).value<QBrush>().color(),
                 QColor(0x12, 0xCD, 0x20));
        QVERIFY(!table.headerData(0, Qt::Vertical, Qt::FontRole).isValid());
    }

    void viewsAreToldOfEveryChange() {
        RunTable table;
        QAbstractItemModelTester tester(&table,
                                        QAbstractItemModelTester::FailureReportingMode::QtTest);
        QSignalSpy inserted(&table, &QAbstractItemModel::rowsInserted);
        QSignalSpy removed(&table, &QAbstractItemModel::rowsRemoved);
        QSignalSpy changed(&table, &QAbstractItemModel::dataChanged);
        QSignalSpy headers(&table, &QAbstractItemModel::headerDataChanged);

        table.addRun();
        table.addRun();
        QCOMPARE(inserted.count(), 2);
        QCOMPARE(inserted.at(1).at(1).toInt(), 2); // model row of run 3

        table.setCell(2, 5, QStringLiteral("0.2"));
        QCOMPARE(changed.count(), 1);
        QCOMPARE(changed.at(0).at(0).toModelIndex(), table.index(1, 4));

        table.removeRun(1);
        QCOMPARE(removed.count(), 1);
        QCOMPARE(headers.count(), 1); // the renumbered runs
        QCOMPARE(headers.at(0).at(0).value<Qt::Orientation>(), Qt::Vertical);

        changed.clear();
        table.paintRowBands();
        QCOMPARE(changed.count(), 1);
    }

    void holdsAThousandRuns() {
        RunTable table;
        for (int i = 0; i < 1000; ++i)
            table.addRun();
        QCOMPARE(table.tableRows(), 1002);
        QCOMPARE(table.cell(1001, 0), QStringLiteral("1001"));
        table.setCell(1001, 33, QStringLiteral("12"));
        QCOMPARE(table.data(table.index(1000, 32)).toString(), QStringLiteral("12"));
        table.paintRowBands();
        QVERIFY(isBanded(table, 1000, 1));
        QVERIFY(!isBanded(table, 1001, 1));
    }
};

QTEST_MAIN(TestRunTable)
#include "tst_runtable.moc"
