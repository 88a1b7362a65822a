#include "SampleLogs.h"
#include "SqliteShell.h"
#include "common/TestHome.h"
#include "racelog/CellColor.h"
#include "racelog/Database.h"

#include <QDateTime>
#include <QFile>
#include <QSqlDatabase>
#include <QTest>

using Database::SaveResult;

namespace {

QString logPath(const TestHome& home) {
    return home.root() + QStringLiteral("/2026-07-04 Maple Grove.trl");
}

// One query's single value, read by the sqlite3 program.
QString sql(const QString& path, const QString& query) {
    return SqliteShell::run(path, query).output;
}

// True when the first row of the table holds in `column` the typed number rounded to a 32-bit
// float, exactly, and so not the number as typed (pick one a float cannot hold).
bool holdsSingle(const QString& path, const QString& table, const QString& column,
                 const QString& typed) {
    const double single = double(typed.toFloat());
    return sql(path, QStringLiteral("SELECT %1 = %2 AND %1 != %3 FROM %4 "
                                    "ORDER BY GeneralID LIMIT 1")
                         .arg(column, QString::number(single, 'g', 17), typed, table)) == u"1";
}

// The columns of the two tables: name and declared type, in order.
const QStringList logColumns{
    "GeneralID INTEGER", "Time TEXT",      "Date TEXT",     "Lane TEXT",      "DialIn REAL",
    "RT REAL",           "TrackTemp REAL", "ft60 REAL",     "ft330 REAL",     "mph660 REAL",
    "ft660 REAL",        "mph1000 REAL",   "ft1000 REAL",   "mph1320 REAL",   "ft1320 REAL",
    "Timer1 REAL",       "Timer2 REAL",    "DelayBox REAL", "ShiftTime REAL", "Notes TEXT",
    "ABP REAL",          "TEMP REAL",      "RH REAL",       "AA REAL",        "AH REAL",
    "GR REAL",           "VP REAL",        "DP REAL",       "ADR REAL",       "DA REAL",
    "PA REAL",           "WD REAL",        "WS REAL",       "WG REAL",        "AL REAL",
    "Status INTEGER"};
const QStringList propertiesColumns{
    "GeneralID INTEGER", "Date TEXT",      "Version TEXT", "Notes TEXT", "RaceTrack TEXT",
    "PageIdent TEXT",    "RefRun INTEGER", "PF REAL",      "TSR REAL",   "TargetET REAL",
    "ABP REAL",          "TEMP REAL",      "RH REAL",      "AA REAL",    "AH REAL",
    "GR REAL",           "VP REAL",        "DP REAL",      "ADR REAL",   "DA REAL",
    "PA REAL",           "WD REAL",        "WS REAL",      "WG REAL",    "AL REAL"};

// "name TYPE" for each column of the file's table, and which one is the key.
QStringList tableColumns(const QString& path, const QString& table, QString* key) {
    QStringList columns;
    for (const QString& line : SqliteShell::run(path, "PRAGMA table_info(" + table + ")").lines()) {
        const QStringList parts = line.split(u'|'); // cid|name|type|notnull|default|pk
        columns << parts[1] + u' ' + parts[2];
        if (parts[5] == u"1")
            *key = parts[1];
    }
    return columns;
}

// "typeof(GeneralID),typeof(Time),..." and what it should read: "integer|text|...".
QString typeofList(const QStringList& columns) {
    QStringList calls;
    for (const QString& column : columns)
        calls << "typeof(" + column.section(u' ', 0, 0) + ")";
    return calls.join(u',');
}
QString storageClasses(const QStringList& columns) {
    QStringList classes;
    for (const QString& column : columns)
        classes << column.section(u' ', 1).toLower();
    return classes.join(u'|');
}

bool saveAndReload(const QString& path, const RaceLogData& log, RaceLogData& back) {
    return Database::saveRaceLog(path, log) == SaveResult::Ok && Database::loadLog(path, back);
}

} // namespace

class TestRaceLogFile : public QObject {
    Q_OBJECT
private slots:
    void cleanup() {
        // Every routine removes its connection again.
        QVERIFY(QSqlDatabase::connectionNames().isEmpty());
    }

    void createMakesBothTablesInOrder() {
        TestHome home;
        const QString path = logPath(home);
        QVERIFY(Database::createLogDatabase(path));
        QString key;
        QCOMPARE(tableColumns(path, "Log", &key), logColumns);
        QCOMPARE(key, QStringLiteral("GeneralID"));
        key.clear();
        QCOMPARE(tableColumns(path, "Properties", &key), propertiesColumns);
        QCOMPARE(key, QStringLiteral("GeneralID"));

        const QString schema = SqliteShell::run(path, ".schema").output;
        QCOMPARE(schema.count(QStringLiteral("CONSTRAINT PrimaryKey PRIMARY KEY (\"GeneralID\")")),
                 2);
        QCOMPARE(sql(path, "SELECT group_concat(name) FROM sqlite_master"),
                 QStringLiteral("Properties,Log"));
        QCOMPARE(sql(path, "PRAGMA application_id"), QStringLiteral("1414679601"));
        QCOMPARE(sql(path, "PRAGMA journal_mode"), QStringLiteral("delete"));
        QCOMPARE(sql(path, "SELECT count(*) FROM Log"), QStringLiteral("0"));
        QCOMPARE(sql(path, "SELECT count(*) FROM Properties"), QStringLiteral("0"));
        QVERIFY(sideFiles(path).isEmpty());
    }

    void createLeavesAnExistingFileAlone() {
        TestHome home;
        const QString path = logPath(home);
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("not touched");
        file.close();
        QVERIFY(Database::createLogDatabase(path));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), QByteArray("not touched"));
    }

    void createFailsWhereNoFileCanBeMade() {
        TestHome home;
        const QString path = home.root() + QStringLiteral("/no such folder/log.trl");
        QVERIFY(!Database::createLogDatabase(path));
        QVERIFY(!QFile::exists(path));
        RaceLogData log;
        QCOMPARE(Database::saveRaceLog(path, log), SaveResult::CreateFailed);
    }

    void everyColumnSurvivesASaveAndAReload() {
        TestHome home;
        const QString path = logPath(home);
        RaceLogData log;
        SampleLogs::fillLog(log, 3);
        RaceLogData back;
        QVERIFY(saveAndReload(path, log, back));
        QVERIFY(sideFiles(path).isEmpty());

        QCOMPARE(back.grid.tableRows(), 4);
        for (int row = 0; row < log.grid.tableRows(); ++row) {
            for (int column = 0; column < log.grid.cols(); ++column)
                QCOMPARE(back.grid.cell(row, column), log.grid.cell(row, column));
        }
        QCOMPARE(back.date, QStringLiteral("07/04/2026"));
        QCOMPARE(back.carNumber, QStringLiteral("A123"));
        QCOMPARE(back.raceTrack, QStringLiteral("Maple Grove Raceway"));
        QCOMPARE(back.pageIdentifier, QStringLiteral("SUPERPRO"));
        QCOMPARE(back.refRunItems, QStringList({"1", "2", "3"}));
        QCOMPARE(back.refRunIndex, 1);
        QCOMPARE(back.pf, QStringLiteral("1.5"));
        QCOMPARE(back.tsr, QStringLiteral("0.85"));
        QCOMPARE(back.targetET, QStringLiteral("10.9"));
        QCOMPARE(back.notes, log.notes);
        QCOMPARE(back.aa, QStringLiteral("1250"));
        QCOMPARE(back.vp, QStringLiteral("0.55"));
        // The reference run's number is marked, the others are not.
        QCOMPARE(back.grid.look(2, 0).background, CellColor::ReferenceRun);
        QVERIFY(back.grid.look(2, 0).bold);
        QCOMPARE(back.grid.look(1, 0).background, CellColor::ButtonFace);

        // A second round changes nothing.
        RaceLogData again;
        QVERIFY(saveAndReload(path, back, again));
        for (int row = 0; row < log.grid.tableRows(); ++row) {
            for (int column = 0; column < log.grid.cols(); ++column)
                QCOMPARE(again.grid.cell(row, column), log.grid.cell(row, column));
        }
    }

    void theFileHoldsTypedValues() {
        TestHome home;
        const QString path = logPath(home);
        RaceLogData log;
        SampleLogs::fillLog(log, 3);
        QCOMPARE(Database::saveRaceLog(path, log), SaveResult::Ok);

        // Each value has the storage class of its column's declared type.
        QCOMPARE(SqliteShell::run(path, "SELECT " + typeofList(logColumns) + " FROM Log").lines(),
                 QStringList(3, storageClasses(logColumns)));
        QCOMPARE(sql(path, "SELECT " + typeofList(propertiesColumns) + " FROM Properties"),
                 storageClasses(propertiesColumns));

        // Run 1 was filled with seed 1: "02:01pm", "07/02/26", "Right", RT ".1001",
        // Timer 2 "2.2", Timer 1 "1.2"; GeneralID numbers the runs, Status is 0.
        QCOMPARE(
            SqliteShell::run(path, "SELECT GeneralID, Time, Date, Lane, Status FROM Log").lines(),
            QStringList({"1|14:01:00|2026-07-02|Right|0", "2|15:02:00|2026-07-03|Left|0",
                         "3|16:03:00|2026-07-04|Right|0"}));
        QVERIFY(holdsSingle(path, "Log", "RT", ".1001"));
        QVERIFY(holdsSingle(path, "Log", "Timer1", "1.2"));
        QVERIFY(holdsSingle(path, "Log", "Timer2", "2.2"));
        QCOMPARE(sql(path, "SELECT count(*) FROM Log WHERE Notes = "
                           "(SELECT Notes FROM Properties)"),
                 QStringLiteral("3"));

        QCOMPARE(sql(path, "SELECT GeneralID, Date, Version, RaceTrack, PageIdent, RefRun, PF, "
                           "AA FROM Properties"),
                 QStringLiteral("1|2026-07-04|A123|Maple Grove Raceway|SUPERPRO|1|1.5|1250.0"));
        QVERIFY(holdsSingle(path, "Properties", "TSR", "0.85"));
        QVERIFY(holdsSingle(path, "Properties", "TargetET", "10.9"));
        QVERIFY(holdsSingle(path, "Properties", "VP", "0.55"));
        // The weather of the log is not kept in Properties.
        QCOMPARE(sql(path, "SELECT ABP + TEMP + RH + AH + GR + DP + ADR + DA + PA + WD + WS + "
                           "WG + AL FROM Properties"),
                 QStringLiteral("0.0"));
        QCOMPARE(sql(path, "SELECT Notes FROM Properties"),
                 QStringLiteral("Warm, light tail wind.\r\nNew tyres from run 2."));
    }

    void loadedValuesTakeTheirColumnsForm_data() {
        QTest::addColumn<int>("column");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("loaded");
        QTest::newRow("time") << 1 << "2:35pm"
                              << "02:35pm";
        QTest::newRow("time with seconds") << 1 << "14:35:07"
                                           << "02:35pm";
        QTest::newRow("date") << 2 << "7/4/26"
                              << "07/04/26";
        QTest::newRow("lane") << 3 << "Left"
                              << "Left";
        QTest::newRow("blank lane") << 3 << ""
                                    << "";
        QTest::newRow("RT") << 4 << ".5"
                            << ".5000";
        QTest::newRow("blank RT") << 4 << ""
                                  << ".0000";
        QTest::newRow("negative RT") << 4 << "-0.012"
                                     << "-.0120";
        QTest::newRow("delay box") << 5 << "0.30"
                                   << "0.3";
        QTest::newRow("text in delay box") << 5 << "abc"
                                           << "0";
        QTest::newRow("60 ft") << 6 << "1.1"
                               << "1.1000";
        QTest::newRow("blank 60 ft") << 6 << ""
                                     << "";
        QTest::newRow("zero 1320 ft") << 12 << "0"
                                      << "";
        QTest::newRow("text in 1000 ft") << 10 << "fast"
                                         << "";
        QTest::newRow("660 MPH") << 9 << "95"
                                 << "95.00";
        QTest::newRow("1320 MPH") << 13 << "118.456"
                                  << "118.46";
        QTest::newRow("timer 2") << 14 << ""
                                 << "0";
        QTest::newRow("timer 1") << 15 << "1.50"
                                 << "1.5";
        QTest::newRow("shift time") << 16 << "0.0"
                                    << "0";
        QTest::newRow("dial-in") << 17 << "11.2"
                                 << "11.20";
        QTest::newRow("blank dial-in") << 17 << ""
                                       << "";
        QTest::newRow("track temp") << 18 << "95"
                                    << "95.0";
        QTest::newRow("zero track temp") << 18 << "0.0"
                                         << "";
        QTest::newRow("AA") << 19 << "1250.0"
                            << "1250";
        QTest::newRow("blank AA") << 19 << ""
                                  << "0";
        QTest::newRow("VP") << 21 << "0.55"
                            << "0.55";
        QTest::newRow("blank WD") << 30 << ""
                                  << "0";
        QTest::newRow("blank AL") << 33 << ""
                                  << "0";
    }
    void loadedValuesTakeTheirColumnsForm() {
        QFETCH(int, column);
        QFETCH(QString, typed);
        QFETCH(QString, loaded);
        TestHome home;
        RaceLogData log;
        log.grid.setCell(1, column, typed);
        RaceLogData back;
        QVERIFY(saveAndReload(logPath(home), log, back));
        QCOMPARE(back.grid.cell(1, column), loaded);
    }

    void saveAsOntoAnExistingLogReplacesItsRuns() {
        TestHome home;
        const QString path = logPath(home);
        RaceLogData first;
        SampleLogs::fillLog(first, 3);
        QCOMPARE(Database::saveRaceLog(path, first), SaveResult::Ok);
        // The Properties row keeps its key: it is updated, not added again.
        QCOMPARE(SqliteShell::run(path, "UPDATE Properties SET GeneralID = 7").exitCode, 0);

        RaceLogData second;
        SampleLogs::fillRun(second.grid, 1, 40);
        second.raceTrack = QStringLiteral("Second Track");
        second.pf = QStringLiteral("2");
        QCOMPARE(Database::saveRaceLog(path, second), SaveResult::Ok);
        QCOMPARE(sql(path, "SELECT count(*) FROM Log"), QStringLiteral("1"));
        QCOMPARE(sql(path, "SELECT GeneralID, RaceTrack, PF FROM Properties"),
                 QStringLiteral("7|Second Track|2.0"));

        RaceLogData back;
        QVERIFY(Database::loadLog(path, back));
        QCOMPARE(back.grid.tableRows(), 2);
        QCOMPARE(back.grid.cell(1, 19), second.grid.cell(1, 19));
    }

    void aBlankTimeIsSavedAsTheTimeOfTheSave_data() {
        QTest::addColumn<QString>("time");
        QTest::addColumn<QString>("date");
        QTest::newRow("blank") << ""
                               << "";
        QTest::newRow("not a time") << "later"
                                    << "soon";
        QTest::newRow("out of range") << "25:99"
                                      << "13/45/26";
    }
    void aBlankTimeIsSavedAsTheTimeOfTheSave() {
        QFETCH(QString, time);
        QFETCH(QString, date);
        TestHome home;
        const QString path = logPath(home);
        RaceLogData log;
        log.grid.setCell(1, 1, time);
        log.grid.setCell(1, 2, date);
        const QDateTime before = QDateTime::currentDateTime();
        QCOMPARE(Database::saveRaceLog(path, log), SaveResult::Ok);
        const QDateTime after = QDateTime::currentDateTime();

        const QStringList stored = sql(path, "SELECT Time, Date FROM Log").split(u'|');
        const QDateTime saved(QDate::fromString(stored[1], Qt::ISODate),
                              QTime::fromString(stored[0], Qt::ISODate));
        QVERIFY(saved.isValid());
        const QDateTime minuteBefore(before.date(),
                                     QTime(before.time().hour(), before.time().minute()));
        QVERIFY(saved >= minuteBefore && saved <= after);
        // The run table keeps what was typed until the file is read again.
        QCOMPARE(log.grid.cell(1, 1), time);
        QCOMPARE(log.grid.cell(1, 2), date);
    }

    void timesAndDatesAreStoredAsTheTableShowsThem_data() {
        QTest::addColumn<int>("column");
        QTest::addColumn<QString>("cell");
        QTest::addColumn<QString>("stored");
        QTest::newRow("afternoon") << 1 << "2:35pm"
                                   << "14:35:00";
        QTest::newRow("seconds are dropped") << 1 << "14:35:59"
                                             << "14:35:00";
        QTest::newRow("a date as time is midnight") << 1 << "07/04/26"
                                                    << "00:00:00";
        QTest::newRow("run date") << 2 << "07/04/26"
                                  << "2026-07-04";
        QTest::newRow("long year") << 2 << "7/4/2026"
                                   << "2026-07-04";
        // Two year digits bring a date outside 1930 to 2029 into that span.
        QTest::newRow("far year") << 2 << "7/4/2045"
                                  << "1945-07-04";
        // A time alone falls on 12/30/1899, which two year digits make 1999.
        QTest::newRow("a time as date") << 2 << "2:35pm"
                                        << "1999-12-30";
    }
    void timesAndDatesAreStoredAsTheTableShowsThem() {
        QFETCH(int, column);
        QFETCH(QString, cell);
        QFETCH(QString, stored);
        TestHome home;
        const QString path = logPath(home);
        RaceLogData log;
        log.grid.setCell(1, column, cell);
        QCOMPARE(Database::saveRaceLog(path, log), SaveResult::Ok);
        QCOMPARE(sql(path, column == 1 ? "SELECT Time FROM Log" : "SELECT Date FROM Log"), stored);
    }

    void timerOneAndTimerTwoKeepTheirColumns() {
        TestHome home;
        const QString path = logPath(home);
        RaceLogData log;
        log.grid.setCell(1, 15, QStringLiteral("1.5"));
        log.grid.setCell(1, 14, QStringLiteral("2.25"));
        RaceLogData back;
        QVERIFY(saveAndReload(path, log, back));
        QCOMPARE(sql(path, "SELECT Timer1, Timer2 FROM Log"), QStringLiteral("1.5|2.25"));
        QCOMPARE(back.grid.cell(1, 15), QStringLiteral("1.5"));
        QCOMPARE(back.grid.cell(1, 14), QStringLiteral("2.25"));
    }

    void textsAreCutToTheirFields() {
        TestHome home;
        const QString path = logPath(home);
        RaceLogData log;
        log.carNumber = QStringLiteral("1234567");
        log.raceTrack = QString(60, u'T');
        log.pageIdentifier = QStringLiteral("ABCDEFGHIJKLMNOPQRST");
        log.grid.setCell(1, 3, QStringLiteral("LeftLeftLeft"));
        RaceLogData back;
        QVERIFY(saveAndReload(path, log, back));
        QCOMPARE(back.carNumber, QStringLiteral("12345"));
        QCOMPARE(back.raceTrack, QString(50, u'T'));
        QCOMPARE(back.pageIdentifier, QStringLiteral("ABCDEFGHIJKLMNO"));
        QCOMPARE(back.grid.cell(1, 3), QStringLiteral("LeftLeft"));
        // The log itself keeps the whole texts.
        QCOMPARE(log.carNumber, QStringLiteral("1234567"));
    }

    void aFiveCharacterCarNumberSurvives() {
        TestHome home;
        RaceLogData log;
        log.carNumber = QStringLiteral("7734X");
        RaceLogData back;
        QVERIFY(saveAndReload(logPath(home), log, back));
        QCOMPARE(back.carNumber, QStringLiteral("7734X"));
    }

    void onlyTheNotesOfPropertiesAreRead() {
        TestHome home;
        const QString path = logPath(home);
        RaceLogData log;
        SampleLogs::fillLog(log, 2);
        QCOMPARE(Database::saveRaceLog(path, log), SaveResult::Ok);
        QCOMPARE(SqliteShell::run(path, "UPDATE Log SET Notes = 'changed outside'").exitCode, 0);
        RaceLogData back;
        QVERIFY(Database::loadLog(path, back));
        QCOMPARE(back.notes, log.notes);
    }

    void aReloadAndSaveNumbersTheRunsAgain() {
        TestHome home;
        const QString path = logPath(home);
        RaceLogData log;
        SampleLogs::fillLog(log, 3);
        QCOMPARE(Database::saveRaceLog(path, log), SaveResult::Ok);
        QCOMPARE(SqliteShell::run(path, "UPDATE Log SET GeneralID = GeneralID * 10 + 5, "
                                        "Status = 9")
                     .exitCode,
                 0);
        RaceLogData back;
        QVERIFY(Database::loadLog(path, back));
        QCOMPARE(back.grid.tableRows(), 4);
        QCOMPARE(Database::saveRaceLog(path, back), SaveResult::Ok);
        QCOMPARE(SqliteShell::run(path, "SELECT GeneralID, Status FROM Log").lines(),
                 QStringList({"1|0", "2|0", "3|0"}));
    }

    void runsAreReadInKeyOrder() {
        TestHome home;
        const QString path = logPath(home);
        RaceLogData log;
        SampleLogs::fillLog(log, 3);
        QCOMPARE(Database::saveRaceLog(path, log), SaveResult::Ok);
        QCOMPARE(SqliteShell::run(path, "UPDATE Log SET GeneralID = 100 - GeneralID").exitCode, 0);
        RaceLogData back;
        QVERIFY(Database::loadLog(path, back));
        for (int row = 1; row <= 3; ++row) {
            QCOMPARE(back.grid.cell(row, 0), QString::number(row));
            QCOMPARE(back.grid.cell(row, 19), log.grid.cell(4 - row, 19));
        }
    }

    void valuesAreRoundedToASingleOnce() {
        TestHome home;
        const QString path = logPath(home);
        RaceLogData log;
        log.grid.setCell(1, 4, QStringLiteral("0.123456789"));
        log.grid.setCell(1, 15, QStringLiteral("1.23456789"));
        log.grid.setCell(1, 19, QStringLiteral("1250.000001"));
        RaceLogData back;
        QVERIFY(saveAndReload(path, log, back));
        QVERIFY(holdsSingle(path, "Log", "RT", "0.123456789"));
        QVERIFY(holdsSingle(path, "Log", "Timer1", "1.23456789"));
        QCOMPARE(back.grid.cell(1, 4), QStringLiteral(".1235"));
        QCOMPARE(back.grid.cell(1, 15), QStringLiteral("1.2345679"));
        QCOMPARE(back.grid.cell(1, 19), QStringLiteral("1250"));
    }

    void logFieldsFollowTheirRules() {
        TestHome home;
        const QString path = logPath(home);
        RaceLogData log;
        log.date = QStringLiteral("not a day");
        log.pf = QStringLiteral("fast");
        log.targetET = QStringLiteral("10.90");
        QCOMPARE(Database::saveRaceLog(path, log), SaveResult::Ok);
        QCOMPARE(sql(path, "SELECT Date, PF FROM Properties"),
                 QDate::currentDate().toString(Qt::ISODate) + QStringLiteral("|0.0"));
        QVERIFY(holdsSingle(path, "Properties", "TargetET", "10.90"));
        RaceLogData back;
        QVERIFY(Database::loadLog(path, back));
        QCOMPARE(back.date, QDate::currentDate().toString(QStringLiteral("MM/dd/yyyy")));
        QCOMPARE(back.pf, QStringLiteral("0"));
        QCOMPARE(back.targetET, QStringLiteral("10.9"));
    }

    void aLogWithoutRunsLoadsAsOneBlankRun() {
        TestHome home;
        const QString path = logPath(home);
        QVERIFY(Database::createLogDatabase(path));
        RaceLogData log;
        log.pageIdentifier = QStringLiteral("EMPTY");
        QVERIFY(Database::savePropertiesTable(path, log));
        RaceLogData back;
        QVERIFY(Database::loadLog(path, back));
        QCOMPARE(back.grid.tableRows(), 2);
        QCOMPARE(back.grid.cell(1, 0), QStringLiteral("1"));
        for (int column = 1; column < back.grid.cols(); ++column)
            QCOMPARE(back.grid.cell(1, column), QString());
        QCOMPARE(back.refRunItems, QStringList({"1"}));
        QCOMPARE(back.pageIdentifier, QStringLiteral("EMPTY"));
    }

    void theTwoStepsCanRunAlone() {
        TestHome home;
        const QString path = logPath(home);
        QVERIFY(Database::createLogDatabase(path));
        RaceLogData log;
        SampleLogs::fillLog(log, 2);
        QVERIFY(Database::saveLogTable(path, log));
        QCOMPARE(sql(path, "SELECT count(*) FROM Log"), QStringLiteral("2"));
        QCOMPARE(sql(path, "SELECT count(*) FROM Properties"), QStringLiteral("0"));
        QVERIFY(Database::savePropertiesTable(path, log));
        QVERIFY(Database::savePropertiesTable(path, log));
        QCOMPARE(sql(path, "SELECT count(*) FROM Properties"), QStringLiteral("1"));
        QVERIFY(sideFiles(path).isEmpty());
        // Neither step makes a file.
        const QString other = home.root() + QStringLiteral("/other.trl");
        QVERIFY(!Database::saveLogTable(other, log));
        QVERIFY(!Database::savePropertiesTable(other, log));
        QVERIFY(!QFile::exists(other));
    }

    void aFileWithoutItsPropertiesRowKeepsTheRunsRead() {
        TestHome home;
        const QString path = logPath(home);
        QVERIFY(Database::createLogDatabase(path));
        RaceLogData log;
        SampleLogs::fillLog(log, 3);
        QVERIFY(Database::saveLogTable(path, log));
        RaceLogData back;
        QVERIFY(!Database::loadLog(path, back));
        QCOMPARE(back.grid.tableRows(), 4);
        QCOMPARE(back.grid.cell(3, 12), log.grid.cell(3, 12));
    }

    void fieldNamesAreMatchedWithoutRegardToCase() {
        TestHome home;
        const QString path = logPath(home);
        QVERIFY(Database::createLogDatabase(path));
        QCOMPARE(SqliteShell::run(path, "ALTER TABLE Log RENAME COLUMN Lane TO LANE; "
                                        "ALTER TABLE Log RENAME COLUMN DialIn TO dialin;")
                     .exitCode,
                 0);
        RaceLogData log;
        log.grid.setCell(1, 3, QStringLiteral("Right"));
        log.grid.setCell(1, 17, QStringLiteral("10.95"));
        RaceLogData back;
        QVERIFY(saveAndReload(path, log, back));
        QCOMPARE(back.grid.cell(1, 3), QStringLiteral("Right"));
        QCOMPARE(back.grid.cell(1, 17), QStringLiteral("10.95"));
    }

    void aMissingFileIsNotLoaded() {
        TestHome home;
        RaceLogData back;
        QVERIFY(!Database::loadLog(logPath(home), back));
        QVERIFY(!QFile::exists(logPath(home)));
        QCOMPARE(back.grid.tableRows(), 2);
    }

    void failuresHaveTheirMessages() {
        using Database::saveFailureMessage;
        QCOMPARE(saveFailureMessage(SaveResult::CreateFailed).text,
                 QStringLiteral("Unable to create log database!"));
        QCOMPARE(saveFailureMessage(SaveResult::CreateFailed).title,
                 QStringLiteral("Database Create"));
        QCOMPARE(saveFailureMessage(SaveResult::LogTableFailed).text,
                 QStringLiteral("Unable to save race log table data!"));
        QCOMPARE(saveFailureMessage(SaveResult::LogTableFailed).title,
                 QStringLiteral("Race Log Table Data"));
        QCOMPARE(saveFailureMessage(SaveResult::PropertiesFailed).text,
                 QStringLiteral("Unable to save race log property information!"));
        QCOMPARE(saveFailureMessage(SaveResult::PropertiesFailed).title,
                 QStringLiteral("Race Log Property Information"));
        QVERIFY(saveFailureMessage(SaveResult::Ok).text.isEmpty());
    }

    void theTrackOffsetIsKeptInATableOfExtras() {
        TestHome home;
        const QString path = logPath(home);
        RaceLogData log;
        log.trackOffset = "0.012";
        RaceLogData back;
        QVERIFY(saveAndReload(path, log, back));
        QCOMPARE(back.trackOffset, QStringLiteral("0.012"));
        QString key;
        QCOMPARE(tableColumns(path, "Extras", &key), (QStringList{"Name TEXT", "Value TEXT"}));
        QCOMPARE(key, QStringLiteral("Name"));
        QCOMPARE(sql(path, "SELECT Value FROM Extras WHERE Name = 'TrackOffset'"),
                 QStringLiteral("0.012"));

        // A second save replaces the value; the table keeps one row per name.
        log.trackOffset = "-0.004";
        RaceLogData again;
        QVERIFY(saveAndReload(path, log, again));
        QCOMPARE(again.trackOffset, QStringLiteral("-0.004"));
        QCOMPARE(sql(path, "SELECT count(*) FROM Extras"), QStringLiteral("1"));
    }

    void aFileWithoutExtrasLoadsWithNoOffset() {
        TestHome home;
        const QString path = logPath(home);
        RaceLogData log;
        log.trackOffset = "0.020";
        QVERIFY(Database::saveRaceLog(path, log) == SaveResult::Ok);
        // As a program that knows only the two tables leaves it.
        QCOMPARE(SqliteShell::run(path, "DROP TABLE Extras").exitCode, 0);
        RaceLogData back;
        const Database::LoadResult loaded = Database::loadLog(path, back);
        QVERIFY(loaded);
        QCOMPARE(loaded.unreadValues, 0);
        QCOMPARE(back.trackOffset, QStringLiteral("0"));
    }

    void anOffsetThatIsNoNumberIsCountedUnread() {
        TestHome home;
        const QString path = logPath(home);
        const RaceLogData log;
        QVERIFY(Database::saveRaceLog(path, log) == SaveResult::Ok);
        QCOMPARE(SqliteShell::run(path, "UPDATE Extras SET Value = 'fast' "
                                        "WHERE Name = 'TrackOffset'")
                     .exitCode,
                 0);
        RaceLogData back;
        const Database::LoadResult loaded = Database::loadLog(path, back);
        QVERIFY(loaded);
        QCOMPARE(loaded.unreadValues, 1);
        QCOMPARE(back.trackOffset, QStringLiteral("0"));
    }
};

QTEST_GUILESS_MAIN(TestRaceLogFile)
#include "tst_racelogfile.moc"
