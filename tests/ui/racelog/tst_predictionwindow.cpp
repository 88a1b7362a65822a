#include "common/TestHome.h"
#include "core/ScriptedDialogs.h"
#include "ui/PredictionWindows.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QTest>
#include <memory>

namespace {

using Dialogs::Answer;
using Dialogs::Icon;

const QString WorkedMessage = QStringLiteral("RaceLog# 1> ") + WorkedCase::Line;
const QString WorkedCaption = QStringLiteral("Race Log# 1  ") + WorkedCase::Line;

// A command of a log's row menu, opened with the right button on a run number and chosen,
// as the user does it.
void rowCommand(RaceLogWindow* log, int row, const char* name) {
    QHeaderView* numbers = log->grid->verticalHeader();
    const QPoint centre(numbers->width() / 2, numbers->sectionViewportPosition(row - 1) +
                                                  numbers->sectionSize(row - 1) / 2);
    QTest::mousePress(numbers->viewport(), Qt::RightButton, {}, centre);
    QTest::mouseRelease(numbers->viewport(), Qt::RightButton, {}, centre);
    QMenu* menu = log->grid->rowMenu();
    QVERIFY(menu->isVisible());
    menu->hide();
    log->findChild<QAction*>(QLatin1String(name))->trigger();
}

// A run shut off after 1000 ft (row 2), completed from a full quarter mile (row 1) at PF 5:
// the reference says 9.5041 at the run's air, and the run was 0.0968 behind at 1000 ft.
void fillShutOffRun(RaceLogWindow* log) {
    log->grid->newRun();
    setCells(log, 1, {{10, "7.5"}, {12, "9.5"}, {19, "2000"}});
    setCells(log, 2, {{10, "7.6"}, {12, "8.1"}, {19, "2100"}});
    log->sidePanel->pfField->setText(QStringLiteral("5"));
}

} // namespace

class TestPredictionWindow : public QObject {
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

    // --- updatePredictions -----------------------------------------------------------------

    void theWorkedCaseShowsInTheCaptionAndThePage() {
        PredictionWindows windows;
        windows.station.predictionSettings().deltaVP = true;
        RaceLogWindow* log = windows.newLog();
        WorkedCase::fill(log);
        log->updatePredictions();
        QCOMPARE(log->document().prediction().line().pagerMessage, WorkedMessage);
        QCOMPARE(log->document().prediction().line().pagerMessage, WorkedMessage);
        QCOMPARE(log->windowTitle(), WorkedCaption);
        QCOMPARE(frameCaption(log), WorkedCaption);
        QVERIFY(dialogs->messages.isEmpty());
    }

    void theSecondSlotIsNumberedTwo() {
        PredictionWindows windows;
        windows.station.predictionSettings().deltaVP = true;
        windows.newLog();
        RaceLogWindow* second = windows.newLog();
        QCOMPARE(second->document().slot(), 1);
        WorkedCase::fill(second);
        second->updatePredictions();
        QCOMPARE(second->document().prediction().line().pagerMessage,
                 QStringLiteral("RaceLog# 2> ") + WorkedCase::Line);
        QCOMPARE(frameCaption(second), QStringLiteral("Race Log# 2  ") + WorkedCase::Line);
    }

    void anIdentifierNamesTheLog() {
        PredictionWindows windows;
        windows.station.predictionSettings().deltaVP = true;
        RaceLogWindow* log = windows.newLog();
        WorkedCase::fill(log);
        log->sidePanel->pageIdentifierField->setText(QStringLiteral("Red"));
        log->updatePredictions();
        QCOMPARE(log->document().prediction().line().pagerMessage,
                 QStringLiteral("Red> ") + WorkedCase::Line);
        QCOMPARE(frameCaption(log), QStringLiteral("Red  ") + WorkedCase::Line);
    }

    void withoutTheVpOptionTheLineEndsAtTheTimer() {
        PredictionWindows windows;
        RaceLogWindow* log = windows.newLog();
        WorkedCase::fill(log);
        log->updatePredictions();
        QCOMPARE(frameCaption(log), QStringLiteral("Race Log# 1  ET: 9.5041  TS @ 9.50: 1.3991"));
    }

    // Nothing numeric to predict from: nothing changes and nobody is told.
    void missingDataChangesNothing() {
        PredictionWindows windows;
        RaceLogWindow* log = windows.newLog();
        WorkedCase::fillFields(log);
        const QString caption = frameCaption(log);
        log->updatePredictions();
        QCOMPARE(frameCaption(log), caption);
        QVERIFY(log->document().prediction().line().pagerMessage.isEmpty());
        QVERIFY(dialogs->messages.isEmpty());
    }

    // The ET is published before the timer's step overflows, and it stays.
    void aFaultShowsTheBoxAndKeepsTheEt() {
        PredictionWindows windows;
        windows.station.predictionSettings().deltaVP = true;
        RaceLogWindow* log = windows.newLog();
        WorkedCase::fill(log);
        log->sidePanel->tsrField->setText(QStringLiteral("1e307"));
        log->updatePredictions();
        QCOMPARE(dialogs->messages.size(), 1);
        const Dialogs::Message& box = dialogs->messages[0];
        QCOMPARE(box.text, QStringLiteral("Failed to make a valid prediction!"));
        QCOMPARE(box.title, QStringLiteral("Predict"));
        QCOMPARE(box.icon, Icon::Information);
        QCOMPARE(box.buttons, Dialogs::Buttons::Ok);
        QCOMPARE(log->document().prediction().line().pagerMessage,
                 QStringLiteral("RaceLog# 1> ET: 9.5041"));
        QCOMPARE(frameCaption(log), QStringLiteral("Race Log# 1  ET: 9.5041"));
    }

    // A later call that ends early leaves the last good prediction in the page.
    void aLaterInvalidInputKeepsTheLastMessage() {
        PredictionWindows windows;
        windows.station.predictionSettings().deltaVP = true;
        RaceLogWindow* log = windows.newLog();
        WorkedCase::fill(log);
        log->updatePredictions();
        log->sidePanel->aaField->setText(QStringLiteral("abc"));
        log->updatePredictions();
        QCOMPARE(log->document().prediction().line().pagerMessage, WorkedMessage);
        QCOMPARE(frameCaption(log), WorkedCaption);
    }

    // The figure still in the cell editor is part of the prediction.
    void cmdPredictCommitsTheOpenEditorFirst() {
        PredictionWindows windows;
        windows.station.predictionSettings().deltaVP = true;
        windows.main.show();
        RaceLogWindow* log = windows.newLog();
        WorkedCase::fill(log);
        log->grid->table().setCell(1, 12, QString());
        log->grid->setCurrentRunCell(1, 12);
        log->grid->beginCellEdit('9');
        auto* editor = log->findChild<QLineEdit*>(QStringLiteral("txtEdit"));
        QVERIFY(editor && editor->isVisible());
        QTest::keyClicks(editor, QStringLiteral(".5"));
        QCOMPARE(editor->text(), QStringLiteral("9.5"));
        log->sidePanel->predictButton->click();
        QVERIFY(!editor->isVisible());
        QCOMPARE(log->grid->table().cell(1, 12), QStringLiteral("9.5"));
        QCOMPARE(frameCaption(log), WorkedCaption);
    }

    void btnPredictUpdatesEveryOpenLog() {
        PredictionWindows windows;
        windows.station.predictionSettings().deltaVP = true;
        RaceLogWindow* first = windows.newLog();
        RaceLogWindow* second = windows.newLog();
        RaceLogWindow* third = windows.newLog();
        WorkedCase::fill(first);
        WorkedCase::fill(third);
        third->sidePanel->pageIdentifierField->setText(QStringLiteral("Blue"));
        // A closed log leaves its slot empty; the others are still reached.
        delete second->parentWidget();
        QCOMPARE(windows.station.raceLogs().at(1), nullptr);
        QVERIFY(windows.tool(QStringLiteral("btnPredict"))->isVisible());
        windows.run(QStringLiteral("btnPredict"));
        QCOMPARE(frameCaption(first), WorkedCaption);
        QCOMPARE(third->document().prediction().line().pagerMessage,
                 QStringLiteral("Blue> ") + WorkedCase::Line);
        QCOMPARE(frameCaption(third), QStringLiteral("Blue  ") + WorkedCase::Line);
    }

    // --- Reference run -----------------------------------------------------------------------

    void miReferenceRunChoosesTheRunAndPredictsFromIt() {
        PredictionWindows windows;
        windows.main.show();
        RaceLogWindow* log = windows.newLog();
        log->grid->newRun();
        log->grid->newRun();
        WorkedCase::fill(log);
        WorkedCase::fillReferenceRun(log, 3);
        setCells(log, 3, {{12, "10.5"}});
        rowCommand(log, 3, "miReferenceRun");
        QCOMPARE(log->sidePanel->referenceRunList->currentIndex(), 2);
        auto* item = log->findChild<QAction*>(QStringLiteral("miReferenceRun"));
        QVERIFY(item->isChecked());
        // Chosen again on the run that is the reference run already, it stays checked.
        rowCommand(log, 3, "miReferenceRun");
        QVERIFY(item->isChecked());
        QCOMPARE(log->sidePanel->referenceRunList->currentIndex(), 2);
        log->updatePredictions();
        // Its timer is too short for the target: the ET alone.
        QCOMPARE(frameCaption(log), QStringLiteral("Race Log# 1  ET: 10.5045"));
    }

    // --- Run completion ------------------------------------------------------------------------

    void runCompleteStandsAfterReferenceRun() {
        PredictionWindows windows;
        RaceLogWindow* log = windows.newLog();
        // Undo and Redo come first, then the commands on the run.
        const QList<QAction*> items = log->grid->rowMenu()->actions();
        QCOMPARE(items[0]->objectName(), QStringLiteral("miUndo"));
        QCOMPARE(items[1]->objectName(), QStringLiteral("miRedo"));
        QVERIFY(items[2]->isSeparator());
        QCOMPARE(items[3]->objectName(), QStringLiteral("miReferenceRun"));
        QCOMPARE(items[4]->objectName(), QStringLiteral("miRunComplete"));
        QCOMPARE(items[4]->text(), QStringLiteral("Run Complete..."));
        QVERIFY(items[5]->isSeparator());
    }

    void runCompleteYesWritesTheFinishAndTheNotes() {
        PredictionWindows windows;
        windows.main.show();
        RaceLogWindow* log = windows.newLog();
        fillShutOffRun(log);
        log->sidePanel->notesField->setPlainText(QStringLiteral("Windy"));
        dialogs->queueAnswer(Answer::Yes);
        rowCommand(log, 2, "miRunComplete");
        QCOMPARE(dialogs->messages.size(), 1);
        const Dialogs::Message& question = dialogs->messages[0];
        QCOMPARE(question.text,
                 QStringLiteral("Using run #1 as a reference run and run completing\r\n"
                                "run #2, its ET should be 9.6009.\r\n\r\n"
                                "Do you want to overwirte your current 1320ft ET of 8.1?"));
        QCOMPARE(question.title, QStringLiteral("Run Complete"));
        QCOMPARE(question.icon, Icon::Question);
        QCOMPARE(question.buttons, Dialogs::Buttons::YesNo);
        QCOMPARE(question.defaultAnswer, Answer::No);
        QCOMPARE(log->grid->table().cell(2, 12), QStringLiteral("9.6009"));
        QCOMPARE(log->grid->table().cell(2, 10), QStringLiteral("7.6"));
        const QStringList notes =
            log->sidePanel->notesField->toPlainText().split(QRegularExpression("\r\n|\n|\r"));
        QCOMPARE(notes, (QStringList{"Windy", "", "Run #2", "1/4 mile ET: 8.1",
                                     "Run Completed to: 9.6009"}));
        // Completing does not predict.
        QCOMPARE(frameCaption(log), QStringLiteral("Race Log# 1"));
    }

    void runCompleteNoChangesNothing() {
        PredictionWindows windows;
        windows.main.show();
        RaceLogWindow* log = windows.newLog();
        fillShutOffRun(log);
        log->sidePanel->notesField->setPlainText(QStringLiteral("Windy"));
        dialogs->queueAnswer(Answer::No);
        rowCommand(log, 2, "miRunComplete");
        QCOMPARE(dialogs->messages.size(), 1);
        QCOMPARE(dialogs->messages[0].title, QStringLiteral("Run Complete"));
        QCOMPARE(log->grid->table().cell(2, 12), QStringLiteral("8.1"));
        QCOMPARE(log->sidePanel->notesField->toPlainText(), QStringLiteral("Windy"));
    }

    // The run's own AA is empty while the run before it has one: the conversion fails.
    void runCompleteFaultIsReported() {
        PredictionWindows windows;
        windows.main.show();
        RaceLogWindow* log = windows.newLog();
        fillShutOffRun(log);
        setCells(log, 2, {{19, ""}});
        rowCommand(log, 2, "miRunComplete");
        QCOMPARE(dialogs->messages.size(), 1);
        const Dialogs::Message& box = dialogs->messages[0];
        QCOMPARE(box.text, QStringLiteral("Unable to run complete this run!"));
        QCOMPARE(box.title, QStringLiteral("Tarnwick - Run Complete"));
        QCOMPARE(box.icon, Icon::Critical);
        QCOMPARE(log->grid->table().cell(2, 12), QStringLiteral("8.1"));
    }

    // The first run has only the header row above it: nothing happens.
    void runCompleteOnTheFirstRunEndsSilently() {
        PredictionWindows windows;
        windows.main.show();
        RaceLogWindow* log = windows.newLog();
        fillShutOffRun(log);
        rowCommand(log, 1, "miRunComplete");
        QVERIFY(dialogs->messages.isEmpty());
        QCOMPARE(log->grid->table().cell(1, 12), QStringLiteral("9.5"));
    }

    // --- Pager predictions box ---------------------------------------------------------------

    void theThirdTickedLogWarns() {
        PredictionWindows windows;
        QList<QCheckBox*> boxes;
        for (int i = 0; i < 4; ++i)
            boxes << windows.newLog()->sidePanel->pagerPredictionsBox;
        boxes[0]->click();
        boxes[1]->click();
        QVERIFY(dialogs->messages.isEmpty());
        dialogs->queueAnswer(Answer::Cancel);
        boxes[2]->click();
        QCOMPARE(dialogs->messages.size(), 1);
        const Dialogs::Message& warning = dialogs->messages[0];
        QCOMPARE(warning.text,
                 QStringLiteral("WARNING:\r\n"
                                "  Having pager predictions turned on for more than two\r\n"
                                "  race logs can cause losses in transmitted messages sent\r\n"
                                "  to pager!"));
        QCOMPARE(warning.title, QStringLiteral("Pager Predictions"));
        QCOMPARE(warning.icon, Icon::Exclamation);
        QCOMPARE(warning.buttons, Dialogs::Buttons::OkCancel);
        // The answer is not looked at: the box stays ticked.
        QVERIFY(boxes[2]->isChecked());
        QVERIFY(windows.slot(2)->document().pagerPredictions());

        // Four on, one off: three stay on and it warns again.
        boxes[3]->click();
        QCOMPARE(dialogs->messages.size(), 2);
        boxes[3]->click();
        QCOMPARE(dialogs->messages.size(), 3);
        // The third off leaves two: no warning.
        boxes[2]->click();
        QCOMPARE(dialogs->messages.size(), 3);
        QVERIFY(!windows.slot(2)->document().pagerPredictions());
    }
};

QTEST_MAIN(TestPredictionWindow)
#include "tst_predictionwindow.moc"
