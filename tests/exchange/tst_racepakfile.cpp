#include "common/TestHome.h"
#include "core/Registry.h"
#include "core/SettingKeys.h"
#include "exchange/RacepakFile.h"
#include "feed/CorrectionFactor.h"
#include "racelog/RaceLog.h"

#include <QDir>
#include <QFile>
#include <QTest>
#include <cfloat>
#include <cmath>
#include <initializer_list>
#include <unistd.h>
#include <utility>

namespace {

const QByteArray FirstLine =
    "mm/dd/yyyy hh:mm:ss, Temp, Humidity, Barometric Pressure, Pressure Altitude, Corr Factor, "
    "Density Alt, Air Density, Grains of Water, Vapor Pressure, Dry Barometer, Dew Point, "
    "Wet Bulb Temp\r\n";

const QDateTime Moment(QDate(2026, 11, 22), QTime(14, 5, 7));

void setCells(RaceLog& log, int row, std::initializer_list<std::pair<int, QString>> cells) {
    for (const auto& [column, text] : cells)
        log.runs().setCell(row, column, text);
}

// A run on a warm, damp afternoon. Its factor, worked term by term in single precision:
// 29.92 / 29.35 = 1.0194207, sqrt((75.5 + 459.7) / 519.7) = 1.0148029,
// 29.35 / (29.35 - 0.412) = 1.0142373, product 1.0492398, rounded 1.0492.
void fillWarmRun(RaceLog& log, int row = 1) {
    setCells(log, row,
             {{20, "1850"},
              {21, "0.412"},
              {22, "29.35"},
              {23, "75.5"},
              {24, "42"},
              {26, "58.3"},
              {27, "51.2"},
              {28, "96.12"},
              {29, "540"}});
}

const QByteArray WarmRecord = "11/22/2026 14:05:07, 75.5, 42, 29.35, 540, 1.0492, 1850, 96.12, "
                              "58.3, 0.412, 0, 51.2, 0\r\n";

QString defaultFile(const TestHome& home) {
    return home.dataHome() + QStringLiteral("/Zorvane/Racepak/zorvaneracepak.dat");
}

QByteArray readAll(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class TestRacepakFile : public QObject {
    Q_OBJECT
private slots:
    void aRunGivesTheFieldLineAndItsRecord() {
        RaceLog log;
        fillWarmRun(log);
        QCOMPARE(RacepakFile::contents(log.runs(), 1, Moment), FirstLine + WarmRecord);
    }

    // The record carries the moment of the hand-over in a 24-hour clock, not the run's time.
    void theMomentIsTheHandOversOwn() {
        RaceLog log;
        fillWarmRun(log);
        setCells(log, 1, {{1, "02:35pm"}, {2, "11/20/26"}});
        const QByteArray text =
            *RacepakFile::contents(log.runs(), 1, QDateTime(QDate(2027, 3, 4), QTime(9, 8, 1)));
        QVERIFY(text.mid(FirstLine.size()).startsWith("03/04/2027 09:08:01, 75.5, "));
    }

    void theFactorIsRoundedToFourDecimals() {
        RaceLog log;
        fillWarmRun(log);
        QCOMPARE(RacepakFile::correctionFactorText(log.runs(), 1), QStringLiteral("1.0492"));
        // 1.0513890 rounds up.
        setCells(log, 1, {{21, "0.5"}, {22, "29.5"}, {23, "80"}});
        QCOMPARE(RacepakFile::correctionFactorText(log.runs(), 1), QStringLiteral("1.0514"));
    }

    void standardAirHasAFactorOfOne() {
        const std::optional<float> factor = correctionFactor(29.92f, 60.0f, 0.0f);
        QVERIFY(factor);
        QVERIFY(std::fabs(*factor - 1.0f) <= FLT_EPSILON);
        RaceLog log;
        setCells(log, 1, {{21, "0"}, {22, "29.92"}, {23, "60"}});
        QCOMPARE(RacepakFile::correctionFactorText(log.runs(), 1), QStringLiteral("1"));
    }

    // Only the three cells of the factor must hold numbers; any other cell is written as it
    // stands, an empty one as nothing between its separators.
    void anEmptyWeatherCellIsAnEmptyField() {
        RaceLog log;
        fillWarmRun(log);
        setCells(log, 1, {{24, ""}, {27, ""}});
        QCOMPARE(RacepakFile::contents(log.runs(), 1, Moment),
                 FirstLine + "11/22/2026 14:05:07, 75.5, , 29.35, 540, 1.0492, 1850, 96.12, "
                             "58.3, 0.412, 0, , 0\r\n");
    }

    void aRowWithoutAFactorGivesNoRecord_data() {
        QTest::addColumn<int>("column");
        QTest::addColumn<QString>("text");
        QTest::newRow("pressure not a number") << 22 << "n/a";
        QTest::newRow("no pressure") << 22 << "";
        QTest::newRow("pressure of 0") << 22 << "0";
        QTest::newRow("pressure all vapor") << 22 << "0.412";
        QTest::newRow("no temperature") << 23 << "";
        QTest::newRow("no vapor pressure") << 21 << "";
    }
    void aRowWithoutAFactorGivesNoRecord() {
        QFETCH(int, column);
        QFETCH(QString, text);
        RaceLog log;
        fillWarmRun(log);
        log.runs().setCell(1, column, text);
        QVERIFY(!RacepakFile::contents(log.runs(), 1, Moment));
        QVERIFY(!RacepakFile::correctionFactorText(log.runs(), 1));
    }

    void theFileGoesToTheSharedDataFolder() {
        TestHome home;
        QCOMPARE(RacepakFile::folder(), home.dataHome() + QStringLiteral("/Zorvane/Racepak"));
        QVERIFY(!QDir(home.dataHome() + QStringLiteral("/Zorvane")).exists());
        RaceLog log;
        fillWarmRun(log);
        QVERIFY(RacepakFile::write(log.runs(), 1, Moment));
        QCOMPARE(readAll(defaultFile(home)), FirstLine + WarmRecord);
    }

    void theSettingNamesTheFolder() {
        TestHome home;
        const QString chosen = home.root() + QStringLiteral("/racepak/in/here");
        Registry::set(SettingKeys::RacepakFolder, chosen + u'/');
        QCOMPARE(RacepakFile::folder(), chosen);
        RaceLog log;
        fillWarmRun(log);
        QVERIFY(RacepakFile::write(log.runs(), 1, Moment));
        QCOMPARE(readAll(chosen + QStringLiteral("/zorvaneracepak.dat")), FirstLine + WarmRecord);
        QVERIFY(!QFile::exists(defaultFile(home)));
    }

    void twoHandOversLeaveOnlyTheSecond() {
        TestHome home;
        RaceLog log;
        fillWarmRun(log, 1);
        const int second = log.runs().addRun();
        setCells(log, second, {{21, "0"}, {22, "29.92"}, {23, "60"}, {24, "30"}});
        QVERIFY(RacepakFile::write(log.runs(), 1, Moment));
        QVERIFY(RacepakFile::write(log.runs(), second, Moment.addSecs(60)));
        QCOMPARE(readAll(defaultFile(home)),
                 FirstLine + "11/22/2026 14:06:07, 60, 30, 29.92, , 1, , , , 0, 0, , 0\r\n");
    }

    void aFailingRowLeavesTheOldFile_data() {
        QTest::addColumn<QString>("pressure");
        QTest::newRow("pressure not a number") << "n/a";
        QTest::newRow("division by zero") << "0.412";
    }
    void aFailingRowLeavesTheOldFile() {
        QFETCH(QString, pressure);
        TestHome home;
        RaceLog log;
        fillWarmRun(log);
        QVERIFY(RacepakFile::write(log.runs(), 1, Moment));
        log.runs().setCell(1, 22, pressure);
        QVERIFY(!RacepakFile::write(log.runs(), 1, Moment.addSecs(60)));
        QCOMPARE(readAll(defaultFile(home)), FirstLine + WarmRecord);
        QCOMPARE(QDir(RacepakFile::folder()).entryList(QDir::Files | QDir::Hidden),
                 QStringList{RacepakFile::FileName});
    }

    // A folder that cannot be made: the setting names a path below an ordinary file.
    void aFolderThatCannotBeMadeWritesNothing() {
        TestHome home;
        QFile blocker(home.root() + QStringLiteral("/plain"));
        QVERIFY(blocker.open(QIODevice::WriteOnly));
        blocker.close();
        Registry::set(SettingKeys::RacepakFolder, blocker.fileName() + QStringLiteral("/Racepak"));
        RaceLog log;
        fillWarmRun(log);
        QVERIFY(!RacepakFile::write(log.runs(), 1, Moment));
    }

    // A folder the user may not write to keeps the file it has.
    void aReadOnlyFolderLeavesTheOldFile() {
        if (geteuid() == 0)
            QSKIP("the superuser writes into read-only folders");
        TestHome home;
        RaceLog log;
        fillWarmRun(log);
        QVERIFY(RacepakFile::write(log.runs(), 1, Moment));
        const QString folder = RacepakFile::folder();
        QVERIFY(QFile::setPermissions(folder, QFile::ReadOwner | QFile::ExeOwner));
        log.runs().setCell(1, 23, QStringLiteral("90"));
        const bool written = RacepakFile::write(log.runs(), 1, Moment.addSecs(60));
        QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        QVERIFY(!written);
        QCOMPARE(readAll(defaultFile(home)), FirstLine + WarmRecord);
    }

    // Where the file stands taken by something that is no file: the write fails and what
    // stood there stays.
    void aPlaceTakenByAFolderStaysAsItWas() {
        TestHome home;
        QVERIFY(QDir().mkpath(defaultFile(home) + QStringLiteral("/kept")));
        RaceLog log;
        fillWarmRun(log);
        QVERIFY(!RacepakFile::write(log.runs(), 1, Moment));
        QVERIFY(QDir(defaultFile(home) + QStringLiteral("/kept")).exists());
    }
};

QTEST_GUILESS_MAIN(TestRacepakFile)
#include "tst_racepakfile.moc"
