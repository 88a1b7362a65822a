#include "SampleLogs.h"
#include "SqliteShell.h"
#include "common/TestHome.h"
#include "racelog/Database.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QSqlDatabase>
#include <QTest>

using Database::SaveResult;

namespace {

QString logPath(const TestHome& home) {
    return home.root() + QStringLiteral("/log.trl");
}

QByteArray contents(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool writeFile(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

bool saveGeneration(const QString& path, int generation) {
    RaceLogData log;
    SampleLogs::fillGeneration(log, generation);
    return Database::saveRaceLog(path, log) == SaveResult::Ok;
}

// The generation a file holds when it holds exactly one whole save, else -1: every run and
// the log's fields of the same generation, and the number of runs it had.
int wholeGeneration(const QString& path) {
    RaceLogData log;
    if (!Database::loadLog(path, log))
        return -1;
    const int generation = log.pf.toInt();
    const QString tag = QString::number(generation);
    if (log.notes != QStringLiteral("generation ") + tag ||
        log.grid.tableRows() - 1 != SampleLogs::runsOfGeneration(generation))
        return -1;
    for (int row = 1; row < log.grid.tableRows(); ++row) {
        for (int column : {5, 14, 15, 16, 19, 33}) {
            if (log.grid.cell(row, column) != tag)
                return -1;
        }
    }
    return generation;
}

QString integrity(const QString& path) {
    return SqliteShell::run(path, QStringLiteral("PRAGMA integrity_check")).output;
}

int lastSaved(const QByteArray& output) {
    static const QRegularExpression saved(QStringLiteral("saved (\\d+)\\n"));
    int last = 0;
    for (const auto& match : saved.globalMatch(QString::fromUtf8(output)))
        last = match.captured(1).toInt();
    return last;
}

// The journal's header starts with this once the old contents are safe in it; only then does
// a save write into the file itself, and only then must a reader undo the save.
bool journalIsHot(const QString& journal) {
    QFile file(journal);
    return file.open(QIODevice::ReadOnly) &&
           file.read(8) == QByteArray::fromHex("d9d505f920a163d7");
}

// Starts a program that saves one generation after another into a new file, waits until it
// writes into the file itself, and kills it. `saved` is the last generation it reported as
// saved. True when the kill came while the file was being written.
bool killWhileWriting(const QString& path, int& saved) {
    const QString journal = path + QStringLiteral("-journal");
    QFile::remove(path);
    QFile::remove(journal);
    QProcess saver;
    saver.start(programFolder() + QStringLiteral("/racelog_save_loop"),
                {path, QStringLiteral("1000")});
    if (!saver.waitForStarted())
        return false;
    QByteArray output;
    while (lastSaved(output) < 2 && saver.waitForReadyRead(20000))
        output += saver.readAllStandardOutput();
    QElapsedTimer waiting;
    waiting.start();
    while (!journalIsHot(journal) && waiting.elapsed() < 5000) {
    }
    saver.kill();
    saver.waitForFinished(10000);
    output += saver.readAllStandardOutput();
    saved = lastSaved(output);
    return journalIsHot(journal);
}

} // namespace

class TestRaceLogSafety : public QObject {
    Q_OBJECT
private slots:
    void cleanup() { QVERIFY(QSqlDatabase::connectionNames().isEmpty()); }

    void aSaveThatFailsHalfWayKeepsTheOldLog() {
        TestHome home;
        const QString path = logPath(home);
        QVERIFY(saveGeneration(path, 1));
        // The runs get written, then the log's own row refuses the change.
        QCOMPARE(SqliteShell::run(path, "CREATE TRIGGER refuse BEFORE UPDATE ON Properties "
                                        "BEGIN SELECT RAISE(ABORT, 'refused'); END")
                     .exitCode,
                 0);
        RaceLogData log;
        SampleLogs::fillGeneration(log, 2);
        QCOMPARE(Database::saveRaceLog(path, log), SaveResult::PropertiesFailed);
        QVERIFY(sideFiles(path).isEmpty());
        QCOMPARE(integrity(path), QStringLiteral("ok"));
        QCOMPARE(wholeGeneration(path), 1);
    }

    void aRunThatCannotBeStoredKeepsTheOldLog() {
        TestHome home;
        const QString path = logPath(home);
        QVERIFY(saveGeneration(path, 1));
        RaceLogData log;
        SampleLogs::fillGeneration(log, 2);
        // A number, but beyond what a 32-bit float holds.
        log.grid.setCell(150, 22, QStringLiteral("1e39"));
        QCOMPARE(Database::saveRaceLog(path, log), SaveResult::LogTableFailed);
        QVERIFY(sideFiles(path).isEmpty());
        QCOMPARE(wholeGeneration(path), 1);
    }

    void aFileLockedByAnotherProgramIsLeftAsItWas() {
        TestHome home;
        const QString path = logPath(home);
        QVERIFY(saveGeneration(path, 1));
        QProcess holder;
        holder.start(QStringLiteral("sqlite3"), {QStringLiteral("-batch"), path});
        QVERIFY(holder.waitForStarted());
        holder.write("BEGIN IMMEDIATE;\nUPDATE Properties SET TSR = 9;\nSELECT 'holding';\n");
        QByteArray said;
        while (!said.contains("holding")) {
            QVERIFY(holder.waitForReadyRead(10000));
            said += holder.readAllStandardOutput();
        }
        RaceLogData log;
        SampleLogs::fillGeneration(log, 2);
        QCOMPARE(Database::saveRaceLog(path, log), SaveResult::LogTableFailed);
        holder.write("ROLLBACK;\n.quit\n");
        holder.closeWriteChannel();
        QVERIFY(holder.waitForFinished(10000));
        QVERIFY(sideFiles(path).isEmpty());
        QCOMPARE(wholeGeneration(path), 1);
        // Free again, the same save goes through.
        QCOMPARE(Database::saveRaceLog(path, log), SaveResult::Ok);
        QCOMPARE(wholeGeneration(path), 2);
    }

    void aKilledSaveLeavesTheOldLogOrTheNew() {
        TestHome home;
        const QString path = logPath(home);
        int killedWritingTheFile = 0;
        for (int attempt = 0; attempt < 20 && killedWritingTheFile < 2; ++attempt) {
            int saved = 0;
            if (killWhileWriting(path, saved))
                ++killedWritingTheFile;
            // Anyone who opens the file next undoes a half-written save.
            QCOMPARE(integrity(path), QStringLiteral("ok"));
            const int generation = wholeGeneration(path);
            QVERIFY2(generation == saved || generation == saved + 1,
                     qPrintable(QStringLiteral("file holds %1, last reported save %2")
                                    .arg(generation)
                                    .arg(saved)));
            // The next save finds the file as good as ever and leaves nothing beside it.
            QVERIFY(saveGeneration(path, 99));
            QVERIFY(sideFiles(path).isEmpty());
            QCOMPARE(wholeGeneration(path), 99);
        }
        QVERIFY(killedWritingTheFile > 0);
    }

    void aLoadUndoesAHalfWrittenSave() {
        TestHome home;
        const QString path = logPath(home);
        int saved = 0;
        bool caught = false;
        for (int attempt = 0; attempt < 20 && !caught; ++attempt)
            caught = killWhileWriting(path, saved);
        QVERIFY(caught);
        // The program's own load is the first to open the file.
        RaceLogData log;
        QVERIFY(Database::loadLog(path, log));
        QVERIFY(sideFiles(path).isEmpty());
        const int generation = log.pf.toInt();
        QVERIFY(generation == saved || generation == saved + 1);
        QCOMPARE(wholeGeneration(path), generation);
    }

    void filesThatAreNoRaceLog_data() {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("change"); // applied with sqlite3 to a real race log

        TestHome home;
        const QString real = home.root() + QStringLiteral("/real.trl");
        QVERIFY(saveGeneration(real, 3));
        const QByteArray log = contents(real);
        QVERIFY(log.size() > 8192);

        QByteArray noise(8192, '\0');
        QRandomGenerator random(20260704);
        for (char& byte : noise)
            byte = char(random.bounded(256));
        QByteArray corrupt = log;
        for (qsizetype i = 4096; i < corrupt.size(); i += 97)
            corrupt[i] = char(0xFF);

        QTest::newRow("random bytes") << noise << "";
        QTest::newRow("text") << QByteArray("Time,Date,Lane,RT\n10:15am,07/04/26,Left,.0310\n")
                              << "";
        QTest::newRow("empty file") << QByteArray() << "";
        QTest::newRow("header only") << log.left(100) << "";
        QTest::newRow("truncated") << log.left(log.size() / 2) << "";
        QTest::newRow("corrupt pages") << corrupt << "";
        QTest::newRow("no Log table") << log << "DROP TABLE Log";
        QTest::newRow("no Properties table") << log << "DROP TABLE Properties";
        QTest::newRow("Log is a view")
            << log << "DROP TABLE Log; CREATE VIEW Log AS SELECT * FROM Properties";
        QTest::newRow("a missing column") << log << "ALTER TABLE Log DROP COLUMN ft60";
    }
    void filesThatAreNoRaceLog() {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, change);
        TestHome home;
        const QString path = logPath(home);
        QVERIFY(writeFile(path, bytes));
        if (!change.isEmpty())
            QCOMPARE(SqliteShell::run(path, change).exitCode, 0);
        const QByteArray before = contents(path);

        RaceLogData log;
        QVERIFY(!Database::loadLog(path, log));
        QVERIFY(log.grid.tableRows() >= 2);
        QCOMPARE(contents(path), before);
        QVERIFY(sideFiles(path).isEmpty());
    }

    void aSaveDoesNotWriteIntoAFileThatIsNoRaceLog_data() {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("text") << QByteArray("shopping list\n");
        QTest::newRow("empty file") << QByteArray();
        QTest::newRow("random bytes") << QByteArray(4096, '\x5A');
    }
    void aSaveDoesNotWriteIntoAFileThatIsNoRaceLog() {
        QFETCH(QByteArray, bytes);
        TestHome home;
        const QString path = logPath(home);
        QVERIFY(writeFile(path, bytes));
        RaceLogData log;
        SampleLogs::fillLog(log, 2);
        QCOMPARE(Database::saveRaceLog(path, log), SaveResult::LogTableFailed);
        QCOMPARE(contents(path), bytes);
        QVERIFY(sideFiles(path).isEmpty());
    }

    void anotherApplicationsDatabaseIsNotWritten() {
        TestHome home;
        const QString path = logPath(home);
        QCOMPARE(SqliteShell::run(path, "PRAGMA application_id = 1234; CREATE TABLE Log "
                                        "(GeneralID INTEGER, Entry TEXT); INSERT INTO Log "
                                        "VALUES (1, 'kept')")
                     .exitCode,
                 0);
        const QByteArray before = contents(path);
        QVERIFY(!saveGeneration(path, 2));
        QCOMPARE(contents(path), before);
    }

    void aFolderIsNoRaceLog() {
        TestHome home;
        const QString path = home.root() + QStringLiteral("/folder.trl");
        QVERIFY(QDir().mkpath(path));
        RaceLogData log;
        QVERIFY(!Database::loadLog(path, log));
        QCOMPARE(Database::saveRaceLog(path, log), SaveResult::LogTableFailed);
    }
};

QTEST_GUILESS_MAIN(TestRaceLogSafety)
#include "tst_racelogsafety.moc"
