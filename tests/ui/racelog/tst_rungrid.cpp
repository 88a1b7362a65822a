#include "common/TestHome.h"
#include "core/DateText.h"
#include "core/ScriptedDialogs.h"
#include "feed/WeatherStation.h"
#include "racelog/CellColor.h"
#include "racelog/RaceLog.h"
#include "racelog/RunTable.h"
#include "ui/racelog/RunCellDelegate.h"
#include "ui/racelog/RunGrid.h"

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QPointer>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>
#include <memory>
#include <stdexcept>

namespace {

using Dialogs::Answer;
using Dialogs::Icon;

// A race log window reduced to what the run table needs: a race log and the grid over its
// runs.
class LogWindow {
public:
    // The clipboard is the one the test's logs share.
    LogWindow(WeatherStation& station, RunClipboard::Runs& runClipboard) : clipboard(runClipboard) {
        grid = new RunGrid(station, clipboard, document, &window);
        grid->setObjectName(QStringLiteral("gridLog"));
        auto* layout = new QVBoxLayout(&window);
        layout->addWidget(grid);
        window.resize(1000, 420);
        window.show();
    }
    ~LogWindow() {
        if (grid) {
            for (QMenu* menu : {grid->rowMenu(), grid->columnMenu()})
                menu->hide();
        }
    }

    // The window in front, with the keyboard.
    bool ready() {
        window.activateWindow();
        return QTest::qWaitForWindowActive(&window);
    }

    template <class Part> Part* part(const char* name) {
        return window.findChild<Part*>(QLatin1String(name));
    }
    QLineEdit* txtTime() { return part<QLineEdit>("txtTime"); }
    QLineEdit* txtCtrlDate() { return part<QLineEdit>("txtCtrlDate"); }
    QComboBox* cboLane() { return part<QComboBox>("cboLane"); }
    QLineEdit* txtEdit() { return part<QLineEdit>("txtEdit"); }
    QAction* action(const char* name) { return part<QAction>(name); }
    QAbstractButton* corner() { return grid->findChild<QAbstractButton*>(); }
    QWidget* runNumbers() { return grid->verticalHeader()->viewport(); }

    // The editors that are open.
    QStringList openEditors() {
        QStringList open;
        for (QWidget* editor :
             {static_cast<QWidget*>(txtTime()), static_cast<QWidget*>(txtCtrlDate()),
              static_cast<QWidget*>(cboLane()), static_cast<QWidget*>(txtEdit())})
            if (editor->isVisible())
                open << editor->objectName();
        return open;
    }

    QPoint cellCentre(int row, int column) {
        return grid->visualRect(table.index(row - 1, column - 1)).center();
    }
    QPoint runNumberCentre(int row) {
        QHeaderView* header = grid->verticalHeader();
        return {header->width() / 2,
                header->sectionViewportPosition(row - 1) + header->sectionSize(row - 1) / 2};
    }

    // The grid with the focus on a cell, as after a click on it.
    void focusCell(int row, int column) {
        grid->setFocus();
        grid->setCurrentRunCell(row, column);
    }
    void typeOnGrid(int row, int column, char key) {
        focusCell(row, column);
        QTest::keyClick(grid, key);
    }

    void rightPressRunNumber(int row) {
        QTest::mousePress(runNumbers(), Qt::RightButton, {}, runNumberCentre(row));
    }
    // A command of the row menu, opened on a run number and chosen.
    void rowCommand(int row, const char* name) {
        rightPressRunNumber(row);
        QTest::mouseRelease(runNumbers(), Qt::RightButton, {}, runNumberCentre(row));
        grid->rowMenu()->hide();
        action(name)->trigger();
    }

    QStringList referenceItems() const { return document.content().refRunItems; }
    int referenceIndex() const { return document.content().refRunIndex; }

    // Declared first so that the grid, in the window, goes before the log it shows.
    RunClipboard::Runs& clipboard;
    RaceLog document;
    RunTable& table = document.runs();
    QWidget window;
    QPointer<RunGrid> grid;
};

QStringList items(const QComboBox* box) {
    QStringList all;
    for (int i = 0; i < box->count(); ++i)
        all << box->itemText(i);
    return all;
}

// A menu as the user reads it: "name:caption" for an item, "-" for a separator, ">caption"
// for a submenu.
QStringList menuLines(const QMenu* menu) {
    QStringList lines;
    for (const QAction* action : menu->actions()) {
        if (action->isSeparator())
            lines << QStringLiteral("-");
        else if (action->menu())
            lines << QStringLiteral(">") + action->text();
        else
            lines << action->objectName() + u':' + action->text();
    }
    return lines;
}

void fillRun(RunTable& table, int row) {
    for (int column = 1; column < table.cols(); ++column)
        table.setCell(row, column, QStringLiteral("%1.%2").arg(row).arg(column));
}

// The time of a run made between two readings of the clock.
bool isTimeBetween(const QString& cell, const QString& before, const QString& after) {
    return cell == before || cell == after;
}

} // namespace

class TestRunGrid : public QObject {
    Q_OBJECT
    std::unique_ptr<TestHome> home;
    std::unique_ptr<WeatherStation> station;
    RunClipboard::Runs runClipboard;

private slots:
    void init() {
        home = std::make_unique<TestHome>();
        station = std::make_unique<WeatherStation>();
        runClipboard.clear();
    }
    void cleanup() { home.reset(); }

    // --- The view --------------------------------------------------------------------------

    void widthsAndHiddenColumnsAreTheGrids() {
        LogWindow log(*station, runClipboard);
        QCOMPARE(log.grid->verticalHeader()->width(), 38);
        for (int section = 0; section < 33; ++section)
            QCOMPARE(log.grid->columnWidth(section), 67);
        log.table.setCell(1, 7, QStringLiteral("5.1"));
        QVERIFY(log.grid->hideRunColumn(7));
        QVERIFY(log.grid->isColumnHidden(6));
        QVERIFY(log.grid->horizontalHeader()->isSectionHidden(6));
        QVERIFY(log.grid->isRunColumnHidden(7));
        QCOMPARE(log.table.cell(1, 7), QStringLiteral("5.1"));
        QVERIFY(log.grid->showRunColumn(7));
        QVERIFY(!log.grid->isColumnHidden(6));
        QCOMPARE(log.grid->columnWidth(6), 76);
        QCOMPARE(log.table.cell(1, 7), QStringLiteral("5.1"));
    }

    void numberTimeAndDateCannotBeHidden() {
        LogWindow log(*station, runClipboard);
        for (int column : {0, 1, 2}) {
            QVERIFY(!log.grid->hideRunColumn(column));
            QVERIFY(!log.grid->isRunColumnHidden(column));
        }
        QVERIFY(!log.grid->hideRunColumn(34));
        QVERIFY(!log.grid->hideRunColumn(-1));
    }

    void theShownColumnsLeaveOutTheHiddenOnes() {
        LogWindow log(*station, runClipboard);
        QList<int> all;
        for (int column = 0; column < 34; ++column)
            all << column;
        QCOMPARE(log.grid->shownColumns(), all);
        log.grid->hideRunColumn(9);
        log.grid->hideRunColumn(33);
        all.removeOne(9);
        all.removeOne(33);
        QCOMPARE(log.grid->shownColumns(), all);
    }

    void cornerIsABlueHandle() {
        LogWindow log(*station, runClipboard);
        QVERIFY(log.ready());
        QAbstractButton* corner = log.corner();
        QVERIFY(corner && corner->isVisible());
        QCOMPARE(log.grid->cornerText(), QStringLiteral(">>>"));
        const QImage image = corner->grab().toImage();
        int blue = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x) {
                const QColor pixel = image.pixelColor(x, y);
                blue += pixel.blue() > 200 && pixel.red() < 80 && pixel.green() < 80;
            }
        QVERIFY(blue > 3);
    }

    void cornerClickWithAnyButtonTogglesThePanel() {
        LogWindow log(*station, runClipboard);
        QVERIFY(log.ready());
        QSignalSpy toggles(log.grid, &RunGrid::panelToggleRequested);
        QTest::mouseClick(log.corner(), Qt::LeftButton);
        QCOMPARE(toggles.size(), 1);
        QTest::mousePress(log.corner(), Qt::RightButton);
        QCOMPARE(toggles.size(), 2);
        QTest::mouseRelease(log.corner(), Qt::RightButton);
        log.grid->columnMenu()->hide();
        QTest::mouseClick(log.corner(), Qt::MiddleButton);
        QCOMPARE(toggles.size(), 3);
        // The corner never selects the whole table.
        QVERIFY(!log.grid->selectionModel()->isSelected(log.table.index(0, 5)));
    }

    // --- New Run -----------------------------------------------------------------------------

    void newRunInABlankLogCarriesBlanksAndBandsRow2() {
        LogWindow log(*station, runClipboard);
        QVERIFY(log.ready());
        const QString before = DateText::timeText(QTime::currentTime());
        log.rowCommand(1, "miNewRun");
        const QString after = DateText::timeText(QTime::currentTime());
        QCOMPARE(log.table.tableRows(), 3);
        QCOMPARE(log.table.cell(2, 0), QStringLiteral("2"));
        QVERIFY(isTimeBetween(log.table.cell(2, 1), before, after));
        QCOMPARE(log.table.cell(2, 2), DateText::runDateText(QDate::currentDate()));
        for (int column = 3; column < log.table.cols(); ++column)
            QCOMPARE(log.table.cell(2, column), QString());
        for (int column = 1; column < log.table.cols(); ++column) {
            QCOMPARE(log.table.look(2, column).background, CellColor::Band);
            QCOMPARE(log.table.look(1, column).background, CellColor::WindowBackground);
        }
        QCOMPARE(log.referenceItems(), (QStringList{"1", "2"}));
        QCOMPARE(log.grid->currentRunRow(), 2);
    }

    void newRunCarriesShiftTimeDialInAndTimer1Only() {
        LogWindow log(*station, runClipboard);
        QVERIFY(log.ready());
        fillRun(log.table, 1);
        log.grid->setCurrentRunCell(1, 7);
        log.action("miNewRunNum")->trigger();
        QCOMPARE(log.table.tableRows(), 3);
        for (int column = 3; column < log.table.cols(); ++column) {
            const bool carried = column == 15 || column == 16 || column == 17;
            QCOMPARE(log.table.cell(2, column), carried ? log.table.cell(1, column) : QString());
        }
        log.grid->newRun();
        QCOMPARE(log.table.cell(3, 16), QStringLiteral("1.16"));
        QCOMPARE(log.table.look(3, 10).background, CellColor::WindowBackground);
        QCOMPARE(log.referenceItems(), (QStringList{"1", "2", "3"}));
        QCOMPARE(log.grid->currentRunRow(), 3);
    }

    // --- Editing a cell ----------------------------------------------------------------------

    // The kind of each column, worked out from what its cells hold: the time of the run, its
    // date and its lane have editors of their own; every other column holds a number.
    void eachColumnOpensTheEditorOfItsKind() {
        LogWindow log(*station, runClipboard);
        QVERIFY(log.ready());
        auto* delegate = qobject_cast<RunCellDelegate*>(log.grid->itemDelegate());
        QVERIFY(delegate);
        const QStyleOptionViewItem option;
        for (int column = 1; column < log.table.cols(); ++column) {
            const QString caption = log.table.cell(0, column);
            const QString expected = caption == u"Time"   ? QStringLiteral("txtTime")
                                     : caption == u"Date" ? QStringLiteral("txtCtrlDate")
                                     : caption == u"Lane" ? QStringLiteral("cboLane")
                                                          : QStringLiteral("txtEdit");
            const QModelIndex cell = log.table.index(0, column - 1);
            QWidget* editor = delegate->createEditor(log.grid->viewport(), option, cell);
            QVERIFY(editor);
            QCOMPARE(editor->objectName(), expected);

            log.focusCell(1, column);
            QTest::keyClick(log.grid, Qt::Key_Return);
            QCOMPARE(log.openEditors(), QStringList{expected});
            QTest::keyClick(log.grid->focusWidget(), Qt::Key_Escape);
            QCOMPARE(log.openEditors(), QStringList());
        }
    }

    void editorsAreHiddenUntilUsed() {
        LogWindow log(*station, runClipboard);
        QVERIFY(log.ready());
        QVERIFY(log.txtTime() && log.txtCtrlDate() && log.cboLane() && log.txtEdit());
        QCOMPARE(log.openEditors(), QStringList());
    }

    void firstDigitInATimeCellIsLost() {
        LogWindow log(*station, runClipboard);
        QVERIFY(log.ready());
        log.table.setCell(1, 1, QStringLiteral("10:42am"));
        log.focusCell(1, 1);
        QTest::keyClick(log.grid, Qt::Key_Space);
        QCOMPARE(log.openEditors(), QStringList{"txtTime"});
        QCOMPARE(log.txtTime()->text(), QStringLiteral("10:42am"));
        QCOMPARE(log.txtTime()->selectedText(), QStringLiteral("10:42am"));
        QTest::keyClick(log.txtTime(), Qt::Key_Escape);

        // The cell changes; the editor still holds what it had, and the digit goes nowhere.
        log.table.setCell(1, 1, QStringLiteral("11:15am"));
        QTest::keyClick(log.grid, '5');
        QCOMPARE(log.openEditors(), QStringList{"txtTime"});
        QCOMPARE(log.txtTime()->text(), QStringLiteral("10:42am"));
        QVERIFY(log.txtTime()->hasFocus());
    }

    void firstDigitInADateCellIsLost() {
        LogWindow log(*station, runClipboard);
        QVERIFY(log.ready());
        log.table.setCell(1, 2, QStringLiteral("11/22/26"));
        log.typeOnGrid(1, 2, '7');
        QCOMPARE(log.openEditors(), QStringList{"txtCtrlDate"});
        QCOMPARE(log.txtCtrlDate()->text(), QString());
        QTest::keyClick(log.txtCtrlDate(), Qt::Key_Escape);
        QTest::keyClick(log.grid, Qt::Key_Return);
        QCOMPARE(log.txtCtrlDate()->text(), QStringLiteral("11/22/26"));
    }

    void timeIsFilteredAndPutRight() {
        LogWindow log(*station, runClipboard);
        QVERIFY(log.ready());
        log.focusCell(1, 1);
        QTest::keyClick(log.grid, Qt::Key_Return);
        QTest::keyClicks(log.txtTime(), QStringLiteral("2x:3b5 pm!"));
        QCOMPARE(log.txtTime()->text(), QStringLiteral("2:35pm"));
        QTest::keyClick(log.txtTime(), Qt::Key_Return);
        QCOMPARE(log.table.cell(1, 1), QStringLiteral("02:35pm"));

        QTest::keyClick(log.grid, Qt::Key_Return);
        QTest::keyClicks(log.txtTime(), QStringLiteral("99"));
        const QString before = DateText::timeText(QTime::currentTime());
        QTest::keyClick(log.txtTime(), Qt::Key_Return);
        const QString after = DateText::timeText(QTime::currentTime());
        QVERIFY(isTimeBetween(log.table.cell(1, 1), before, after));
    }

    void dateIsFilteredAndPutRight() {
        LogWindow log(*station, runClipboard);
        QVERIFY(log.ready());
        log.focusCell(1, 2);
        QTest::keyClick(log.grid, Qt::Key_Return);
        QTest::keyClicks(log.txtCtrlDate(), QStringLiteral("11/2a2/2026"));
        QCOMPARE(log.txtCtrlDate()->text(), QStringLiteral("11/22/2026"));
        QTest::keyClick(log.txtCtrlDate(), Qt::Key_Return);
        QCOMPARE(log.table.cell(1, 2), QStringLiteral("11/22/26"));

        QTest::keyClick(log.grid, Qt::Key_Return);
        QTest::keyClicks(log.txtCtrlDate(), QStringLiteral("99/99"));
        QTest::keyClick(log.txtCtrlDate(), Qt::Key_Return);
        QCOMPARE(log.table.cell(1, 2), DateText::runDateText(QDate::currentDate()));
    }

    void firstLetterInANumberCellIsTakenAndEmptiedOnLeaving() {
        LogWindow log(*station, runClipboard);
        QVERIFY(log.ready());
        log.table.setCell(1, 19, QStringLiteral("1250"));
        log.typeOnGrid(1, 19, 'x');
        QCOMPARE(log.openEditors(), QStringList{"txtEdit"});
        QCOMPARE(log.txtEdit()->text(), QStringLiteral("x"));
        QCOMPARE(log.txtEdit()->cursorPosition(), 1);
        // After the first key the filter holds.
        QTest::keyClick(log.txtEdit(), 'y');
        QCOMPARE(log.txtEdit()->text(), QStringLiteral("x"));
        QTest::keyClick(log.txtEdit(), Qt::Key_Return);
        QCOMPARE(log.table.cell(1, 19), QString());
        QCOMPARE(log.txtEdit()->text(), QString());
    }

    void numberCellTakesASignedNumber() {
        LogWindow log(*station, runClipboard);
        QVERIFY(log.ready());
        log.typeOnGrid(1, 6, '-');
        QTest::keyClicks(log.txtEdit(), QStringLiteral("1a.2 5"));
        QCOMPARE(log.txtEdit()->text(), QStringLiteral("-1.25"));
        QTest::keyClick(log.txtEdit(), Qt::Key_Return);
        QCOMPARE(log.table.cell(1, 6), QStringLiteral("-1.25"));
        QVERIFY(log.grid->hasFocus());
        QCOMPARE(log.openEditors(), QStringList());
    }

    void clipboardKeysOfAnEditorAreNotFiltered() {
        LogWindow log(*station, runClipboard);
        QVERIFY(log.ready());
        QGuiApplication::clipboard()->setText(QStringLiteral("abc"));
        log.focusCell(1, 6);
        QTest::keyClick(log.grid, Qt::Key_Return);
        QTest::keyClick(log.txtEdit(), Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(log.txtEdit()->text(), QStringLiteral("abc"));
        QTest::keyClick(log.txtEdit(), Qt::Key_Return);
        QCOMPARE(log.table.cell(1, 6), QString());
    }

    void doubleClickOpensTheEditorWithTheCellSelected() {
        LogWindow log(*station, runClipboard);
        QVERIFY(log.ready());
        log.table.setCell(1, 19, QStringLiteral("1250"));
        log.grid->scrollTo(log.table.index(0, 18));
        const QPoint cell = log.cellCentre(1, 19);
        QTest::mouseClick(log.grid->viewport(), Qt::LeftButton, {}, cell);
        QTest::mouseDClick(log.grid->viewport(), Qt::LeftButton, {}, cell);
        QCOMPARE(log.openEditors(), QStringList{"txtEdit"});
        QCOMPARE(log.txtEdit()->text(), QStringLiteral("1250"));
        QCOMPARE(log.txtEdit()->selectedText(), QStringLiteral("1250"));
        const QRect place = log.grid->visualRect(log.table.index(0, 18));
        QCOMPARE(log.txtEdit()->geometry().topLeft(), place.topLeft());
        QCOMPARE(log.txtEdit()->width(), place.width() - 1);
    }

    void doubleClickOutsideTheRunsOpensNothing() {
        LogWindow log(*station, runClipboard);
        QVERIFY(log.ready());
        log.grid->setCurrentRunCell(1, 4);
        const QPoint below(log.cellCentre(1, 4).x(), log.grid->viewport()->height() - 5);
        QTest::mouseClick(log.grid->viewport(), Qt::LeftButton, {}, below);
        QTest::mouseDClick(log.grid->viewport(), Qt::LeftButton, {}, below);
        QCOMPARE(log.openEditors(), QStringList());
    }

    void escapeKeepsTheOldText() {
        LogWindow log(*station, runClipboard);
        QVERIFY(log.ready());
        log.table.setCell(1, 19, QStringLiteral("1250"));
        log.focusCell(1, 19);
        QTest::keyClick(log.grid, Qt::Key_Return);
        QTest::keyClicks(log.txtEdit(), QStringLiteral("99"));
        QTest::keyClick(log.txtEdit(), Qt::Key_Escape);
        QCOMPARE(log.table.cell(1, 19), QStringLiteral("1250"));
        QCOMPARE(log.openEditors(), QStringList());
        QVERIFY(log.grid->hasFocus());
    }

    void upAndDownCommitAndMoveARow() {
        LogWindow log(*station, runClipboard);
        QVERIFY(log.ready());
        log.grid->newRun();
        log.grid->newRun();
        log.typeOnGrid(2, 19, '7');
        QTest::keyClick(log.txtEdit(), Qt::Key_Up);
        QCOMPARE(log.table.cell(2, 19), QStringLiteral("7"));
        QCOMPARE(log.grid->currentRunRow(), 1);
        QCOMPARE(log.grid->currentRunColumn(), 19);
        QCOMPARE(log.openEditors(), QStringList());

        QTest::keyClick(log.grid, '8');
        QTest::keyClick(log.txtEdit(), Qt::Key_Up);
        QCOMPARE(log.table.cell(1, 19), QStringLiteral("8"));
        QCOMPARE(log.grid->currentRunRow(), 1);

        QTest::keyClick(log.grid, '9');
        QTest::keyClick(log.txtEdit(), Qt::Key_Down);
        QCOMPARE(log.table.cell(1, 19), QStringLiteral("9"));
        QCOMPARE(log.grid->currentRunRow(), 2);

        log.grid->setCurrentRunCell(3, 19);
        QTest::keyClick(log.grid, '4');
        QTest::keyClick(log.txtEdit(), Qt::Key_Down);
        QCOMPARE(log.table.cell(3, 19), QStringLiteral("4"));
        QCOMPARE(log.grid->currentRunRow(), 3);
    }

    void laneOffersLeftAndRightOnly() {
        LogWindow log(*station, runClipboard);
        QVERIFY(log.ready());
        QComboBox* lane = log.cboLane();
        QCOMPARE(items(lane), (QStringList{"Left", "Right"}));
        QVERIFY(!lane->isEditable());

        log.table.setCell(1, 3, QStringLiteral("Left"));
        log.typeOnGrid(1, 3, ' ');
        QCOMPARE(log.openEditors(), QStringList{"cboLane"});
        QCOMPARE(lane->currentIndex(), 0);
        QTest::keyClick(lane, Qt::Key_Escape);

        log.table.setCell(1, 3, QStringLiteral("Right"));
        QTest::keyClick(log.grid, Qt::Key_Return);
        QCOMPARE(lane->currentIndex(), 1);
        QTest::keyClick(lane, Qt::Key_Escape);

        log.table.setCell(1, 3, QStringLiteral("lane"));
        QTest::keyClick(log.grid, Qt::Key_Return);
        QCOMPARE(lane->currentIndex(), 0);
        QTest::keyClick(lane, Qt::Key_Escape);

        log.table.setCell(1, 3, QStringLiteral("far"));
        QTest::keyClick(log.grid, Qt::Key_Return);
        QCOMPARE(lane->currentIndex(), 1);

        // Typing can only pick one of the two.
        QTest::keyClicks(lane, QStringLiteral("l"));
        QTest::keyClick(lane, Qt::Key_Return);
        QCOMPARE(log.table.cell(1, 3), QStringLiteral("Left"));
    }

    void laneKeepsItsItemForATypedCharacter() {
        LogWindow log(*station, runClipboard);
        QVERIFY(log.ready());
        log.table.setCell(1, 3, QStringLiteral("Right"));
        log.typeOnGrid(1, 3, 'x');
        QCOMPARE(log.cboLane()->currentIndex(), 0);
        QTest::keyClick(log.cboLane(), Qt::Key_Return);
        QCOMPARE(log.table.cell(1, 3), QStringLiteral("Left"));
    }

    void upAndDownInTheLaneChangeTheItem() {
        LogWindow log(*station, runClipboard);
        QVERIFY(log.ready());
        log.grid->newRun();
        log.table.setCell(1, 3, QStringLiteral("Left"));
        log.typeOnGrid(1, 3, ' ');
        QTest::keyClick(log.cboLane(), Qt::Key_Down);
        QCOMPARE(log.cboLane()->currentIndex(), 1);
        QCOMPARE(log.openEditors(), QStringList{"cboLane"});
        QCOMPARE(log.grid->currentRunRow(), 1);
        QTest::keyClick(log.cboLane(), Qt::Key_Return);
        QCOMPARE(log.table.cell(1, 3), QStringLiteral("Right"));
    }

    void leavingACellOrScrollingCommits() {
        LogWindow log(*station, runClipboard);
        QVERIFY(log.ready());
        log.grid->newRun();
        log.typeOnGrid(1, 4, '3');
        log.grid->setCurrentRunCell(2, 4);
        QCOMPARE(log.table.cell(1, 4), QStringLiteral("3"));
        QCOMPARE(log.openEditors(), QStringList());
        QVERIFY(log.grid->hasFocus());

        log.typeOnGrid(2, 5, '6');
        log.grid->horizontalScrollBar()->setValue(200);
        QCOMPARE(log.table.cell(2, 5), QStringLiteral("6"));
        QCOMPARE(log.openEditors(), QStringList());
    }

    void focusBackToTheGridCommits() {
        LogWindow log(*station, runClipboard);
        QVERIFY(log.ready());
        log.typeOnGrid(1, 8, '5');
        QTest::mouseClick(log.grid->viewport(), Qt::LeftButton, {}, log.cellCentre(1, 1));
        QCOMPARE(log.table.cell(1, 8), QStringLiteral("5"));
        QCOMPARE(log.openEditors(), QStringList());
    }

    void hiddenColumnsOpenNoEditor() {
        LogWindow log(*station, runClipboard);
        QVERIFY(log.ready());
        log.grid->setCurrentRunCell(1, 9);
        log.grid->setFocus();
        log.grid->hideRunColumn(9);
        QTest::keyClick(log.grid, '1');
        QCOMPARE(log.openEditors(), QStringList());
    }

    void aGridGoneWithAnEditorOpenWritesNothing() {
        LogWindow log(*station, runClipboard);
        QVERIFY(log.ready());
        log.table.setCell(1, 1, QStringLiteral("10:42am"));
        log.focusCell(1, 1);
        QTest::keyClick(log.grid, Qt::Key_Return);
        QTest::keyClicks(log.txtTime(), QStringLiteral("3"));
        QVERIFY(log.txtTime()->hasFocus());
        delete log.grid;
        QCOMPARE(log.table.cell(1, 1), QStringLiteral("10:42am"));
        QCOMPARE(log.window.findChild<QLineEdit*>(), nullptr);
    }

    // --- Tab -------------------------------------------------------------------------------

    void tabFromTheLastColumnGoesToColumn1OfTheSameRun() {
        LogWindow log(*station, runClipboard);
        QVERIFY(log.ready());
        log.grid->newRun();
        log.focusCell(2, 33);
        QTest::keyClick(log.grid, Qt::Key_Tab);
        QCOMPARE(log.grid->currentRunRow(), 2);
        QCOMPARE(log.grid->currentRunColumn(), 1);
        QCOMPARE(log.grid->horizontalScrollBar()->value(), 0);
        QVERIFY(log.grid->hasFocus());
    }

    void tabPassesOverHiddenColumns() {
        LogWindow log(*station, runClipboard);
        QVERIFY(log.ready());
        log.grid->hideRunColumn(5);
        log.grid->hideRunColumn(6);
        log.focusCell(1, 4);
        QTest::keyClick(log.grid, Qt::Key_Tab);
        QCOMPARE(log.grid->currentRunColumn(), 7);

        log.grid->hideRunColumn(33);
        log.grid->setCurrentRunCell(1, 32);
        QTest::keyClick(log.grid, Qt::Key_Tab);
        QCOMPARE(log.grid->currentRunColumn(), 1);
        QCOMPARE(log.openEditors(), QStringList());
    }

    void tabToAColumnOffScreenMakesItTheLeftmost() {
        LogWindow log(*station, runClipboard);
        QVERIFY(log.ready());
        const QRect screen = log.grid->viewport()->rect();
        int column = 1;
        while (screen.contains(log.grid->visualRect(log.table.index(0, column))))
            ++column;
        // column + 1 is the first run column not wholly on screen.
        log.focusCell(1, column);
        QTest::keyClick(log.grid, Qt::Key_Tab);
        QCOMPARE(log.grid->currentRunColumn(), column + 1);
        QCOMPARE(log.grid->visualRect(log.table.index(0, column)).left(), 0);
    }

    // --- Menus -----------------------------------------------------------------------------

    void menusHoldTheirItemsInOrder() {
        LogWindow log(*station, runClipboard);
        QMenu showColumn(QStringLiteral("Show Column"));
        log.grid->setShowColumnMenu(&showColumn);
        QMenu* column = log.grid->columnMenu();
        QCOMPARE(column->objectName(), QStringLiteral("miColumn"));
        QCOMPARE(column->title(), QStringLiteral("Column"));
        QCOMPARE(menuLines(column), (QStringList{"miNewRunNum:New Run", "-", ">Show Column"}));
        QMenu* row = log.grid->rowMenu();
        QCOMPARE(row->objectName(), QStringLiteral("miRow"));
        QCOMPARE(row->title(), QStringLiteral("Row"));
        // The row menu's entries stand in this order; entries for reports that join later
        // take their places among them.
        const QStringList order = {"miReferenceRun:Reference Run",
                                   "miRunComplete:Run Complete...",
                                   "miGetLoggedWeather:Get Logged Weather...",
                                   "miGetWeather:Get Current Weather...",
                                   "miiCardWeather:Get iCard && Weather...",
                                   "miCut:Cut",
                                   "miCopy:Copy",
                                   "miPaste:Paste",
                                   "miPredict:Predict...",
                                   "miPredictionCheck:Prediction Check...",
                                   "miNotes:Notes...",
                                   "miSettings:Settings...",
                                   "miIncrementalTimes:Incremental Times...",
                                   "miRaceLog:Race Log...",
                                   "miAnnotations:Annotations...",
                                   "miRacepak:Racepak",
                                   "miNewRun:New Run",
                                   "miDelete:Delete Run#"};
        const QStringList lines = menuLines(row);
        QCOMPARE(lines.value(2), QStringLiteral("-"));
        QStringList entries = lines;
        entries.removeAll(QStringLiteral("-"));
        qsizetype last = -1;
        for (const QString& entry : entries) {
            const qsizetype at = order.indexOf(entry);
            QVERIFY2(at > last, qPrintable(entry));
            last = at;
        }
        for (const QString& entry : order)
            QVERIFY2(entries.contains(entry), qPrintable(entry));
        // The time slip import stands with the two weather commands, the last of their group.
        const qsizetype slip =
            lines.indexOf(QStringLiteral("miiCardWeather:Get iCard && Weather..."));
        QCOMPARE(lines.mid(slip - 2, 4),
                 (QStringList{"miGetLoggedWeather:Get Logged Weather...",
                              "miGetWeather:Get Current Weather...",
                              "miiCardWeather:Get iCard && Weather...", "-"}));
        // "Racepak" closes the group of reports, before the separator above "New Run".
        const qsizetype racepak = lines.indexOf(QStringLiteral("miRacepak:Racepak"));
        QCOMPARE(lines.mid(racepak - 1, 4),
                 (QStringList{"miAnnotations:Annotations...", "miRacepak:Racepak", "-",
                              "miNewRun:New Run"}));

        // A second submenu takes the place of the first.
        QMenu other(QStringLiteral("Other"));
        log.grid->setShowColumnMenu(&other);
        QCOMPARE(menuLines(column), (QStringList{"miNewRunNum:New Run", "-", ">Other"}));
    }

    void rightPressOnARunNumberOpensTheRowMenuForThatRun() {
        LogWindow log(*station, runClipboard);
        QVERIFY(log.ready());
        log.grid->newRun();
        log.grid->newRun();
        log.typeOnGrid(1, 10, '5');
        QVERIFY(log.document.selectReferenceRun(2));
        log.rightPressRunNumber(3);
        QCOMPARE(log.table.cell(1, 10), QStringLiteral("5"));
        QCOMPARE(log.grid->currentRunRow(), 3);
        QVERIFY(log.grid->rowMenu()->isVisible());
        QCOMPARE(log.action("miDelete")->text(), QStringLiteral("Delete Run# 3"));
        QVERIFY(log.action("miReferenceRun")->isChecked());

        // The release of that press opens no column menu over the row menu.
        QTest::mouseRelease(log.runNumbers(), Qt::RightButton, {}, log.runNumberCentre(3));
        QVERIFY(!log.grid->columnMenu()->isVisible());
        QVERIFY(log.grid->rowMenu()->isVisible());
        log.grid->rowMenu()->hide();

        log.rightPressRunNumber(2);
        QVERIFY(!log.action("miReferenceRun")->isChecked());
        QCOMPARE(log.action("miDelete")->text(), QStringLiteral("Delete Run# 2"));
    }

    void rightPressBelowTheRunsOpensNoRowMenu() {
        LogWindow log(*station, runClipboard);
        QVERIFY(log.ready());
        QTest::mousePress(log.runNumbers(), Qt::RightButton, {},
                          QPoint(10, log.runNumbers()->height() - 5));
        QVERIFY(!log.grid->rowMenu()->isVisible());
    }

    void rightReleaseOnACellCommitsAndOpensTheColumnMenu() {
        LogWindow log(*station, runClipboard);
        QVERIFY(log.ready());
        log.typeOnGrid(1, 12, '9');
        QTest::mouseRelease(log.grid->viewport(), Qt::RightButton, {}, log.cellCentre(1, 4));
        QCOMPARE(log.table.cell(1, 12), QStringLiteral("9"));
        QVERIFY(log.grid->columnMenu()->isVisible());
        QVERIFY(!log.grid->rowMenu()->isVisible());
    }

    void rightReleaseOnTheHeaderRowOpensTheColumnMenu() {
        LogWindow log(*station, runClipboard);
        QVERIFY(log.ready());
        QWidget* header = log.grid->horizontalHeader()->viewport();
        QTest::mouseClick(header, Qt::RightButton, {}, QPoint(20, 5));
        QVERIFY(log.grid->columnMenu()->isVisible());
    }

    void aFailureOnARunNumberIsReported() {
        LogWindow log(*station, runClipboard);
        QVERIFY(log.ready());
        ScriptedDialogs dialogs;
        connect(log.grid->rowMenu(), &QMenu::aboutToShow, this,
                [] { throw std::runtime_error("menu failed"); });
        log.rightPressRunNumber(1);
        QCOMPARE(dialogs.messages.size(), 1);
        QCOMPARE(dialogs.messages[0].text,
                 QStringLiteral("Error detected in gridLog MouseDown windows event!"));
        QCOMPARE(dialogs.messages[0].icon, Icon::Critical);
    }

    void panelCommandsAskForTheirTab() {
        LogWindow log(*station, runClipboard);
        QVERIFY(log.ready());
        QSignalSpy tabs(log.grid, &RunGrid::panelTabRequested);
        log.rowCommand(1, "miPredict");
        log.rowCommand(1, "miNotes");
        log.rowCommand(1, "miSettings");
        QCOMPARE(tabs.size(), 3);
        QCOMPARE(tabs[0][0].toInt(), 2);
        QCOMPARE(tabs[1][0].toInt(), 1);
        QCOMPARE(tabs[2][0].toInt(), 0);
    }

    void referenceRunAsksForThatRun() {
        LogWindow log(*station, runClipboard);
        QVERIFY(log.ready());
        log.grid->newRun();
        QSignalSpy reference(log.grid, &RunGrid::referenceRunRequested);
        log.rowCommand(2, "miReferenceRun");
        QCOMPARE(reference.size(), 1);
        QCOMPARE(reference[0][0].toInt(), 2);
    }

    // --- Delete Run ------------------------------------------------------------------------

    void deleteAsksAndRemovesTheRun() {
        LogWindow log(*station, runClipboard);
        QVERIFY(log.ready());
        log.grid->newRun();
        log.grid->newRun();
        for (int row = 1; row <= 3; ++row)
            fillRun(log.table, row);
        ScriptedDialogs dialogs;
        dialogs.queueAnswer(Answer::Yes);
        log.rowCommand(2, "miDelete");
        QCOMPARE(dialogs.messages.size(), 1);
        const Dialogs::Message& question = dialogs.messages[0];
        QCOMPARE(question.text, QStringLiteral("QUESTION:\r\n  Do you want to delete run# 2 ?"));
        QCOMPARE(question.title, QStringLiteral("Race Log"));
        QCOMPARE(question.buttons, Dialogs::Buttons::YesNo);
        QCOMPARE(log.table.tableRows(), 3);
        QCOMPARE(log.table.cell(2, 0), QStringLiteral("2"));
        QCOMPARE(log.table.cell(2, 12), QStringLiteral("3.12"));
        QCOMPARE(log.referenceItems(), (QStringList{"1", "2"}));
        QCOMPARE(log.referenceIndex(), 0);
    }

    void deleteWithNoStillDropsTheLastReferenceItem() {
        LogWindow log(*station, runClipboard);
        QVERIFY(log.ready());
        log.grid->newRun();
        log.grid->newRun();
        QVERIFY(log.document.selectReferenceRun(2));
        ScriptedDialogs dialogs;
        dialogs.queueAnswer(Answer::No);
        log.rowCommand(3, "miDelete");
        QCOMPARE(log.table.tableRows(), 4);
        QCOMPARE(log.referenceItems(), (QStringList{"1", "2"}));
        QCOMPARE(log.referenceIndex(), 0);
    }

    void deleteMarksRun1AgainWhenItWasTheReferenceAlready() {
        LogWindow log(*station, runClipboard);
        QVERIFY(log.ready());
        log.grid->newRun();
        QVERIFY(log.document.selectReferenceRun(0));
        ScriptedDialogs dialogs;
        dialogs.queueAnswer(Answer::Yes);
        log.rowCommand(1, "miDelete");
        // The run that moved up into row 1 is the reference run now.
        QCOMPARE(log.table.tableRows(), 2);
        QCOMPARE(log.referenceIndex(), 0);
        QCOMPARE(log.table.look(1, 0).background, CellColor::ReferenceRun);
        QVERIFY(log.table.look(1, 0).bold);
        QCOMPARE(log.grid->currentRunRow(), 1);
        QCOMPARE(log.grid->currentRunColumn(), 1);
    }

    void deletingTheOnlyRunBlanksItAndKeepsRow1() {
        LogWindow log(*station, runClipboard);
        QVERIFY(log.ready());
        fillRun(log.table, 1);
        ScriptedDialogs dialogs;
        dialogs.queueAnswer(Answer::Yes);
        log.rowCommand(1, "miDelete");
        QCOMPARE(log.table.tableRows(), 2);
        QCOMPARE(log.table.cell(1, 0), QStringLiteral("1"));
        for (int column = 1; column < log.table.cols(); ++column)
            QCOMPARE(log.table.cell(1, column), QString());
        QCOMPARE(log.referenceItems(), QStringList{"1"});
    }

    // --- Cut, Copy, Paste ------------------------------------------------------------------

    void pasteLeavesAmbientLightAsItWas() {
        LogWindow log(*station, runClipboard);
        QVERIFY(log.ready());
        log.grid->newRun();
        fillRun(log.table, 1);
        log.table.setCell(2, 33, QStringLiteral("340"));
        log.focusCell(1, 5);
        QTest::keyClick(log.grid, Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(log.clipboard.value(0)[7], QStringLiteral("1.7"));
        QCOMPARE(log.clipboard.value(0)[33], QString());
        log.grid->setCurrentRunCell(2, 5);
        QTest::keyClick(log.grid, Qt::Key_V, Qt::ControlModifier);
        for (int column = 1; column <= 32; ++column)
            QCOMPARE(log.table.cell(2, column), log.table.cell(1, column));
        QCOMPARE(log.table.cell(2, 33), QStringLiteral("340"));
        QCOMPARE(log.table.cell(2, 0), QStringLiteral("2"));
        QCOMPARE(log.openEditors(), QStringList());
    }

    void clipboardKeysBelongToTheGridOverTheWindowsShortcuts() {
        LogWindow log(*station, runClipboard);
        QAction windowCopy(QStringLiteral("Copy"));
        windowCopy.setShortcut(QKeySequence::Copy);
        log.window.addAction(&windowCopy);
        QSignalSpy windowCopies(&windowCopy, &QAction::triggered);
        QVERIFY(log.ready());
        fillRun(log.table, 1);
        log.focusCell(1, 5);
        QTest::keyClick(log.grid, Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(log.clipboard.value(0)[5], QStringLiteral("1.5"));
        QCOMPARE(windowCopies.size(), 0);
    }

    void cutEmptiesTheRunButItsAmbientLight() {
        LogWindow log(*station, runClipboard);
        QVERIFY(log.ready());
        fillRun(log.table, 1);
        log.focusCell(1, 5);
        QTest::keyClick(log.grid, Qt::Key_X, Qt::ControlModifier);
        QCOMPARE(log.clipboard.value(0)[32], QStringLiteral("1.32"));
        for (int column = 1; column <= 32; ++column)
            QCOMPARE(log.table.cell(1, column), QString());
        QCOMPARE(log.table.cell(1, 33), QStringLiteral("1.33"));
    }

    void menuCutCopyPasteWorkOnTheRun() {
        LogWindow log(*station, runClipboard);
        QVERIFY(log.ready());
        log.grid->newRun();
        fillRun(log.table, 1);
        log.rowCommand(1, "miCopy");
        log.rowCommand(2, "miPaste");
        QCOMPARE(log.table.cell(2, 20), QStringLiteral("1.20"));
        log.rowCommand(1, "miCut");
        QCOMPARE(log.table.cell(1, 20), QString());
    }

    void aRunCopiedInOneLogPastesIntoAnother() {
        LogWindow first(*station, runClipboard);
        LogWindow second(*station, runClipboard);
        QVERIFY(first.ready());
        fillRun(first.table, 1);
        first.rowCommand(1, "miCopy");
        QVERIFY(second.ready());
        second.rowCommand(1, "miPaste");
        for (int column = 1; column <= 32; ++column)
            QCOMPARE(second.table.cell(1, column), first.table.cell(1, column));
        QCOMPARE(second.table.cell(1, 33), QString());
    }

    // --- Weather -----------------------------------------------------------------------------

    void currentWeatherFillsTheWeatherColumns() {
        LogWindow log(*station, runClipboard);
        QVERIFY(log.ready());
        station->feed().tcpBytes(" 11/22/26 10:42:07 29.921 71.5 43.2 1250 5.1 45 0.33 49 0.987 "
                                 "1410 120 275 7 11 340\r");
        log.table.setCell(1, 1, QStringLiteral("10:42am"));
        log.table.setCell(1, 2, QStringLiteral("11/22/26"));
        ScriptedDialogs dialogs;
        QSignalSpy changes(&log.table, &RunTable::dataChanged);
        log.rowCommand(1, "miGetWeather");
        QList<int> columns;
        for (const QList<QVariant>& change : changes)
            columns << change[0].toModelIndex().column() + 1;
        QCOMPARE(columns, (QList<int>{22, 23, 24, 19, 25, 26, 21, 27, 28, 20, 29, 30, 31, 32, 33}));
        const QStringList expected{"1250", "1410",  "0.33", "29.921", "71.5", "43.2", "5.1", "45",
                                   "49",   "0.987", "120",  "275",    "7",    "11",   "340"};
        for (int column = 19; column <= 33; ++column)
            QCOMPARE(log.table.cell(1, column), expected[column - 19]);
        QCOMPARE(log.table.cell(1, 1), QStringLiteral("10:42am"));
        QCOMPARE(log.table.cell(1, 2), QStringLiteral("11/22/26"));
        QCOMPARE(dialogs.messages.size(), 1);
        QCOMPARE(dialogs.messages[0].text, QStringLiteral("Weather data imported!"));
        QCOMPARE(dialogs.messages[0].title, QStringLiteral("Pellamor Weather Import"));
        QCOMPARE(dialogs.messages[0].icon, Icon::Information);
    }

    void loggedWeatherOfTheRunsMinuteIsImported() {
        QDir().mkpath(home->weatherLogFolder());
        QFile day(home->weatherLogFolder() + QStringLiteral("/2026-11-22.csv"));
        QVERIFY(day.open(QIODevice::WriteOnly));
        day.write("\"10:41:59am\",29.5,60,40,900,4.2,40,0.3,45,0.99,1200,100,200,5,9,300\r\n"
                  "\"10:42:07am\",29.92,71.5,43.2,1250,5.1,45,0.33,49,98.6,1410,120,275,7,11,"
                  "340\r\n");
        day.close();

        LogWindow log(*station, runClipboard);
        QVERIFY(log.ready());
        log.table.setCell(1, 1, QStringLiteral("10:42am"));
        log.table.setCell(1, 2, QStringLiteral("11/22/26"));
        ScriptedDialogs dialogs;
        log.rowCommand(1, "miGetLoggedWeather");
        const QStringList expected{"1250", "1410", "0.33", "29.92", "71.5", "43.2", "5.1", "45",
                                   "49",   "98.6", "120",  "275",   "7",    "11",   "340"};
        for (int column = 19; column <= 33; ++column)
            QCOMPARE(log.table.cell(1, column), expected[column - 19]);
        QCOMPARE(log.table.cell(1, 1), QStringLiteral("10:42am"));
        QCOMPARE(log.table.cell(1, 2), QStringLiteral("11/22/26"));
        QCOMPARE(dialogs.messages.size(), 1);
        QCOMPARE(dialogs.messages[0].text, QStringLiteral("Weather data from log imported!"));
        QCOMPARE(dialogs.messages[0].title, QStringLiteral("Log Weather Import"));
        QCOMPARE(dialogs.messages[0].icon, Icon::Information);
        QCOMPARE(QGuiApplication::overrideCursor(), nullptr);
        QVERIFY(!station->weatherLog().isBusy());
    }

    void loggedWeatherOfAMinuteWithNoRowImportsNothing() {
        QDir().mkpath(home->weatherLogFolder());
        QFile day(home->weatherLogFolder() + QStringLiteral("/2026-11-22.csv"));
        QVERIFY(day.open(QIODevice::WriteOnly));
        day.write("\"10:42:07am\",29.92,71.5,43.2,1250,5.1,45,0.33,49,98.6,1410,120,275,7,11,"
                  "340\r\n");
        day.close();

        LogWindow log(*station, runClipboard);
        QVERIFY(log.ready());
        log.table.setCell(1, 1, QStringLiteral("10:45am"));
        log.table.setCell(1, 2, QStringLiteral("11/22/26"));
        ScriptedDialogs dialogs;
        log.rowCommand(1, "miGetLoggedWeather");
        for (int column = 19; column <= 33; ++column)
            QCOMPARE(log.table.cell(1, column), QString());
        QCOMPARE(log.table.cell(1, 1), QStringLiteral("10:45am"));
        QCOMPARE(dialogs.messages.size(), 1);
        QCOMPARE(dialogs.messages[0].text, QStringLiteral("No weather data was imported!"));
        QCOMPARE(dialogs.messages[0].title, QStringLiteral("Log Weather Import"));
        QCOMPARE(dialogs.messages[0].icon, Icon::Critical);
        QCOMPARE(QGuiApplication::overrideCursor(), nullptr);
    }

    void loggedWeatherForABlankTimeWritesTheTimeEvenWhenNothingIsFound() {
        LogWindow log(*station, runClipboard);
        QVERIFY(log.ready());
        ScriptedDialogs dialogs;
        const QString before = DateText::timeText(QTime::currentTime());
        log.rowCommand(1, "miGetLoggedWeather");
        const QString after = DateText::timeText(QTime::currentTime());
        QVERIFY(isTimeBetween(log.table.cell(1, 1), before, after));
        QCOMPARE(log.table.cell(1, 2), DateText::runDateText(QDate::currentDate()));
        QCOMPARE(log.table.cell(1, 22), QString());
        QCOMPARE(dialogs.messages.size(), 1);
        QCOMPARE(dialogs.messages[0].text, QStringLiteral("No weather data was imported!"));
    }

    void loggedWeatherOfTodayIsFoundForABlankRun() {
        const QTime now = QTime::currentTime();
        QDir().mkpath(home->weatherLogFolder());
        QFile day(home->weatherLogFolder() + u'/' + DateText::fileStamp(QDate::currentDate()) +
                  QStringLiteral(".csv"));
        QVERIFY(day.open(QIODevice::WriteOnly));
        // A row at the start and one at the end of the minute, so the lookup finds one of
        // them whichever minute the clock has reached.
        for (const QTime& time : {QTime(now.hour(), now.minute()), now.addSecs(60)}) {
            day.write('"' + DateText::timeWithSecondsText(time).toLatin1() +
                      "\",29.92,71.5,43.2,1250,5.1,45,0.33,49,98.6,1410,120,275,7,11,340\r\n");
        }
        day.close();

        LogWindow log(*station, runClipboard);
        QVERIFY(log.ready());
        ScriptedDialogs dialogs;
        log.rowCommand(1, "miGetLoggedWeather");
        QCOMPARE(log.table.cell(1, 22), QStringLiteral("29.92"));
        QCOMPARE(dialogs.messages[0].text, QStringLiteral("Weather data from log imported!"));
    }
};

QTEST_MAIN(TestRunGrid)
#include "tst_rungrid.moc"
