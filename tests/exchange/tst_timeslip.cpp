#include "common/TestHome.h"
#include "core/Registry.h"
#include "core/SettingKeys.h"
#include "exchange/TimeSlip.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <memory>

namespace {

// One record of the receiver's log: 21 fields, the ones given filled, the others "x<field>"
// so a shifted field would show.
QString slip(const QString& runTime, const QString& category, const QString& car,
             const QString& lane = QStringLiteral("L")) {
    QStringList fields;
    for (int i = 0; i < TimeSlipFieldCount; ++i)
        fields.append(QStringLiteral("x%1").arg(i));
    fields[SlipRunTime] = runTime;
    fields[SlipCategory] = category;
    fields[SlipCarNumber] = car;
    fields[SlipLane] = lane;
    return fields.join(u',');
}

QString pair(const QString& runTime, const QString& car1, const QString& car2,
             const QString& secondCategory = QStringLiteral("Pro")) {
    return slip(runTime, QStringLiteral("Pro"), car1, QStringLiteral("L")) +
           QStringLiteral("\r\n") + slip(runTime, secondCategory, car2, QStringLiteral("R")) +
           QStringLiteral("\r\n");
}

QDateTime at(int hour, int minute, int second, const QDate& day = QDate(2025, 10, 12)) {
    return QDateTime(day, QTime(hour, minute, second));
}

} // namespace

class TestTimeSlip : public QObject {
    Q_OBJECT
    std::unique_ptr<TestHome> home;
    std::unique_ptr<QTemporaryDir> folder;

    QString write(const QString& name, const QByteArray& bytes) {
        const QString path = folder->filePath(name);
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
            qFatal("cannot write %s", qPrintable(path));
        file.write(bytes);
        return path;
    }
    QString write(const QString& name, const QString& text) { return write(name, text.toUtf8()); }

    // A log named where the receiver's software names it.
    QString receiverLog(const QString& text) {
        const QString path = write(QStringLiteral("icard.csv"), text);
        Registry::set(SettingKeys::ReceiverLogFile, path);
        return path;
    }

private slots:
    void init() {
        home = std::make_unique<TestHome>();
        folder = std::make_unique<QTemporaryDir>();
    }
    void cleanup() {
        folder.reset();
        home.reset();
    }

    // No receiver software installed and no file named in the program: nothing is read and no
    // message is due; the command then says no time slip was imported.
    void withoutAnySettingThereIsNoLogFile() {
        QCOMPARE(timeSlipLogPath(), QString());
        TimeSlipLog log;
        QCOMPARE(loadTimeSlipLog(log), TimeSlipLoad::NoLogFile);
        const TimeSlipSearch search = findTimeSlip(log, at(14, 0, 0), QStringLiteral("7"));
        QCOMPARE(search.load, TimeSlipLoad::NoLogFile);
        QCOMPARE(search.row, -1);
    }

    void theReceiversSettingNamesTheLog() {
        const QString path = receiverLog(pair(QStringLiteral("10/12/2025 2:00:00 PM"), "7", "9"));
        QCOMPARE(timeSlipLogPath(), path);
        TimeSlipLog log;
        QCOMPARE(loadTimeSlipLog(log), TimeSlipLoad::Read);
        QCOMPARE(log.rows.size(), 2);
    }

    // Where the receiver's software is absent, the program's own setting names the file.
    void theProgramsSettingStandsInForTheReceivers() {
        const QString path = write(QStringLiteral("own.csv"),
                                   pair(QStringLiteral("10/12/2025 2:00:00 PM"), "7", "9"));
        Registry::set(SettingKeys::TimeSlipLogFile, path);
        QCOMPARE(timeSlipLogPath(), path);
        TimeSlipLog log;
        QCOMPARE(loadTimeSlipLog(log), TimeSlipLoad::Read);
        QCOMPARE(log.rows.size(), 2);
    }

    // With both set, the receiver's own word wins: its file has one pair, the other two.
    void theReceiversSettingWinsOverTheProgramsSetting() {
        const QString own = write(QStringLiteral("own.csv"),
                                  pair(QStringLiteral("10/12/2025 2:00:00 PM"), "1", "2") +
                                      pair(QStringLiteral("10/12/2025 2:05:00 PM"), "3", "4"));
        Registry::set(SettingKeys::TimeSlipLogFile, own);
        const QString receivers =
            receiverLog(pair(QStringLiteral("10/12/2025 2:00:00 PM"), "7", "9"));
        QCOMPARE(timeSlipLogPath(), receivers);
        TimeSlipLog log;
        QCOMPARE(loadTimeSlipLog(log), TimeSlipLoad::Read);
        QCOMPARE(log.rows.size(), 2);
    }

    void aMissingFileIsNoError() {
        Registry::set(SettingKeys::ReceiverLogFile, folder->filePath(QStringLiteral("gone.csv")));
        TimeSlipLog log;
        QCOMPARE(loadTimeSlipLog(log), TimeSlipLoad::Missing);
        QCOMPARE(findTimeSlip(log, at(14, 0, 0), QStringLiteral("7")).row, -1);
    }

    void anEmptyFileReadsAsNoSlips() {
        receiverLog(QString());
        TimeSlipLog log;
        QCOMPARE(loadTimeSlipLog(log), TimeSlipLoad::Read);
        QCOMPARE(log.rows.size(), 0);
        QCOMPARE(log.firstOfLastPair(), -2);
        QCOMPARE(log.secondOfLastPair(), -1);
    }

    // Every field kept as the text it is, quotes taken off, by its number.
    void fieldsAreReadAsText() {
        const QString first = QStringLiteral(
            "101,\"10/12/2025 2:00:00 PM\",\"Super Pro, Round 2\",x3,\"07\",x5,l,x7,x8,"
            "0.512,1.123,3.210,4.987,140.25,6.401,170.11,7.654,181.20,\"say \"\"hi\"\"\",,x20");
        const QString second = slip(QStringLiteral("10/12/2025 2:00:00 PM"), "Super Pro", "9", "R");
        receiverLog(first + QStringLiteral("\r\n") + second);
        TimeSlipLog log;
        QCOMPARE(loadTimeSlipLog(log), TimeSlipLoad::Read);
        QCOMPARE(log.rows.size(), 2);
        const QStringList& row = log.rows[0];
        QCOMPARE(row.size(), TimeSlipFieldCount);
        QCOMPARE(row[0], "101");
        QCOMPARE(row[SlipRunTime], "10/12/2025 2:00:00 PM");
        QCOMPARE(row[SlipCategory], "Super Pro, Round 2");
        QCOMPARE(row[SlipCarNumber], "07");
        QCOMPARE(row[SlipLane], "l"); // a lower-case lane is kept as it stands
        QCOMPARE(row[SlipReactionTime], "0.512");
        QCOMPARE(row[Slip60ft], "1.123");
        QCOMPARE(row[Slip330ft], "3.210");
        QCOMPARE(row[Slip660ft], "4.987");
        QCOMPARE(row[Slip660Mph], "140.25");
        QCOMPARE(row[Slip1000ft], "6.401");
        QCOMPARE(row[Slip1000Mph], "170.11");
        QCOMPARE(row[Slip1320ft], "7.654");
        QCOMPARE(row[Slip1320Mph], "181.20");
        QCOMPARE(row[18], "say \"hi\"");
        QCOMPARE(row[19], "");
        QCOMPARE(row[20], "x20");
        QCOMPARE(log.rows[1][SlipLane], "R");
        QCOMPARE(log.rows[1][20], "x20");
    }

    // CR LF, LF and a last line without a line end read alike.
    void lineEndsOfEitherKind() {
        const QString a = slip(QStringLiteral("10/12/2025 2:00:00 PM"), "Pro", "1");
        const QString b = slip(QStringLiteral("10/12/2025 2:00:00 PM"), "Pro", "2");
        const QString c = slip(QStringLiteral("10/12/2025 2:10:00 PM"), "Pro", "3");
        const QString d = slip(QStringLiteral("10/12/2025 2:10:00 PM"), "Pro", "4");
        receiverLog(a + "\r\n" + b + "\n" + c + "\r\n" + d);
        TimeSlipLog log;
        QCOMPARE(loadTimeSlipLog(log), TimeSlipLoad::Read);
        QCOMPARE(log.rows.size(), 4);
        QCOMPARE(log.rows[3][SlipCarNumber], "4");
        QCOMPARE(log.rows[3][20], "x20");
        QCOMPARE(log.firstOfLastPair(), 2);
        QCOMPARE(log.secondOfLastPair(), 3);
    }

    // A file with an odd number of records ends inside a pair: the read fails, the table is
    // left empty, and the user is to see the long message.
    void anOddNumberOfRecordsIsUnreadable() {
        receiverLog(pair(QStringLiteral("10/12/2025 2:00:00 PM"), "1", "2") +
                    slip(QStringLiteral("10/12/2025 2:05:00 PM"), "Pro", "3"));
        TimeSlipLog log;
        QCOMPARE(loadTimeSlipLog(log), TimeSlipLoad::Unreadable);
        QCOMPARE(log.rows.size(), 0);
        QCOMPARE(log.firstOfLastPair(), -2);
        QCOMPARE(log.secondOfLastPair(), -1);
        const TimeSlipSearch search = findTimeSlip(log, at(14, 0, 0), QStringLiteral("1"));
        QCOMPARE(search.load, TimeSlipLoad::Unreadable);
        QCOMPARE(search.row, -1);

        const TimeSlipMessage message = timeSlipLogUnreadable();
        QCOMPARE(message.title, "Tarnwick - iCardRX Import");
        QCOMPARE(message.text.split(u'\n'),
                 (QStringList{"Error:", "  Unable to import race log file!", "",
                              "  Please try closing the file if it is open or select",
                              "  a valid formated iCard Race Log CSV file"}));
    }

    // A record of 20 fields is not filled up from the next line: the read fails.
    void aShortRecordIsUnreadable() {
        QString text = pair(QStringLiteral("10/12/2025 2:00:00 PM"), "1", "2");
        QStringList fields = slip(QStringLiteral("10/12/2025 2:05:00 PM"), "Pro", "3").split(u',');
        fields.removeLast();
        text +=
            fields.join(u',') + "\r\n" + slip(QStringLiteral("10/12/2025 2:05:00 PM"), "Pro", "4");
        receiverLog(text);
        TimeSlipLog log;
        QCOMPARE(loadTimeSlipLog(log), TimeSlipLoad::Unreadable);
        QCOMPARE(log.rows.size(), 0);
    }

    // A blank line is a record of one empty field, too short as well.
    void aBlankLineInsideIsUnreadable() {
        receiverLog(pair(QStringLiteral("10/12/2025 2:00:00 PM"), "1", "2") + "\r\n" +
                    pair(QStringLiteral("10/12/2025 2:05:00 PM"), "3", "4"));
        TimeSlipLog log;
        QCOMPARE(loadTimeSlipLog(log), TimeSlipLoad::Unreadable);
    }

    // Fields beyond the 21st are dropped.
    void extraFieldsAreDropped() {
        const QString a = slip(QStringLiteral("10/12/2025 2:00:00 PM"), "Pro", "1") + ",x21,x22";
        receiverLog(a + "\n" + slip(QStringLiteral("10/12/2025 2:00:00 PM"), "Pro", "2") + "\n");
        TimeSlipLog log;
        QCOMPARE(loadTimeSlipLog(log), TimeSlipLoad::Read);
        QCOMPARE(log.rows[0].size(), TimeSlipFieldCount);
        QCOMPARE(log.rows[0][20], "x20");
    }

    // The data ends at a pair whose second record has no category. That pair is dropped and
    // nothing after it is read, not even a broken record. Pairs: (1,2) (3,4) (5,end) (short).
    void aPairWithoutCategoryEndsTheData() {
        receiverLog(pair(QStringLiteral("10/12/2025 2:00:00 PM"), "1", "2") +
                    pair(QStringLiteral("10/12/2025 2:05:00 PM"), "3", "4") +
                    pair(QStringLiteral("10/12/2025 2:10:00 PM"), "5", "6", QString()) +
                    QStringLiteral("x0,broken\r\n"));
        TimeSlipLog log;
        QCOMPARE(loadTimeSlipLog(log), TimeSlipLoad::Read);
        QCOMPARE(log.rows.size(), 4);
        QCOMPARE(log.rows[3][SlipCarNumber], "4");
        QCOMPARE(log.firstOfLastPair(), 2);
        QCOMPARE(log.secondOfLastPair(), 3);
    }

    // The first pair never ends the data, blank category or not: reading goes on to the end
    // marker in the third pair, which leaves two pairs.
    void aBlankFirstPairDoesNotEndTheData() {
        receiverLog(pair(QStringLiteral("10/12/2025 2:00:00 PM"), "1", "2", QString()) +
                    pair(QStringLiteral("10/12/2025 2:05:00 PM"), "3", "4") +
                    pair(QStringLiteral("10/12/2025 2:10:00 PM"), "5", "6", QString()));
        TimeSlipLog log;
        QCOMPARE(loadTimeSlipLog(log), TimeSlipLoad::Read);
        QCOMPARE(log.rows.size(), 4);
        QCOMPARE(log.rows[1][SlipCategory], "");
        QCOMPARE(log.rows[2][SlipCarNumber], "3");
    }

    // Only the second record's category counts; an empty one in the first lane is data.
    void anEmptyCategoryInTheFirstLaneDoesNotEndTheData() {
        const QString first = slip(QStringLiteral("10/12/2025 2:05:00 PM"), QString(), "3");
        const QString second = slip(QStringLiteral("10/12/2025 2:05:00 PM"), "Pro", "4");
        receiverLog(pair(QStringLiteral("10/12/2025 2:00:00 PM"), "1", "2") + first + "\n" +
                    second + "\n" + pair(QStringLiteral("10/12/2025 2:10:00 PM"), "5", "6"));
        TimeSlipLog log;
        QCOMPARE(loadTimeSlipLog(log), TimeSlipLoad::Read);
        QCOMPARE(log.rows.size(), 6);
    }

    // Each load reads the file anew: a log that grew is seen, and one that broke reads empty.
    void eachLoadReadsTheFileAnew() {
        const QString first = pair(QStringLiteral("10/12/2025 2:00:00 PM"), "1", "2");
        receiverLog(first);
        TimeSlipLog log;
        QCOMPARE(loadTimeSlipLog(log), TimeSlipLoad::Read);
        QCOMPARE(log.rows.size(), 2);
        receiverLog(first + pair(QStringLiteral("10/12/2025 2:05:00 PM"), "3", "4"));
        QCOMPARE(loadTimeSlipLog(log), TimeSlipLoad::Read);
        QCOMPARE(log.rows.size(), 4);
        receiverLog(first + slip(QStringLiteral("10/12/2025 2:05:00 PM"), "Pro", "3"));
        QCOMPARE(loadTimeSlipLog(log), TimeSlipLoad::Unreadable);
        QCOMPARE(log.rows.size(), 0);
    }

    // The distance is counted in minute boundaries crossed, not in time elapsed.
    //   slip 2:00:00 PM, asked 2:14:59 PM: 14 min 59 s elapsed, 14 boundaries: found.
    //   slip 2:00:59 PM, asked 2:15:00 PM: 14 min 1 s elapsed, 15 boundaries: not found.
    //   slip 2:00:59 PM, asked 2:14:00 PM: 13 min 1 s elapsed, 14 boundaries: found.
    //   the same before the slip: slip 2:15:00 PM, asked 2:00:59 PM, 15 boundaries: not found;
    //   asked 2:01:00 PM, 14 boundaries: found.
    void theDistanceCountsMinuteBoundaries() {
        receiverLog(pair(QStringLiteral("10/12/2025 2:00:00 PM"), "1", "2") +
                    pair(QStringLiteral("10/12/2025 2:00:59 PM"), "3", "4") +
                    pair(QStringLiteral("10/12/2025 2:15:00 PM"), "5", "6"));
        TimeSlipLog log;
        QCOMPARE(findTimeSlip(log, at(14, 14, 59), QStringLiteral("1")).row, 0);
        QCOMPARE(findTimeSlip(log, at(14, 15, 0), QStringLiteral("1")).row, -1);
        QCOMPARE(findTimeSlip(log, at(14, 15, 0), QStringLiteral("3")).row, -1);
        QCOMPARE(findTimeSlip(log, at(14, 14, 0), QStringLiteral("3")).row, 2);
        QCOMPARE(findTimeSlip(log, at(14, 0, 59), QStringLiteral("5")).row, -1);
        QCOMPARE(findTimeSlip(log, at(14, 1, 0), QStringLiteral("5")).row, 4);
        QCOMPARE(findTimeSlip(log, at(14, 1, 0), QStringLiteral("6")).row, 5);
        const TimeSlipSearch found = findTimeSlip(log, at(14, 1, 0), QStringLiteral("5"));
        QCOMPARE(found.load, TimeSlipLoad::Read);
    }

    // The date counts too: 11:55 PM and 12:05 AM the next day are 10 boundaries apart, and
    // the same clock time a day off is 1,440.
    void theDateCounts() {
        receiverLog(pair(QStringLiteral("10/12/2025 11:55:00 PM"), "1", "2"));
        TimeSlipLog log;
        QCOMPARE(findTimeSlip(log, at(0, 5, 0, QDate(2025, 10, 13)), QStringLiteral("1")).row, 0);
        QCOMPARE(findTimeSlip(log, at(23, 55, 0, QDate(2025, 10, 13)), QStringLiteral("1")).row,
                 -1);
    }

    // Two slips of the same car in one minute: the first in the file wins. The first that fits
    // wins even when a later one lies closer: car 7 at 2:00 PM (row 0, 10 boundaries off) and
    // at 2:09 PM (row 2, 1 boundary off), asked at 2:10 PM.
    void theFirstSlipThatFitsWins() {
        receiverLog(pair(QStringLiteral("10/12/2025 2:00:10 PM"), "7", "7") +
                    pair(QStringLiteral("10/12/2025 2:09:00 PM"), "7", "8"));
        TimeSlipLog log;
        QCOMPARE(findTimeSlip(log, at(14, 0, 30), QStringLiteral("7")).row, 0);
        QCOMPARE(findTimeSlip(log, at(14, 10, 0), QStringLiteral("7")).row, 0);
        QCOMPARE(findTimeSlip(log, at(14, 10, 0), QStringLiteral("8")).row, 3);
    }

    // The car number must match as text: "07" is not "7", nor " 7".
    void theCarNumberMatchesAsText() {
        receiverLog(pair(QStringLiteral("10/12/2025 2:00:00 PM"), "07", " 7"));
        TimeSlipLog log;
        QCOMPARE(findTimeSlip(log, at(14, 0, 0), QStringLiteral("7")).row, -1);
        QCOMPARE(findTimeSlip(log, at(14, 0, 0), QStringLiteral("07")).row, 0);
        QCOMPARE(findTimeSlip(log, at(14, 0, 0), QStringLiteral(" 7")).row, 1);
    }

    // A run time that is no date never matches; the next row is tried.
    void aRowWithoutARunTimeIsPassedOver() {
        receiverLog(pair(QStringLiteral("pending"), "7", "8") +
                    pair(QStringLiteral("10/12/2025 2:00:00 PM"), "7", "9"));
        TimeSlipLog log;
        QCOMPARE(findTimeSlip(log, at(14, 0, 0), QStringLiteral("7")).row, 2);
        QCOMPARE(findTimeSlip(log, at(14, 0, 0), QStringLiteral("8")).row, -1);
    }
};

QTEST_GUILESS_MAIN(TestTimeSlip)
#include "tst_timeslip.moc"
