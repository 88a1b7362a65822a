#include "SampleRunTable.h"
#include "core/ScriptedDialogs.h"
#include "prediction/RunCompletion.h"

#include <QTest>

using namespace RunColumn;
using RunCompletion::Inputs;
using RunCompletion::Outcome;
using RunCompletion::Proposal;

namespace {

// A quarter mile log: run 1 the reference (7.80 at 1000 ft, 9.50 at 1320 ft, AA 2000),
// run 2 a full run, run 3 shut off after 1000 ft (7.95, AA 2100) with a slow 12.3456.
// Completed with PF 5 it should have run 9.6507.
struct Log {
    SampleRunTable table;
    Inputs in;

    Log() {
        table.addRun(
            {{Ft330, "4.90"}, {Ft660, "7.50"}, {Ft1000, "7.80"}, {Ft1320, "9.50"}, {AA, "2000"}});
        table.addRun({{Ft1000, "7.82"}, {Ft1320, "9.52"}, {AA, "2050"}});
        table.addRun({{Ft330, "5.00"}, {Ft1000, "7.95"}, {Ft1320, "12.3456"}, {AA, "2100"}});
        in.referenceListIndex = 0;
        in.currentRow = 3;
        in.performanceFactor = "5";
    }

    Outcome compute() {
        in.cells = table.cells();
        return RunCompletion::compute(in);
    }

    Proposal proposal() {
        const Outcome out = compute();
        if (!std::holds_alternative<Proposal>(out))
            qFatal("no proposal");
        return std::get<Proposal>(out);
    }

    // What the window does with a confirmed proposal.
    void apply(const Proposal& p) {
        in.notes = p.newNotes;
        table.set(p.finishRow, p.finishColumn, p.finishText);
    }
};

// Stands in for the person asked: keeps each box shown and gives the answer it was told to.
struct User {
    Dialogs::Answer answer = Dialogs::Answer::Ok;
    QList<Dialogs::Message> shown;

    RunCompletion::AskUser ask() {
        return [this](const Dialogs::Message& message) {
            shown << message;
            return answer;
        };
    }
};

const QString quarterQuestion = "Using run #1 as a reference run and run completing\r\n"
                                "run #3, its ET should be 9.6507.\r\n\r\n"
                                "Do you want to overwirte your current 1320ft ET of 12.3456?";

} // namespace

class TestRunCompletion : public QObject {
    Q_OBJECT
private slots:
    void quarterMileProposal() {
        Log log;
        const Proposal p = log.proposal();
        QCOMPARE(p.question.text, quarterQuestion);
        QCOMPARE(p.question.title, "Run Complete");
        QCOMPARE(p.question.icon, Dialogs::Icon::Question);
        QCOMPARE(p.question.buttons, Dialogs::Buttons::YesNo);
        QCOMPARE(p.question.defaultAnswer, Dialogs::Answer::No);
        QCOMPARE(p.finishRow, 3);
        QCOMPARE(p.finishColumn, int(Ft1320));
        QCOMPARE(p.finishText, "9.6507");
        QCOMPARE(p.newNotes, "Run #3\r\n1/4 mile ET: 12.3456\r\nRun Completed to: 9.6507");
    }

    void eighthMileWhenTheReferenceHasOnly330And660() {
        Log log;
        log.table.set(1, Ft1000, "");
        log.table.set(1, Ft1320, "");
        log.table.set(3, Ft660, "8.1");
        const Proposal p = log.proposal();
        // 7.50 taken to AA 2100, moved by the 330 ft gap (4.90 expected 4.9021, ran 5.00).
        QCOMPARE(p.finishText, "7.6011");
        QCOMPARE(p.finishColumn, int(Ft660));
        QCOMPARE(p.question.text, "Using run #1 as a reference run and run completing\r\n"
                                  "run #3, its ET should be 7.6011.\r\n\r\n"
                                  "Do you want to overwirte your current 660ft ET of 8.1?");
        QCOMPARE(p.newNotes, "Run #3\r\n1/8 mile ET: 8.1\r\nRun Completed to: 7.6011");
    }

    // The mode is chosen once from the 1000 ft mark; without a 1320 ft time the command
    // ends, although the 330 ft and 660 ft marks would serve.
    void quarterMileWithoutFinishEndsAtStepNine() {
        Log log;
        log.table.set(1, Ft1320, "");
        QVERIFY(std::holds_alternative<RunCompletion::Ended>(log.compute()));
    }

    // Completing the reference run itself still moves it by sensitivity x mark: PF -1000
    // makes that visible (9.5015, where no offset would give 9.5082).
    void referenceRunItselfHasAnOffset() {
        Log log;
        log.in.referenceListIndex = 1;
        log.in.currentRow = 2;
        log.in.performanceFactor = "-1000";
        log.table.set(2, Ft1000, "7.80");
        log.table.set(2, Ft1320, "9.50");
        const Proposal p = log.proposal();
        QCOMPARE(p.finishText, "9.5015");
        QVERIFY(p.question.text.startsWith("Using run #2 as a reference run and run completing\r\n"
                                           "run #2, its ET should be 9.5015."));
    }

    void runWithoutFinishText() {
        Log log;
        log.table.set(3, Ft1320, "");
        const Proposal p = log.proposal();
        QVERIFY(p.question.text.endsWith("current 1320ft ET of ?"));
        QCOMPARE(p.newNotes, "Run #3\r\n1/4 mile ET: \r\nRun Completed to: 9.6507");
    }

    void notesSeparator_data() {
        QTest::addColumn<QString>("notes");
        QTest::addColumn<QString>("newNotes");
        const QString entry = "Run #3\r\n1/4 mile ET: 12.3456\r\nRun Completed to: 9.6507";
        QTest::newRow("empty notes: no leading blank lines") << "" << entry;
        QTest::newRow("notes present: one blank line between") << "Track was green"
                                                               << "Track was green\r\n\r\n" + entry;
    }
    void notesSeparator() {
        QFETCH(QString, notes);
        QFETCH(QString, newNotes);
        Log log;
        log.in.notes = notes;
        QCOMPARE(log.proposal().newNotes, newNotes);
    }

    // Missing data ends the command without a word.
    void endsQuietly_data() {
        QTest::addColumn<int>("row");
        QTest::addColumn<int>("column");
        QTest::addColumn<QString>("text");
        QTest::newRow("no reference run chosen") << -1 << 0 << "";
        QTest::newRow("PF not a number") << -2 << 0 << "abc";
        QTest::newRow("reference has no incremental mark") << 1 << int(Ft1000) << "";
        QTest::newRow("reference has no AA") << 1 << int(AA) << "";
        QTest::newRow("run before has no AA") << 2 << int(AA) << "";
        QTest::newRow("run has no mark time") << 3 << int(Ft1000) << "";
    }
    void endsQuietly() {
        QFETCH(int, row);
        QFETCH(int, column);
        QFETCH(QString, text);
        Log log;
        if (row == -1)
            log.in.referenceListIndex = -1;
        else if (row == -2)
            log.in.performanceFactor = text;
        else
            log.table.set(row, column, text);
        if (row == 1 && column == Ft1000) // nor an eighth mile one
            log.table.set(1, Ft330, "");
        QVERIFY(std::holds_alternative<RunCompletion::Ended>(log.compute()));
    }

    void firstRunSeesTheHeaderAboveAndEnds() {
        Log log;
        log.in.currentRow = 1;
        QVERIFY(std::holds_alternative<RunCompletion::Ended>(log.compute()));
    }

    // The altitude is tested on the run before and taken from the run itself.
    void altitudeIsTestedOnTheRunBefore() {
        Log log;
        log.table.set(2, AA, "");
        log.table.set(3, AA, "2100");
        QVERIFY(std::holds_alternative<RunCompletion::Ended>(log.compute()));
        log.table.set(2, AA, "2050");
        log.table.set(3, AA, "");
        QVERIFY(std::holds_alternative<RunCompletion::Fault>(log.compute()));
    }

    void overflowIsAFault() {
        Log log;
        log.table.set(1, AA, "-1.7e308");
        log.table.set(3, AA, "1.7e308");
        QVERIFY(std::holds_alternative<RunCompletion::Fault>(log.compute()));
    }

    // The fault is told through the caller's box alone; the calculation opens none itself.
    void faultTellsTheUser() {
        ScriptedDialogs dialogs;
        User user;
        Log log;
        log.table.set(3, AA, "");
        QVERIFY(!RunCompletion::confirm(log.compute(), user.ask()));
        QCOMPARE(user.shown.size(), 1);
        QCOMPARE(user.shown[0].text, "Unable to run complete this run!");
        QCOMPARE(user.shown[0].title, "Tarnwick - Run Complete");
        QCOMPARE(user.shown[0].icon, Dialogs::Icon::Critical);
        QCOMPARE(user.shown[0].buttons, Dialogs::Buttons::Ok);
        QVERIFY(dialogs.messages.isEmpty());
    }

    void endedShowsNothing() {
        User user;
        Log log;
        log.in.referenceListIndex = -1;
        QVERIFY(!RunCompletion::confirm(log.compute(), user.ask()));
        QVERIFY(user.shown.isEmpty());
    }

    void yesWritesTheFinishAndTheNotes() {
        ScriptedDialogs dialogs;
        User user;
        user.answer = Dialogs::Answer::Yes;
        Log log;
        log.in.notes = "Track was green";
        const auto confirmed = RunCompletion::confirm(log.compute(), user.ask());
        QVERIFY(confirmed);
        log.apply(*confirmed);
        QCOMPARE(user.shown.size(), 1);
        QCOMPARE(user.shown[0].text, quarterQuestion);
        QCOMPARE(user.shown[0].buttons, Dialogs::Buttons::YesNo);
        QCOMPARE(user.shown[0].defaultAnswer, Dialogs::Answer::No);
        QVERIFY(dialogs.messages.isEmpty());
        QCOMPARE(log.table.cell(3, Ft1320), "9.6507");
        QCOMPARE(log.table.cell(3, Ft1000), "7.95");
        QCOMPARE(
            log.in.notes,
            "Track was green\r\n\r\nRun #3\r\n1/4 mile ET: 12.3456\r\nRun Completed to: 9.6507");
    }

    void noLeavesNotesAndTableAsTheyWere() {
        User user;
        user.answer = Dialogs::Answer::No;
        Log log;
        log.in.notes = "Track was green";
        // As the window does: whatever is confirmed is written.
        const auto confirmed = RunCompletion::confirm(log.compute(), user.ask());
        if (confirmed)
            log.apply(*confirmed);
        QVERIFY(!confirmed);
        QCOMPARE(user.shown.size(), 1);
        QCOMPARE(user.shown[0].text, quarterQuestion);
        QCOMPARE(log.table.cell(3, Ft1320), "12.3456");
        QCOMPARE(log.in.notes, "Track was green");
    }
};

QTEST_GUILESS_MAIN(TestRunCompletion)
#include "tst_runcompletion.moc"
