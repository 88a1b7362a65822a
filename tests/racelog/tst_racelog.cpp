// The race log as a document, without any window: its fields and runs, the one entry point every
// change goes through, undo and redo of each kind of change, the clean state that follows
// the file, and the prediction made from the document.
#include "SqliteShell.h"
#include "core/WeatherRecord.h"
#include "prediction/LogPrediction.h"
#include "racelog/CellColor.h"
#include "racelog/LogFieldTable.h"
#include "racelog/RaceLog.h"
#include "racelog/RunEdits.h"

#include <QDateTime>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <algorithm>
#include <tuple>

namespace {

using Field = RaceLog::Field;

// Run r's column c holds "r.c", so a moved or lost cell shows at once.
void fillRun(RaceLog& log, int row) {
    log.change(QStringLiteral("Fill"), [row](RaceLogData& data) {
        for (int column = 1; column < RunTable::ColumnCount; ++column)
            data.grid.setCell(row, column, QStringLiteral("%1.%2").arg(row).arg(column));
    });
}

RaceLog& withRuns(RaceLog& log, int runs) {
    for (int row = 2; row <= runs; ++row)
        RunEdits::newRun(log, QDateTime(QDate(2026, 5, 4), QTime(14, 35)));
    for (int row = 1; row <= runs; ++row)
        fillRun(log, row);
    return log;
}

QString undoText(const RaceLog& log) {
    return const_cast<RaceLog&>(log).undoStack().undoText();
}

QStringList run(const RaceLog& log, int row) {
    QStringList cells;
    for (int column = 0; column < RunTable::ColumnCount; ++column)
        cells << log.runs().cell(row, column);
    return cells;
}

} // namespace

class TestRaceLog : public QObject {
    Q_OBJECT

private slots:
    // --- A new log ---------------------------------------------------------------------------

    void aNewLogHasRunOneAndNothingToUndo() {
        RaceLog log;
        QCOMPARE(log.runs().tableRows(), 2);
        QCOMPARE(log.runs().cell(1, 0), QStringLiteral("1"));
        QCOMPARE(log.content().refRunItems, QStringList{"1"});
        QCOMPARE(log.content().refRunIndex, 0);
        QCOMPARE(log.runs().look(1, 0).background, CellColor::ReferenceRun);
        QCOMPARE(log.field(Field::PF), QStringLiteral("0"));
        QCOMPARE(log.field(Field::TargetET), QStringLiteral("0.00"));
        QVERIFY(!log.isModified());
        QVERIFY(!log.undoStack().canUndo());
    }

    // --- Cell edits ----------------------------------------------------------------------------

    void aCellEditIsOneStepNamedForItsColumn() {
        RaceLog log;
        QSignalSpy modified(&log, &RaceLog::modifiedChanged);
        RunEdits::editCell(log, 1, 12, QStringLiteral("9.5"));
        QCOMPARE(log.runs().cell(1, 12), QStringLiteral("9.5"));
        QVERIFY(log.isModified());
        QCOMPARE(modified.size(), 1);
        QCOMPARE(modified[0][0].toBool(), true);
        QCOMPARE(undoText(log), QStringLiteral("Edit 1320 ft"));

        log.undoStack().undo();
        QCOMPARE(log.runs().cell(1, 12), QString());
        QVERIFY(!log.isModified());
        QCOMPARE(modified.size(), 2);
        log.undoStack().redo();
        QCOMPARE(log.runs().cell(1, 12), QStringLiteral("9.5"));
        QVERIFY(log.isModified());
    }

    void writingTheSameTextLeavesNoStep() {
        RaceLog log;
        RunEdits::editCell(log, 1, 4, QString());
        log.setField(Field::PF, QStringLiteral("0"));
        QCOMPARE(log.undoStack().count(), 0);
        QVERIFY(!log.isModified());
    }

    void aCellOutsideTheTableIsNoStep() {
        RaceLog log;
        RunEdits::editCell(log, 5, 4, QStringLiteral("1"));
        RunEdits::editCell(log, 1, 34, QStringLiteral("1"));
        QCOMPARE(log.undoStack().count(), 0);
    }

    // --- Runs added and deleted ----------------------------------------------------------------

    void newRunIsUndoneWithItsReferenceItem() {
        RaceLog log;
        QSignalSpy reference(&log, &RaceLog::referenceRunChanged);
        const int row = RunEdits::newRun(log, QDateTime(QDate(2026, 5, 4), QTime(14, 35, 10)));
        QCOMPARE(row, 2);
        QCOMPARE(log.runs().cell(2, 1), QStringLiteral("02:35pm"));
        QCOMPARE(log.content().refRunItems, (QStringList{"1", "2"}));
        QCOMPARE(undoText(log), QStringLiteral("New Run"));
        QCOMPARE(reference.size(), 1);

        log.undoStack().undo();
        QCOMPARE(log.runs().tableRows(), 2);
        QCOMPARE(log.content().refRunItems, QStringList{"1"});
        QCOMPARE(reference.size(), 2);
        log.undoStack().redo();
        QCOMPARE(log.runs().tableRows(), 3);
        QCOMPARE(log.runs().cell(2, 2), QStringLiteral("05/04/26"));
        QCOMPARE(log.runs().look(2, 5).background, CellColor::Band);
    }

    void aDeletedRunComesBackWithItsLooksAndTheReference() {
        RaceLog log;
        withRuns(log, 3);
        QVERIFY(log.selectReferenceRun(2));
        const QStringList second = run(log, 2);
        RunEdits::deleteRun(log, 2, true);
        QCOMPARE(undoText(log), QStringLiteral("Delete Run 2"));
        QCOMPARE(log.runs().tableRows(), 3);
        QCOMPARE(log.runs().cell(2, 12), QStringLiteral("3.12"));
        QCOMPARE(log.content().refRunItems, (QStringList{"1", "2"}));
        QCOMPARE(log.content().refRunIndex, 0);
        QCOMPARE(log.runs().look(1, 0).background, CellColor::ReferenceRun);

        log.undoStack().undo();
        QCOMPARE(log.runs().tableRows(), 4);
        QCOMPARE(run(log, 2), second);
        QCOMPARE(log.runs().cell(3, 12), QStringLiteral("3.12"));
        QCOMPARE(log.content().refRunItems, (QStringList{"1", "2", "3"}));
        QCOMPARE(log.content().refRunIndex, 2);
        QCOMPARE(log.runs().look(3, 0).background, CellColor::ReferenceRun);
        QVERIFY(log.runs().look(3, 0).bold);
        QCOMPARE(log.runs().look(1, 0).background, CellColor::ButtonFace);
        QCOMPARE(log.runs().look(2, 5).background, CellColor::Band);
    }

    void aDeleteAnsweredNoStillShortensTheListAsOneStep() {
        RaceLog log;
        withRuns(log, 3);
        RunEdits::deleteRun(log, 3, false);
        QCOMPARE(log.runs().tableRows(), 4);
        QCOMPARE(log.content().refRunItems, (QStringList{"1", "2"}));
        log.undoStack().undo();
        QCOMPARE(log.content().refRunItems, (QStringList{"1", "2", "3"}));
    }

    // --- Cut, copy and paste -------------------------------------------------------------------

    void pasteOfThreeRunsAddsWhatIsMissingAndUndoesAsOne() {
        RaceLog log;
        withRuns(log, 3);
        const RunClipboard::Runs clipboard = RunClipboard::copy(log.runs(), 1, 3);
        log.runs().setCell(3, 33, QStringLiteral("kept"));
        const int steps = log.undoStack().count();

        RunEdits::pasteRuns(log, 3, clipboard);
        QCOMPARE(log.undoStack().count(), steps + 1);
        QCOMPARE(undoText(log), QStringLiteral("Paste 3 Runs"));
        QCOMPARE(log.runs().tableRows(), 6);
        QCOMPARE(log.runs().cell(3, 12), QStringLiteral("1.12"));
        QCOMPARE(log.runs().cell(4, 32), QStringLiteral("2.32"));
        QCOMPARE(log.runs().cell(5, 1), QStringLiteral("3.1"));
        QCOMPARE(log.runs().cell(5, 0), QStringLiteral("5"));
        QCOMPARE(log.runs().cell(3, 33), QStringLiteral("kept"));
        QCOMPARE(log.content().refRunItems, (QStringList{"1", "2", "3", "4", "5"}));
        QCOMPARE(log.runs().look(4, 7).background, CellColor::Band);

        log.undoStack().undo();
        QCOMPARE(log.runs().tableRows(), 4);
        QCOMPARE(log.runs().cell(3, 12), QStringLiteral("3.12"));
        QCOMPARE(log.content().refRunItems, (QStringList{"1", "2", "3"}));
        QCOMPARE(undoText(log), QStringLiteral("Fill"));
    }

    void pasteOfOneRunAndCutAreNamedForTheirRuns() {
        RaceLog log;
        withRuns(log, 2);
        RunClipboard::Runs clipboard;
        RunEdits::cutRuns(log, 2, 2, clipboard);
        QCOMPARE(undoText(log), QStringLiteral("Cut Run 2"));
        QCOMPARE(clipboard.size(), 1);
        QCOMPARE(clipboard[0][9], QStringLiteral("2.9"));
        QCOMPARE(log.runs().cell(2, 9), QString());
        RunEdits::pasteRuns(log, 1, clipboard);
        QCOMPARE(undoText(log), QStringLiteral("Paste Run"));
        RunEdits::cutRuns(log, 1, 2, clipboard);
        QCOMPARE(undoText(log), QStringLiteral("Cut 2 Runs"));
        log.undoStack().undo();
        log.undoStack().undo();
        log.undoStack().undo();
        QCOMPARE(log.runs().cell(2, 9), QStringLiteral("2.9"));
        QCOMPARE(log.runs().cell(1, 9), QStringLiteral("1.9"));
    }

    void anEmptyClipboardPastesNothing() {
        RaceLog log;
        RunEdits::pasteRuns(log, 1, {});
        QCOMPARE(log.undoStack().count(), 0);
    }

    // --- Weather and run completion ------------------------------------------------------------

    void aWeatherImportIsOneStepWithItsStamps() {
        RaceLog log;
        WeatherRecord weather;
        weather.ABP = 29.921f;
        weather.AA = 1250;
        weather.VP = 0.512f;
        RunEdits::importWeather(log, 1, &weather, {QTime(9, 5, 0), QDate(2026, 5, 4)});
        QCOMPARE(undoText(log), QStringLiteral("Import Weather"));
        QCOMPARE(log.runs().cell(1, 22), QStringLiteral("29.921"));
        QCOMPARE(log.runs().cell(1, 19), QStringLiteral("1250"));
        QCOMPARE(log.runs().cell(1, 21), QStringLiteral("0.512"));
        QCOMPARE(log.runs().cell(1, 1), QStringLiteral("09:05am"));
        QCOMPARE(log.runs().cell(1, 2), QStringLiteral("05/04/26"));
        log.undoStack().undo();
        for (const int column : {1, 2, 19, 21, 22})
            QCOMPARE(log.runs().cell(1, column), QString());
        QCOMPARE(log.undoStack().count(), 1);
    }

    void aCompletedRunTakesBackItsFinishAndItsNotes() {
        RaceLog log;
        log.setField(Field::Notes, QStringLiteral("Windy."));
        RunEdits::completeRun(log, 1, 12, QStringLiteral("9.6009"),
                              QStringLiteral("Windy.\r\nRun 1 finish was blank."));
        QCOMPARE(undoText(log), QStringLiteral("Complete Run 1"));
        QCOMPARE(log.field(Field::Notes), QStringLiteral("Windy.\r\nRun 1 finish was blank."));
        log.undoStack().undo();
        QCOMPARE(log.runs().cell(1, 12), QString());
        QCOMPARE(log.field(Field::Notes), QStringLiteral("Windy."));
    }

    // --- Fields -------------------------------------------------------------------------------

    void typingInOneFieldIsOneStepUntilAnotherFieldIsTyped() {
        RaceLog log;
        QSignalSpy fields(&log, &RaceLog::fieldChanged);
        for (const char* text : {"W", "Wi", "Win", "Wind"})
            log.setField(Field::Notes, QLatin1String(text));
        QCOMPARE(log.undoStack().count(), 1);
        QCOMPARE(undoText(log), QStringLiteral("Edit Notes"));
        QCOMPARE(fields.size(), 4);
        QCOMPARE(fields[0][0].value<Field>(), Field::Notes);
        log.setField(Field::PF, QStringLiteral("5"));
        log.setField(Field::PageIdentifier, QStringLiteral("Red"));
        QCOMPARE(log.undoStack().count(), 3);
        QCOMPARE(undoText(log), QStringLiteral("Edit Page Identifier"));

        log.undoStack().undo();
        log.undoStack().undo();
        QCOMPARE(log.field(Field::PF), QStringLiteral("0"));
        QCOMPARE(log.field(Field::PageIdentifier), QString());
        log.undoStack().undo();
        QCOMPARE(log.field(Field::Notes), QString());
        QVERIFY(!log.isModified());
    }

    // Each field keeps its text in its own member and names its step after its caption.
    void everyFieldHasOneRowOfItsOwnInTheTableOfFields() {
        const QList<std::tuple<Field, QString RaceLogFields::*, QString>> fields{
            {Field::Date, &RaceLogFields::date, "Edit Date"},
            {Field::RaceTrack, &RaceLogFields::raceTrack, "Edit Race Track"},
            {Field::PF, &RaceLogFields::pf, "Edit Performance Factor"},
            {Field::TSR, &RaceLogFields::tsr, "Edit Throttle Stop Ratio"},
            {Field::PageIdentifier, &RaceLogFields::pageIdentifier, "Edit Page Identifier"},
            {Field::CarNumber, &RaceLogFields::carNumber, "Edit Car Number"},
            {Field::Notes, &RaceLogFields::notes, "Edit Notes"},
            {Field::TargetET, &RaceLogFields::targetET, "Edit Target ET"},
            {Field::AA, &RaceLogFields::aa, "Edit AA"},
            {Field::VP, &RaceLogFields::vp, "Edit VP"},
            {Field::TrackOffset, &RaceLogFields::trackOffset, "Edit Track Offset"},
        };
        QCOMPARE(LogFieldTable::Rows.size(), std::size_t(fields.size()));
        for (const auto& [field, member, step] : fields) {
            const auto rows = std::count_if(
                LogFieldTable::Rows.begin(), LogFieldTable::Rows.end(),
                [wanted = field](const LogFieldTable::Row& row) { return row.field == wanted; });
            QCOMPARE(rows, 1);
            QVERIFY(LogFieldTable::row(field).member == member);
            RaceLog log;
            log.setField(field, QStringLiteral("7"));
            QCOMPARE(log.content().*member, QStringLiteral("7"));
            QCOMPARE(log.undoStack().count(), 1);
            QCOMPARE(undoText(log), step);
        }
    }

    void typingBackToTheStartLeavesNothingToUndo() {
        RaceLog log;
        log.setField(Field::CarNumber, QStringLiteral("7"));
        log.setField(Field::CarNumber, QString());
        QVERIFY(!log.undoStack().canUndo());
        QVERIFY(!log.isModified());
    }

    void theLiveWeatherIsNoChangeAndNoUndoTakesItBack() {
        RaceLog log;
        RunEdits::editCell(log, 1, 6, QStringLiteral("1.1"));
        log.undoStack().setClean();
        log.takeLiveWeather(QStringLiteral("2100"), QStringLiteral("0.487"));
        QVERIFY(!log.isModified());
        QCOMPARE(log.undoStack().count(), 1);
        log.undoStack().undo();
        QCOMPARE(log.field(Field::AA), QStringLiteral("2100"));
        QCOMPARE(log.field(Field::VP), QStringLiteral("0.487"));
        // Typed by the user, the value is a step like any other.
        log.setField(Field::AA, QStringLiteral("-120"));
        log.undoStack().undo();
        QCOMPARE(log.field(Field::AA), QStringLiteral("2100"));
    }

    void theReferenceRunIsAStepAndAnUnknownOneIsRefused() {
        RaceLog log;
        withRuns(log, 2);
        QVERIFY(!log.selectReferenceRun(2));
        QVERIFY(!log.selectReferenceRun(-1));
        QVERIFY(log.selectReferenceRun(1));
        QCOMPARE(undoText(log), QStringLiteral("Reference Run 2"));
        QCOMPARE(log.runs().look(2, 0).background, CellColor::ReferenceRun);
        log.undoStack().undo();
        QCOMPARE(log.content().refRunIndex, 0);
        QCOMPARE(log.runs().look(2, 0).background, CellColor::ButtonFace);
        QCOMPARE(log.runs().look(1, 0).background, CellColor::ReferenceRun);
    }

    // An edit through the run table's model, as the grid makes it, is one step of its own.
    void anEditThroughTheModelIsExactlyOneStep() {
        RaceLog log;
        withRuns(log, 2);
        RunTable& table = log.runs();
        const int stepsBefore = log.undoStack().count();
        QVERIFY(table.setData(table.index(1, 18), QStringLiteral("1250")));
        QCOMPARE(table.cell(2, 19), QStringLiteral("1250"));
        QCOMPARE(log.undoStack().count(), stepsBefore + 1);
        QCOMPARE(undoText(log), QStringLiteral("Edit AA"));

        log.undoStack().undo();
        QCOMPARE(table.cell(2, 19), QStringLiteral("2.19"));
        QCOMPARE(table.cell(1, 19), QStringLiteral("1.19"));
        QCOMPARE(undoText(log), QStringLiteral("Fill"));
        log.undoStack().redo();
        QCOMPARE(table.cell(2, 19), QStringLiteral("1250"));
        QCOMPARE(log.undoStack().count(), stepsBefore + 1);

        // The same text again is no step.
        QVERIFY(table.setData(table.index(1, 18), QStringLiteral("1250")));
        QCOMPARE(log.undoStack().count(), stepsBefore + 1);
    }

    // A view keeps its place and selection through the undo of a cell: only that cell changes.
    void undoingACellEditRewritesOnlyThatCell() {
        RaceLog log;
        withRuns(log, 3);
        RunTable& table = log.runs();
        RunEdits::editCell(log, 2, 6, QStringLiteral("1.25"));
        QSignalSpy reset(&table, &QAbstractItemModel::modelReset);
        QSignalSpy changed(&table, &QAbstractItemModel::dataChanged);

        log.undoStack().undo();
        QCOMPARE(table.cell(2, 6), QStringLiteral("2.6"));
        QCOMPARE(reset.size(), 0);
        QCOMPARE(changed.size(), 1);
        QCOMPARE(changed[0][0].toModelIndex(), table.index(1, 5));
        QCOMPARE(changed[0][1].toModelIndex(), table.index(1, 5));

        log.undoStack().redo();
        QCOMPARE(table.cell(2, 6), QStringLiteral("1.25"));
        QCOMPARE(reset.size(), 0);
    }

    // Cell steps and steps of whole runs undo and redo in any mix back to where they started.
    void cellStepsAndRunStepsUndoInTurn() {
        RaceLog log;
        withRuns(log, 2);
        const QStringList runOne = run(log, 1);
        RunEdits::editCell(log, 1, 6, QStringLiteral("1.1"));
        RunEdits::newRun(log, QDateTime(QDate(2026, 5, 5), QTime(9, 0)));
        RunEdits::editCell(log, 3, 6, QStringLiteral("1.3"));
        RunEdits::editCell(log, 1, 6, QStringLiteral("1.4"));
        const int steps = log.undoStack().count();

        for (int i = 0; i < 4; ++i)
            log.undoStack().undo();
        QCOMPARE(log.runs().tableRows(), 3);
        QCOMPARE(run(log, 1), runOne);
        for (int i = 0; i < 4; ++i)
            log.undoStack().redo();
        QCOMPARE(log.undoStack().count(), steps);
        QCOMPARE(log.runs().tableRows(), 4);
        QCOMPARE(log.runs().cell(1, 6), QStringLiteral("1.4"));
        QCOMPARE(log.runs().cell(3, 6), QStringLiteral("1.3"));
        QCOMPARE(log.runs().cell(3, 2), QStringLiteral("05/05/26"));
    }

    // --- The file and the clean state ----------------------------------------------------------

    void aSavedLogLoadsWholeAndStartsClean() {
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("friday.trl"));
        RaceLog log;
        withRuns(log, 3);
        log.setField(Field::PageIdentifier, QStringLiteral("Red"));
        log.setField(Field::Notes, QStringLiteral("Line one\nLine two"));
        QVERIFY(log.selectReferenceRun(1));
        QVERIFY(log.isModified());
        QCOMPARE(log.save(path), Database::SaveResult::Ok);
        QVERIFY(!log.isModified());
        QVERIFY(log.undoStack().canUndo());
        QCOMPARE(SqliteShell::run(path, "SELECT count(*) FROM Log;").output, QStringLiteral("3"));
        QCOMPARE(SqliteShell::run(path, "SELECT hex(Notes) FROM Properties;").output,
                 QStringLiteral("4C696E65206F6E650D0A4C696E652074776F"));

        RaceLog loaded;
        QSignalSpy fields(&loaded, &RaceLog::fieldChanged);
        QVERIFY(loaded.load(path));
        QVERIFY(!loaded.isModified());
        QVERIFY(!loaded.undoStack().canUndo());
        QCOMPARE(loaded.runs().tableRows(), 4);
        QCOMPARE(loaded.runs().cell(3, 5), QStringLiteral("3.5"));
        QCOMPARE(loaded.field(Field::PageIdentifier), QStringLiteral("Red"));
        QCOMPARE(loaded.field(Field::Notes), QStringLiteral("Line one\nLine two"));
        QCOMPARE(loaded.content().refRunIndex, 1);
        QCOMPARE(loaded.runs().look(2, 0).background, CellColor::ReferenceRun);
        QVERIFY(!fields.isEmpty());
    }

    void undoingBackToTheSavedStateClearsTheModifiedFlag() {
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("race.trl"));
        RaceLog log;
        RunEdits::editCell(log, 1, 6, QStringLiteral("1.1"));
        QCOMPARE(log.save(path), Database::SaveResult::Ok);
        RunEdits::editCell(log, 1, 6, QStringLiteral("1.2"));
        RunEdits::editCell(log, 1, 7, QStringLiteral("4.0"));
        QVERIFY(log.isModified());
        log.undoStack().undo();
        QVERIFY(log.isModified());
        log.undoStack().undo();
        QVERIFY(!log.isModified());
        // Past the saved state the log differs from its file again.
        log.undoStack().undo();
        QVERIFY(log.isModified());
        QCOMPARE(log.runs().cell(1, 6), QString());
    }

    void aFailedSaveLeavesTheLogModified() {
        RaceLog log;
        RunEdits::editCell(log, 1, 6, QStringLiteral("1.1"));
        QVERIFY(log.save(QStringLiteral("/nonexistent/folder/race.trl")) !=
                Database::SaveResult::Ok);
        QVERIFY(log.isModified());
    }

    void aFileThatIsNoRaceLogChangesNothing() {
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("other.trl"));
        QCOMPARE(SqliteShell::run(path, "CREATE TABLE Other(x);").exitCode, 0);
        RaceLog log;
        RunEdits::editCell(log, 1, 6, QStringLiteral("1.1"));
        QVERIFY(!log.load(path));
        QCOMPARE(log.runs().cell(1, 6), QStringLiteral("1.1"));
        QVERIFY(log.undoStack().canUndo());
    }

    // --- Prediction on the document -----------------------------------------------------------

    // Reference run: 9.5 at 1320 ft in AA 2000 ft and VP 0.512 with timer 2 at 1.5; the air
    // now is AA 2100 ft and VP 0.487, PF 5, target 9.50, TSR 0.25.
    void thePredictionReadsTheDocument() {
        RaceLog log;
        log.change(QStringLiteral("Fill"), [](RaceLogData& data) {
            data.grid.setCell(1, 12, QStringLiteral("9.5"));
            data.grid.setCell(1, 19, QStringLiteral("2000"));
            data.grid.setCell(1, 14, QStringLiteral("1.5"));
            data.grid.setCell(1, 21, QStringLiteral("0.512"));
        });
        log.takeLiveWeather(QStringLiteral("2100"), QStringLiteral("0.487"));
        log.setField(Field::PF, QStringLiteral("5"));
        log.setField(Field::TargetET, QStringLiteral("9.50"));
        log.setField(Field::TSR, QStringLiteral("0.25"));
        const PredictionModel::Outcome outcome = LogPrediction::predict(log, 0, true);
        QVERIFY(!outcome.fault);
        QCOMPARE(outcome.publications.size(), 2);
        QCOMPARE(outcome.publications[1].pagerMessage,
                 QStringLiteral("RaceLog# 1> ET: 9.5041  TS @ 9.50: 1.3991 VP+0.025"));
        QCOMPARE(outcome.publications[1].caption,
                 QStringLiteral("Race Log# 1  ET: 9.5041  TS @ 9.50: 1.3991 VP+0.025"));

        log.setField(Field::PageIdentifier, QStringLiteral("Red"));
        QCOMPARE(LogPrediction::predict(log, 3, false).publications[1].pagerMessage,
                 QStringLiteral("Red> ET: 9.5041  TS @ 9.50: 1.3991"));
    }

    // A run shut off after 1000 ft, completed from a full quarter mile at PF 5: the reference
    // says 9.5041 at the run's air, and the run was 0.0968 behind at 1000 ft.
    void runCompletionReadsTheDocument() {
        RaceLog log;
        withRuns(log, 2);
        log.change(QStringLiteral("Fill"), [](RaceLogData& data) {
            for (int row : {1, 2})
                for (int column = 1; column < RunTable::ColumnCount; ++column)
                    data.grid.setCell(row, column, QString());
            data.grid.setCell(1, 10, QStringLiteral("7.5"));
            data.grid.setCell(1, 12, QStringLiteral("9.5"));
            data.grid.setCell(1, 19, QStringLiteral("2000"));
            data.grid.setCell(2, 10, QStringLiteral("7.6"));
            data.grid.setCell(2, 12, QStringLiteral("8.1"));
            data.grid.setCell(2, 19, QStringLiteral("2100"));
        });
        log.setField(Field::PF, QStringLiteral("5"));
        const auto outcome = LogPrediction::completeRun(log, 2);
        const auto* proposal = std::get_if<RunCompletion::Proposal>(&outcome);
        QVERIFY(proposal);
        QCOMPARE(proposal->finishRow, 2);
        QCOMPARE(proposal->finishColumn, 12);
        QCOMPARE(proposal->finishText, QStringLiteral("9.6009"));
    }

    // The offset the crew sets stays with the log and moves every prediction; taking the
    // track's drift for it is one step.
    void usingTheTrackDriftIsOneStepThatUndoTakesBack() {
        RaceLog log;
        QCOMPARE(log.content().trackOffset, QStringLiteral("0"));
        QCOMPARE(log.trackOffset(), 0.0);
        QVERIFY(!log.useTrackDrift());
        QCOMPARE(log.undoStack().count(), 0);

        QList<Field> changed;
        connect(&log, &RaceLog::fieldChanged, this, [&changed](Field field) { changed << field; });
        log.trust().setMeasures(std::nullopt, PredictionTrust::Drift{0.0123, 3});
        QVERIFY(log.useTrackDrift());
        QCOMPARE(log.content().trackOffset, QStringLiteral("0.012"));
        QCOMPARE(log.trackOffset(), 0.012);
        QCOMPARE(undoText(log), QStringLiteral("Use Track Drift"));
        QCOMPARE(changed, QList<Field>{Field::TrackOffset});

        log.undoStack().undo();
        QCOMPARE(log.content().trackOffset, QStringLiteral("0"));
        QCOMPARE(log.trackOffset(), 0.0);
        log.undoStack().redo();
        QCOMPARE(log.trackOffset(), 0.012);

        // Text that is no number moves nothing.
        log.setField(Field::TrackOffset, QStringLiteral("-"));
        QCOMPARE(log.trackOffset(), 0.0);
    }

    void theMeasuresOfTrustSayWhenTheyChange() {
        RaceLog log;
        QSignalSpy changes(&log.trust(), &PredictionTrust::changed);
        log.trust().setMeasures(PredictionTrust::Miss{0.004, 12}, std::nullopt);
        QCOMPARE(changes.size(), 1);
        log.trust().setMeasures(PredictionTrust::Miss{0.004, 12}, std::nullopt);
        QCOMPARE(changes.size(), 1);
        log.trust().setOutlook(QStringLiteral("Outlook: not enough weather"));
        QCOMPARE(changes.size(), 2);
        QCOMPARE(log.trust().likelyMiss()->predictions, 12);
        QCOMPARE(log.trust().outlook(), QStringLiteral("Outlook: not enough weather"));
    }
};

QTEST_GUILESS_MAIN(TestRaceLog)
#include "tst_racelog.moc"
