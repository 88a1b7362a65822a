#include "common/TestHome.h"
#include "feed/TrustKeeper.h"
#include "prediction/LogPrediction.h"
#include "racelog/RaceLog.h"

#include <QSignalSpy>
#include <QTest>
#include <algorithm>
#include <cmath>

namespace {

constexpr int Time = 1;
constexpr int Date = 2;
constexpr int Ft1320 = 12;
constexpr int AA = 19;

// The elapsed-time model written out by the test: a time at one altitude taken to another.
double modelEt(double et, double aaFrom, double aaTo, double pf) {
    return et + (8.5e-6 - pf * 8.5e-7) * ((aaTo - aaFrom + 1.0) * et);
}

struct Run {
    double et;
    double aa;
};

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
        largest = std::max(largest, std::fabs(runs[i].et - modelEt(runs[i - 1].et, runs[i - 1].aa,
                                                                   runs[i].aa, 5)));
    return largest;
}

// Runs 2 to 4 from the reference run 1.
double driftOf(const QList<Run>& runs) {
    double sum = 0;
    for (int i = 1; i < 4; ++i)
        sum += runs[i].et - modelEt(runs[0].et, runs[0].aa, runs[i].aa, 5);
    return sum / 3;
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
};

QTEST_GUILESS_MAIN(TrustKeeperTest)
#include "tst_trustkeeper.moc"
