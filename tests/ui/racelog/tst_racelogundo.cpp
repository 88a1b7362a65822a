// Undo and Redo in the race log window: by their keys and from the menus of the run table,
// for each kind of change the window makes, and the save question that comes and goes with
// the log's clean state.
#include "../PredictionWindows.h"
#include "SampleLogs.h"
#include "common/TestHome.h"
#include "core/ScriptedDialogs.h"
#include "racelog/Database.h"
#include "racelog/RunEdits.h"

#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QMenu>
#include <QPlainTextEdit>
#include <QTemporaryDir>
#include <QTest>

namespace {

using Dialogs::Answer;

// A main window in front with one new race log, its grid holding the keyboard.
struct UndoWindows : PredictionWindows {
    UndoWindows() {
        main.show();
        log = newLog();
        grid = log->grid;
    }
    bool ready() {
        main.activateWindow();
        if (!QTest::qWaitForWindowActive(&main))
            return false;
        grid->setFocus();
        return grid->hasFocus();
    }
    // Types a whole cell: the first key opens the editor, Enter puts the text in.
    void typeCell(int row, int column, const QString& text) {
        grid->setFocus();
        grid->setCurrentRunCell(row, column);
        QTest::keyClick(grid, text.at(0).toLatin1());
        QWidget* editor = QApplication::focusWidget();
        QTest::keyClicks(editor, text.mid(1));
        QTest::keyClick(editor, Qt::Key_Return);
    }
    void keys(Qt::Key key, Qt::KeyboardModifiers modifiers) {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }
    QString cell(int row, int column) const { return grid->table().cell(row, column); }
    QAction* menuItem(QMenu* menu, const char* name) {
        for (QAction* item : menu->actions()) {
            if (item->objectName() == QLatin1String(name))
                return item;
        }
        return nullptr;
    }
    void close() {
        log->parentWidget()->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    RaceLogWindow* log;
    RunGrid* grid;
};

} // namespace

class TestRaceLogUndo : public QObject {
    Q_OBJECT
    std::unique_ptr<TestHome> home;
    std::unique_ptr<ScriptedDialogs> dialogs;

private slots:
    void init() {
        home = std::make_unique<TestHome>();
        dialogs = std::make_unique<ScriptedDialogs>();
    }
    void cleanup() {
        dialogs.reset();
        home.reset();
    }

    void ctrlZUndoesATypedCellAndBothRedoKeysBringItBack() {
        UndoWindows windows;
        QVERIFY(windows.ready());
        windows.typeCell(1, 6, QStringLiteral("1.5"));
        QCOMPARE(windows.cell(1, 6), QStringLiteral("1.5"));
        QVERIFY(windows.grid->hasFocus());

        windows.keys(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(windows.cell(1, 6), QString());
        windows.keys(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(windows.cell(1, 6), QStringLiteral("1.5"));
        windows.keys(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(windows.cell(1, 6), QString());
        windows.keys(Qt::Key_Y, Qt::ControlModifier);
        QCOMPARE(windows.cell(1, 6), QStringLiteral("1.5"));
        // The keys open no editor on the grid.
        QVERIFY(windows.grid->hasFocus());
    }

    void bothMenusOfTheGridNameTheStepToUndo() {
        UndoWindows windows;
        QVERIFY(windows.ready());
        for (QMenu* menu : {windows.grid->rowMenu(), windows.grid->columnMenu()}) {
            QAction* undo = windows.menuItem(menu, "miUndo");
            QVERIFY(undo);
            QCOMPARE(undo->text(), QStringLiteral("Undo"));
            QVERIFY(!undo->isEnabled());
            QVERIFY(windows.menuItem(menu, "miRedo"));
            QCOMPARE(menu->actions().indexOf(undo), 0);
        }
        windows.typeCell(1, 6, QStringLiteral("1.5"));
        QAction* undo = windows.menuItem(windows.grid->rowMenu(), "miUndo");
        QVERIFY(undo->isEnabled());
        QCOMPARE(undo->text(), QStringLiteral("Undo Edit 60 ft"));
        undo->trigger();
        QCOMPARE(windows.cell(1, 6), QString());
        QAction* redo = windows.menuItem(windows.grid->columnMenu(), "miRedo");
        QCOMPARE(redo->text(), QStringLiteral("Redo Edit 60 ft"));
        redo->trigger();
        QCOMPARE(windows.cell(1, 6), QStringLiteral("1.5"));
    }

    // Undo chosen from a menu while a cell is being typed writes the cell first and takes it
    // back as a step of its own; Redo brings the typing again, and the step before stays.
    void undoFromAMenuWritesAnOpenCellFirst() {
        UndoWindows windows;
        QVERIFY(windows.ready());
        windows.typeCell(1, 6, QStringLiteral("1.5"));
        windows.grid->setCurrentRunCell(1, 7);
        QTest::keyClick(windows.grid, '4');
        QWidget* editor = QApplication::focusWidget();
        QVERIFY(editor != windows.grid);
        QTest::keyClicks(editor, QStringLiteral(".25"));

        windows.menuItem(windows.grid->rowMenu(), "miUndo")->trigger();
        QCOMPARE(windows.cell(1, 7), QString());
        QCOMPARE(windows.cell(1, 6), QStringLiteral("1.5"));
        QVERIFY(!windows.grid->indexWidget(windows.grid->currentIndex()));
        QAction* redo = windows.menuItem(windows.grid->rowMenu(), "miRedo");
        QCOMPARE(redo->text(), QStringLiteral("Redo Edit 330 ft"));
        redo->trigger();
        QCOMPARE(windows.cell(1, 7), QStringLiteral("4.25"));
        QCOMPARE(windows.cell(1, 6), QStringLiteral("1.5"));
    }

    // Three runs selected by their cells, copied with Ctrl+C and pasted from run 3 down with
    // Ctrl+V: the log grows to five runs, and one undo takes the whole paste back.
    void aPasteOfThreeRunsIsUndoneAsOne() {
        UndoWindows windows;
        QVERIFY(windows.ready());
        windows.grid->newRun();
        windows.grid->newRun();
        for (int row = 1; row <= 3; ++row)
            windows.typeCell(row, 12, QStringLiteral("9.%1").arg(row));
        windows.grid->setCurrentRunCell(1, 12);
        windows.grid->selectionModel()->select(QItemSelection(windows.grid->model()->index(0, 11),
                                                              windows.grid->model()->index(2, 11)),
                                               QItemSelectionModel::ClearAndSelect);
        windows.keys(Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(windows.commands->runClipboard().size(), 3);
        windows.grid->setCurrentRunCell(3, 12);
        windows.keys(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(windows.grid->table().tableRows(), 6);
        QCOMPARE(windows.cell(5, 12), QStringLiteral("9.3"));
        QCOMPARE(windows.log->sidePanel->referenceRunList->count(), 5);
        QAction* undo = windows.menuItem(windows.grid->rowMenu(), "miUndo");
        QCOMPARE(undo->text(), QStringLiteral("Undo Paste 3 Runs"));

        windows.keys(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(windows.grid->table().tableRows(), 4);
        QCOMPARE(windows.cell(3, 12), QStringLiteral("9.3"));
        QCOMPARE(windows.log->sidePanel->referenceRunList->count(), 3);
        QCOMPARE(undo->text(), QStringLiteral("Undo Edit 1320 ft"));
    }

    void aDeletedRunComesBackToTheGridAndTheReferenceList() {
        UndoWindows windows;
        QVERIFY(windows.ready());
        windows.grid->newRun();
        windows.typeCell(2, 12, QStringLiteral("8.8"));
        dialogs->queueAnswer(Answer::Yes);
        windows.grid->setCurrentRunCell(2, 12);
        windows.grid->deleteRun();
        QCOMPARE(windows.grid->table().tableRows(), 2);
        QCOMPARE(windows.log->sidePanel->referenceRunList->count(), 1);
        windows.keys(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(windows.grid->table().tableRows(), 3);
        QCOMPARE(windows.cell(2, 12), QStringLiteral("8.8"));
        QCOMPARE(windows.log->sidePanel->referenceRunList->count(), 2);
        QCOMPARE(windows.grid->verticalHeader()->count(), 2);
    }

    void importedWeatherIsTakenBack() {
        UndoWindows windows;
        QVERIFY(windows.ready());
        windows.feedLine(QStringLiteral(
            " 11/22/26 10:42:07 29.5 71.5 43.2 1800 5.1 45 0.33 49 98.6 1410 120 275 7 11 340\r"));
        windows.grid->setCurrentRunCell(1, 3);
        windows.grid->getCurrentWeather();
        QCOMPARE(windows.cell(1, 22), QStringLiteral("29.5"));
        QCOMPARE(windows.menuItem(windows.grid->rowMenu(), "miUndo")->text(),
                 QStringLiteral("Undo Import Weather"));
        windows.keys(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(windows.cell(1, 22), QString());
        QCOMPARE(windows.cell(1, 19), QString());
    }

    void aCompletedRunIsTakenBackWithItsNote() {
        UndoWindows windows;
        QVERIFY(windows.ready());
        windows.grid->newRun();
        setCells(windows.log, 1, {{10, "7.5"}, {12, "9.5"}, {19, "2000"}});
        setCells(windows.log, 2, {{10, "7.6"}, {12, "8.1"}, {19, "2100"}});
        windows.log->sidePanel->pfField->setText(QStringLiteral("5"));
        dialogs->queueAnswer(Answer::Yes);
        emit windows.grid->runCompleteRequested(2);
        QCOMPARE(windows.cell(2, 12), QStringLiteral("9.6009"));
        QVERIFY(!windows.log->sidePanel->notesField->toPlainText().isEmpty());
        windows.keys(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(windows.cell(2, 12), QStringLiteral("8.1"));
        QCOMPARE(windows.log->sidePanel->notesField->toPlainText(), QString());
    }

    void aFieldOfThePanelIsUndoneAndShowsItsOldText() {
        UndoWindows windows;
        QVERIFY(windows.ready());
        windows.log->sidePanel->carNumberField->setText(QStringLiteral("427"));
        QCOMPARE(windows.log->document().field(RaceLog::Field::CarNumber), QStringLiteral("427"));
        windows.keys(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(windows.log->sidePanel->carNumberField->text(), QString());
        windows.keys(Qt::Key_Y, Qt::ControlModifier);
        QCOMPARE(windows.log->sidePanel->carNumberField->text(), QStringLiteral("427"));
    }

    // --- The save question follows the clean state ---------------------------------------

    void aNewLogWithNoChangeClosesWithoutAQuestion() {
        UndoWindows windows;
        QVERIFY(windows.ready());
        windows.close();
        QVERIFY(dialogs->messages.isEmpty());
        QVERIFY(dialogs->fileRequests.isEmpty());
        QCOMPARE(windows.station.raceLogs().at(0), nullptr);
    }

    void aChangeUndoneLeavesNothingToSave() {
        UndoWindows windows;
        QVERIFY(windows.ready());
        windows.typeCell(1, 6, QStringLiteral("1.5"));
        windows.keys(Qt::Key_Z, Qt::ControlModifier);
        windows.close();
        QVERIFY(dialogs->fileRequests.isEmpty());
        QCOMPARE(windows.station.raceLogs().at(0), nullptr);
    }

    void aSavedLogAsksOnlyWhileItDiffersFromItsFile() {
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("friday.trl"));
        RaceLogData saved;
        SampleLogs::fillLog(saved, 2);
        QCOMPARE(Database::saveRaceLog(path, saved), Database::SaveResult::Ok);
        PredictionWindows windows;
        windows.main.show();
        windows.main.openFile(path);
        RaceLogWindow* log = windows.slot(0);
        QVERIFY(log);
        QVERIFY(!log->document().isModified());
        RunEdits::editCell(log->document(), 1, 6, QStringLiteral("1.2345"));
        log->document().undoStack().undo();
        log->parentWidget()->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(dialogs->messages.isEmpty());

        windows.main.openFile(path);
        log = windows.slot(0);
        RunEdits::editCell(log->document(), 1, 6, QStringLiteral("1.2345"));
        dialogs->queueAnswer(Answer::Yes);
        log->parentWidget()->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(dialogs->messages.size(), 1);
        QCOMPARE(dialogs->messages[0].title, QStringLiteral("Save Race Log?"));
        RaceLogData reread;
        QVERIFY(Database::loadLog(path, reread));
        QCOMPARE(reread.grid.cell(1, 6), QStringLiteral("1.2345"));
    }

    void aSaveMakesTheLogCleanSoUndoingPastItAsksAgain() {
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("race.trl"));
        UndoWindows windows;
        QVERIFY(windows.ready());
        windows.typeCell(1, 6, QStringLiteral("1.5"));
        dialogs->queueFile(path);
        QVERIFY(windows.log->saveLog(QString()));
        QVERIFY(!windows.log->document().isModified());
        windows.keys(Qt::Key_Z, Qt::ControlModifier);
        QVERIFY(windows.log->document().isModified());
        dialogs->queueAnswer(Answer::No);
        windows.close();
        QCOMPARE(dialogs->messages.size(), 1);
        QCOMPARE(dialogs->messages[0].text,
                 QStringLiteral("Do you want to save the information for:\r\n  Race Log# 1"));
    }
};

QTEST_MAIN(TestRaceLogUndo)
#include "tst_racelogundo.moc"
