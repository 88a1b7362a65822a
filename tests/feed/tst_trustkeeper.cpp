#include "common/ModelByHand.h"
#include "common/RunColumns.h"
#include "common/TestHome.h"
#include "feed/TrustKeeper.h"
#include "prediction/LogPrediction.h"
#include "racelog/RaceLog.h"

#include <QSignalSpy>
#include <QTest>
#include <algorithm>
#include <cmath>

namespace {

using namespace RunColumns;

// Four runs made today an hour apart, run 1 the reference, at a factor of 5.
const QList<Run> Runs{{9.500, 2000}, {9.515, 2100}, {9.512, 2200}, {9.503, 1900}};

void fill(RaceLog& log, const QList<Run>& runs) {
    log.change(QStringLiteral("Runs"), [&runs](RaceLogData& data) {
        for (int i = 0; i < runs.size(); ++i) {
            if (i > 0)
                data.grid.addRun();
            data.grid.setCell(i + 1, Time, QTime(10 + i, 0).toString("hh:mmap"));
            data.grid.setCell(i + 1, Date, QDate::currentDate().toString("MM/dd/yy"));
            data.grid.setCell(i + 1, Ft1320, QString::number(runs[i].et, 'f', 3));
            data.grid.setCell(i + 1, AA, QString::number(runs[i].aa));
        }
        data.pf = QStringLiteral("5");
    });
}

// Three predictions, each run from the one before: four in five of three is all three.
double likelyMissOf(const QList<Run>& runs) {
    double largest = 0;
    for (int i = 1; i < runs.size(); ++i)
        largest = std::max(largest,
                           std::fabs(runs[i].et - ModelByHand::etAt(runs[i - 1].et, runs[i - 1].aa,
                                                                    runs[i].aa, 5)));
    return largest;
}

// Runs 2 to 4 from the reference run 1.
double driftOf(const QList<Run>& runs) {
    double sum = 0;
    for (int i = 1; i < 4; ++i)
        sum += runs[i].et - ModelByHand::etAt(runs[0].et, runs[0].aa, runs[i].aa, 5);
    return sum / 3;
}

// Air rising 100 ft an hour, read every 36 s (a foot a reading) for the half hour up to now,
// where it reaches 2,050 ft.
void feedRisingAir(TrustKeeper& keeper, const QDateTime& now) {
    for (int k = 0; k <= 50; ++k) {
        WeatherRecord record;
        record.AA = 2000 + k;
        keeper.takeRecord(record, now.addSecs(-36 * (50 - k)));
    }
}

QString fixed(double value) {
    return QString::number(value, 'f', 4);
}

} // namespace

class TrustKeeperTest : public QObject {
    Q_OBJECT
private slots:
    void anOpenLogIsWeighedAgainOnEveryChangeAndItsUndo() {
        OpenRaceLogs logs;
        TrustKeeper keeper(logs);
        RaceLog log;
        fill(log, Runs);
        QVERIFY(!log.trust().likelyMiss());
        logs.open(&log);
        QCOMPARE(log.trust().likelyMiss()->predictions, 3);
        QCOMPARE(log.trust().likelyMiss()->seconds, likelyMissOf(Runs));
        QCOMPARE(log.trust().drift()->runs, 3);
        QCOMPARE(log.trust().drift()->seconds, driftOf(Runs));

        // An edit of the last run's time.
        QList<Run> edited = Runs;
        edited[3].et = 9.530;
        log.changeCell(QStringLiteral("Edit 1320 ft"), 4, Ft1320, QStringLiteral("9.530"));
        QCOMPARE(log.trust().likelyMiss()->seconds, likelyMissOf(edited));
        QCOMPARE(log.trust().drift()->seconds, driftOf(edited));

        log.undoStack().undo();
        QCOMPARE(log.trust().drift()->seconds, driftOf(Runs));
        // A factor that is no number predicts nothing.
        log.setField(RaceLog::Field::PF, QStringLiteral("-"));
        QVERIFY(!log.trust().likelyMiss());
        QVERIFY(!log.trust().drift());
    }

    void aFeedLineLeavesTheMeasuresAlone() {
        OpenRaceLogs logs;
        TrustKeeper keeper(logs);
        RaceLog log;
        fill(log, Runs);
        logs.open(&log);
        QSignalSpy changes(&log.trust(), &PredictionTrust::changed);
        LogPrediction::takeReading(log, QStringLiteral("2500"), QStringLiteral("0.50"),
                                   PredictionSettings{});
        QCOMPARE(changes.size(), 0);
        QCOMPARE(log.trust().drift()->seconds, driftOf(Runs));
    }

    void aLogReadFromItsFileIsWeighed() {
        TestHome home;
        const QString path = home.root() + QStringLiteral("/today.trl");
        {
            RaceLog written;
            fill(written, Runs);
            QCOMPARE(written.save(path), Database::SaveResult::Ok);
        }
        OpenRaceLogs logs;
        TrustKeeper keeper(logs);
        RaceLog log;
        logs.open(&log);
        QVERIFY(!log.trust().likelyMiss());
        QVERIFY(log.load(path));
        QCOMPARE(log.trust().likelyMiss()->predictions, 3);
        QCOMPARE(log.trust().drift()->runs, 3);
    }

    // The day's runs give the drift until midnight; the first minute of the next day has none.
    void aNewDayWeighsEveryLogAgain() {
        OpenRaceLogs logs;
        TrustKeeper keeper(logs);
        RaceLog log;
        fill(log, Runs);
        logs.open(&log);
        const QDate today = QDate::currentDate();
        keeper.minutePassed(QDateTime(today, QTime(23, 59, 30)));
        QCOMPARE(log.trust().drift()->seconds, driftOf(Runs));

        QSignalSpy changes(&log.trust(), &PredictionTrust::changed);
        keeper.minutePassed(QDateTime(today.addDays(1), QTime(0, 0, 30)));
        QVERIFY(!log.trust().drift());
        QCOMPARE(log.trust().likelyMiss()->seconds, likelyMissOf(Runs));
        QVERIFY(changes.size() > 0);
    }

    void eachOpenLogGetsTheOutlookOfTheLastHalfHour() {
        OpenRaceLogs logs;
        TrustKeeper keeper(logs);
        RaceLog withRuns;
        fill(withRuns, Runs);
        withRuns.setField(RaceLog::Field::TrackOffset, QStringLiteral("0.012"));
        RaceLog empty;
        logs.open(&withRuns);
        logs.open(&empty);
        QCOMPARE(withRuns.trust().outlook(), QStringLiteral("Outlook: not enough weather"));

        const QDateTime now(QDate(2026, 11, 22), QTime(14, 0));
        feedRisingAir(keeper, now);
        keeper.updateOutlook(now);
        // 2,050 ft now: 2,100, 2,150 and 2,200 ft in 30, 60 and 90 minutes; each ET from the
        // reference run, 9.500 s at 2,000 ft, with the offset.
        QCOMPARE(withRuns.trust().outlook(),
                 QStringLiteral("In 30 min: AA 2,100 ft \u2192 %1 \u00b7 60 min: 2,150 \u2192 %2 "
                                "\u00b7 90 min: 2,200 \u2192 %3")
                     .arg(fixed(ModelByHand::etAt(9.5, 2000, 2100, 5) + 0.012),
                          fixed(ModelByHand::etAt(9.5, 2000, 2150, 5) + 0.012),
                          fixed(ModelByHand::etAt(9.5, 2000, 2200, 5) + 0.012)));
        QCOMPARE(empty.trust().outlook(), QStringLiteral("In 30 min: AA 2,100 ft \u00b7 60 min: "
                                                         "2,150 \u00b7 90 min: 2,200"));

        // A new offset is worked into the line at once, from the same minute's air.
        withRuns.setField(RaceLog::Field::TrackOffset, QStringLiteral("0"));
        QVERIFY(withRuns.trust().outlook().endsWith(QStringLiteral("90 min: 2,200 \u2192 ") +
                                                    fixed(ModelByHand::etAt(9.5, 2000, 2200, 5))));
    }

    void theAirOfAFeedThatStoppedGoes() {
        OpenRaceLogs logs;
        TrustKeeper keeper(logs);
        RaceLog log;
        logs.open(&log);
        const QDateTime now(QDate(2026, 11, 22), QTime(14, 0));
        feedRisingAir(keeper, now);
        keeper.updateOutlook(now.addSecs(25 * 60)); // five minutes of readings left
        QCOMPARE(log.trust().outlook(), QStringLiteral("Outlook: not enough weather"));
        QCOMPARE(keeper.outlookTimer().interval(), 60 * 1000);
        QCOMPARE(keeper.outlookTimer().objectName(), QStringLiteral("tmrOutlook"));
    }
};

QTEST_GUILESS_MAIN(TrustKeeperTest)
#include "tst_trustkeeper.moc"
