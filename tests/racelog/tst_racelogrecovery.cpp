// Race log files that are not quite as this program writes them: missing values, dates and
// times in the form other tools write, values that fit no column, a missing column, no
// reference run, and files of other tools. Each is made or changed with the sqlite3 program.
#include "SampleLogs.h"
#include "SqliteShell.h"
#include "common/TestHome.h"
#include "racelog/Database.h"

#include <QTest>

using Database::LoadResult;
using Database::SaveResult;

namespace {

// Run 2 of a sample log: the texts fillRun gives it.
const QString Run2Time = QStringLiteral("03:02pm");
const QString Run2Et = QStringLiteral("11.1002");

QString savedSample(const TestHome& home, int runs) {
    const QString path = home.root() + QStringLiteral("/race.trl");
    RaceLogData log;
    SampleLogs::fillLog(log, runs);
    if (Database::saveRaceLog(path, log) != SaveResult::Ok)
        return {};
    return path;
}

bool change(const QString& path, const QString& sql) {
    const SqliteShell shell = SqliteShell::run(path, sql);
    if (shell.exitCode != 0)
        qWarning() << shell.errors;
    return shell.exitCode == 0;
}

QString sql(const QString& path, const QString& query) {
    return SqliteShell::run(path, query).output;
}

} // namespace

class TestRaceLogRecovery : public QObject {
    Q_OBJECT

private slots:
    void theSampleRunIsWhatTheTestsExpect() {
        RaceLogData log;
        SampleLogs::fillLog(log, 2);
        QCOMPARE(log.grid.cell(2, 1), Run2Time);
        QCOMPARE(log.grid.cell(2, 12), Run2Et);
    }

    // A missing number is an empty cell, and the rest of the file loads.
    void aMissingValueIsAnEmptyCell() {
        TestHome home;
        const QString path = savedSample(home, 3);
        QVERIFY(change(path, "UPDATE Log SET ft1320 = NULL, Lane = NULL WHERE GeneralID = 2; "
                             "UPDATE Properties SET TSR = NULL"));
        RaceLogData back;
        const LoadResult loaded = Database::loadLog(path, back);
        QVERIFY(loaded);
        QCOMPARE(loaded.unreadValues, 0);
        QCOMPARE(back.grid.tableRows(), 4);
        QCOMPARE(back.grid.cell(2, 12), QString());
        QCOMPARE(back.grid.cell(2, 3), QString());
        QCOMPARE(back.grid.cell(2, 1), Run2Time);
        QCOMPARE(back.grid.cell(3, 12), QStringLiteral("11.1003"));
        QCOMPARE(back.tsr, QString());
        QCOMPARE(back.targetET, QStringLiteral("10.9"));
        QCOMPARE(back.aa, QStringLiteral("1250"));
    }

    // Other tools keep a time as a moment of the zero day and a date at midnight.
    void dateTimeTextsReadAsTheDateOrTimeTheyHold() {
        TestHome home;
        const QString path = savedSample(home, 2);
        QVERIFY(change(path, "UPDATE Log SET Time = '1899-12-30 14:35:00', "
                             "Date = '2026-08-09 00:00:00' WHERE GeneralID = 2; "
                             "UPDATE Properties SET Date = '2026-08-10 00:00:00'"));
        RaceLogData back;
        const LoadResult loaded = Database::loadLog(path, back);
        QVERIFY(loaded);
        QCOMPARE(loaded.unreadValues, 0);
        QCOMPARE(back.grid.cell(2, 1), QStringLiteral("02:35pm"));
        QCOMPARE(back.grid.cell(2, 2), QStringLiteral("08/09/26"));
        QCOMPARE(back.date, QStringLiteral("08/10/2026"));
        QCOMPARE(back.grid.cell(2, 12), Run2Et);
    }

    // Values that fit no column are counted and left empty; every run and field after them
    // still loads.
    void valuesThatFitNoColumnAreCountedAndTheRestLoads() {
        TestHome home;
        const QString path = savedSample(home, 3);
        QVERIFY(change(path, "UPDATE Log SET Time = 'noon', AA = 'high' WHERE GeneralID = 1; "
                             "UPDATE Properties SET PF = 'soft'"));
        RaceLogData back;
        const LoadResult loaded = Database::loadLog(path, back);
        QVERIFY(loaded);
        QCOMPARE(loaded.unreadValues, 3);
        QCOMPARE(back.grid.tableRows(), 4);
        QCOMPARE(back.grid.cell(1, 1), QString());
        QCOMPARE(back.grid.cell(1, 19), QString());
        QCOMPARE(back.grid.cell(1, 12), QStringLiteral("11.1001"));
        QCOMPARE(back.grid.cell(2, 1), Run2Time);
        QCOMPARE(back.pf, QStringLiteral("0"));
        QCOMPARE(back.tsr, QStringLiteral("0.85"));
        QCOMPARE(back.vp, QStringLiteral("0.55"));
    }

    // -1 is a log without a reference run; the values after it load.
    void noReferenceRunLoadsTheRest() {
        TestHome home;
        const QString path = savedSample(home, 3);
        QVERIFY(change(path, "UPDATE Properties SET RefRun = -1"));
        RaceLogData back;
        const LoadResult loaded = Database::loadLog(path, back);
        QVERIFY(loaded);
        QCOMPARE(loaded.unreadValues, 0);
        QCOMPARE(back.refRunIndex, -1);
        QCOMPARE(back.pf, QStringLiteral("1.5"));
        QCOMPARE(back.tsr, QStringLiteral("0.85"));
        QCOMPARE(back.targetET, QStringLiteral("10.9"));
        QCOMPARE(back.aa, QStringLiteral("1250"));
        QCOMPARE(back.vp, QStringLiteral("0.55"));
        QCOMPARE(back.notes, QStringLiteral("Warm, light tail wind.\nNew tyres from run 2."));

        // Saved again, it stays a log without a reference run.
        QCOMPARE(Database::saveRaceLog(path, back), SaveResult::Ok);
        QCOMPARE(sql(path, "SELECT RefRun FROM Properties"), QStringLiteral("-1"));
    }

    void aReferenceRunBeyondTheRunsIsCountedAndTheRestLoads() {
        TestHome home;
        const QString path = savedSample(home, 3);
        QVERIFY(change(path, "UPDATE Properties SET RefRun = 3"));
        RaceLogData back;
        const LoadResult loaded = Database::loadLog(path, back);
        QVERIFY(loaded);
        QCOMPARE(loaded.unreadValues, 1);
        QCOMPARE(back.refRunIndex, -1);
        QCOMPARE(back.pf, QStringLiteral("1.5"));
        QCOMPARE(back.aa, QStringLiteral("1250"));
    }

    // A missing column is no race log to load: the file and the column are named, and the
    // log is left as it was, never with the column's name as data.
    void aMissingColumnIsALoadErrorThatNamesIt_data() {
        QTest::addColumn<QString>("drop");
        QTest::addColumn<QString>("column");
        QTest::newRow("a run column") << "ALTER TABLE Log DROP COLUMN RT"
                                      << "Log.RT";
        QTest::newRow("a log field") << "ALTER TABLE Properties DROP COLUMN TSR"
                                     << "Properties.TSR";
        QTest::newRow("the run notes") << "ALTER TABLE Log DROP COLUMN Notes"
                                       << "Log.Notes";
    }
    void aMissingColumnIsALoadErrorThatNamesIt() {
        QFETCH(QString, drop);
        QFETCH(QString, column);
        TestHome home;
        const QString path = savedSample(home, 3);
        QVERIFY(change(path, drop));
        RaceLogData back;
        const LoadResult loaded = Database::loadLog(path, back);
        QVERIFY(!loaded);
        QCOMPARE(loaded.status, LoadResult::Status::MissingColumn);
        QCOMPARE(loaded.missingColumn, column);
        QCOMPARE(back.grid.tableRows(), 2);
        QCOMPARE(back.grid.cell(1, 4), QString());
        QCOMPARE(back.pf, QStringLiteral("0"));
        // Nor is anything saved into it.
        RaceLogData log;
        SampleLogs::fillLog(log, 1);
        QCOMPARE(Database::saveRaceLog(path, log), SaveResult::LogTableFailed);
        QCOMPARE(sql(path, "SELECT count(*) FROM Log"), QStringLiteral("3"));
    }

    // A file another tool wrote, with the right tables and columns but without this
    // program's mark, is a race log; a save marks it.
    void aRaceLogOfAnotherToolLoadsAndASaveMarksIt_data() {
        QTest::addColumn<QString>("mark");
        QTest::newRow("no mark") << "PRAGMA application_id = 0";
        QTest::newRow("another mark") << "PRAGMA application_id = 1234";
    }
    void aRaceLogOfAnotherToolLoadsAndASaveMarksIt() {
        QFETCH(QString, mark);
        TestHome home;
        const QString path = savedSample(home, 2);
        QVERIFY(change(path, mark));
        RaceLogData back;
        QVERIFY(Database::loadLog(path, back));
        QCOMPARE(back.grid.cell(2, 12), Run2Et);
        QCOMPARE(Database::saveRaceLog(path, back), SaveResult::Ok);
        QCOMPARE(sql(path, "PRAGMA application_id"), QString::number(0x54524C31));
    }

    // Tables made by hand, with their own column order, types and letter case.
    void tablesMadeByAnotherToolLoad() {
        TestHome home;
        const QString path = home.root() + QStringLiteral("/made by hand.trl");
        QVERIFY(change(
            path,
            "CREATE TABLE properties (generalid INTEGER PRIMARY KEY, RefRun, PF, TSR, TargetET, "
            "Date, Version, Notes, RaceTrack, PageIdent, ABP, TEMP, RH, AA, AH, GR, VP, DP, ADR, "
            "DA, PA, WD, WS, WG, AL); "
            "CREATE TABLE LOG (GeneralID INTEGER, ft1320 NUMERIC, Time, Date, Lane, DialIn, RT, "
            "TrackTemp, ft60, ft330, mph660, ft660, mph1000, ft1000, mph1320, Timer1, Timer2, "
            "DelayBox, ShiftTime, Notes, ABP, TEMP, RH, AA, AH, GR, VP, DP, ADR, DA, PA, WD, WS, "
            "WG, AL, Status); "
            "INSERT INTO properties (generalid, RefRun, PF, Date, PageIdent, Notes) "
            "VALUES (1, 1, 2.5, '2026-07-04', 'HANDMADE', 'line one' || char(13, 10) || "
            "'line two'); "
            "INSERT INTO LOG (GeneralID, ft1320, Time, Date, Lane) VALUES "
            "(1, 10.5, '10:15:00', '2026-07-04', 'Left'), "
            "(2, 10.45, '1899-12-30 11:20:00', '2026-07-04 00:00:00', 'Right')"));
        RaceLogData back;
        const LoadResult loaded = Database::loadLog(path, back);
        QVERIFY(loaded);
        QCOMPARE(loaded.unreadValues, 0);
        QCOMPARE(back.grid.tableRows(), 3);
        QCOMPARE(back.grid.cell(1, 1), QStringLiteral("10:15am"));
        QCOMPARE(back.grid.cell(2, 1), QStringLiteral("11:20am"));
        QCOMPARE(back.grid.cell(2, 3), QStringLiteral("Right"));
        QCOMPARE(back.grid.cell(2, 12), QStringLiteral("10.4500"));
        QCOMPARE(back.refRunIndex, 1);
        QCOMPARE(back.pf, QStringLiteral("2.5"));
        QCOMPARE(back.pageIdentifier, QStringLiteral("HANDMADE"));
        QCOMPARE(back.notes, QStringLiteral("line one\nline two"));
    }

    // The file keeps the notes' lines ended by CR LF, as the format gives, whatever the
    // platform's line end; they come back as the window's lines.
    void notesAreStoredWithCrLf() {
        TestHome home;
        const QString path = savedSample(home, 2);
        QCOMPARE(sql(path, "SELECT hex(Notes) FROM Properties"),
                 QByteArray("Warm, light tail wind.\r\nNew tyres from run 2.").toHex().toUpper());
        QCOMPARE(sql(path, "SELECT count(*) FROM Log WHERE Notes = 'Warm, light tail wind.' || "
                           "char(13, 10) || 'New tyres from run 2.'"),
                 QStringLiteral("2"));
        RaceLogData back;
        QVERIFY(Database::loadLog(path, back));
        QCOMPARE(back.notes, QStringLiteral("Warm, light tail wind.\nNew tyres from run 2."));
    }

    void theCopyOfTheOriginalIsNamedAfterIt_data() {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("backup");
        QTest::newRow("race log") << "/races/2026-07-04 Maple.trl"
                                  << "/races/2026-07-04 Maple.bak.trl";
        QTest::newRow("capital extension") << "/races/EVENT.TRL"
                                           << "/races/EVENT.bak.trl";
        QTest::newRow("another extension") << "/races/event.db"
                                           << "/races/event.db.bak.trl";
    }
    void theCopyOfTheOriginalIsNamedAfterIt() {
        QFETCH(QString, path);
        QFETCH(QString, backup);
        QCOMPARE(Database::backupPath(path), backup);
    }
};

QTEST_GUILESS_MAIN(TestRaceLogRecovery)
#include "tst_racelogrecovery.moc"
