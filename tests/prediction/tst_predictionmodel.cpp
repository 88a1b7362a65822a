#include "SampleRunTable.h"
#include "prediction/PredictionModel.h"

#include <QTest>
#include <functional>

using namespace RunColumn;
using PredictionModel::Inputs;
using PredictionModel::Outcome;

namespace {

// The checked example: reference 9.5 s at AA 2000, timer 1.5, VP 0.512; now AA 2100,
// VP 0.487, PF 5, target 9.50, ratio 0.25, VP option on, no identifier, first slot.
struct Case {
    SampleRunTable table;
    int row = 0;
    Inputs in;

    Case() {
        row = table.addRun({{Ft1320, "9.5"}, {AA, "2000"}, {Timer2, "1.5"}, {VP, "0.512"}});
        in.referenceRow = row;
        in.adjustedAltitude = "2100";
        in.vaporPressure = "0.487";
        in.performanceFactor = "5";
        in.throttleStopRatio = "0.25";
        in.targetEt = "9.50";
        in.slot = 0;
        in.deltaVP = true;
    }

    // Sets one input by the name the log knows it by: a reference cell or a field.
    void set(const QString& name, const QString& text) {
        static const QMap<QString, int> cellColumns{
            {"1320 ft", Ft1320}, {"AAref", AA}, {"TimerRef", Timer2}, {"VPref", VP}};
        static const QMap<QString, QString Inputs::*> fields{
            {"adjustedAltitude", &Inputs::adjustedAltitude},
            {"vaporPressure", &Inputs::vaporPressure},
            {"performanceFactor", &Inputs::performanceFactor},
            {"throttleStopRatio", &Inputs::throttleStopRatio},
            {"targetEt", &Inputs::targetEt},
            {"pageIdentifier", &Inputs::pageIdentifier}};
        if (name == "deltaVP")
            in.deltaVP = text == "1";
        else if (cellColumns.contains(name))
            table.set(row, cellColumns[name], text);
        else if (fields.contains(name))
            in.*fields.value(name) = text;
        else
            qFatal("no input named %s", qPrintable(name));
    }

    // Sets inputs given as "name=text".
    void setAll(const QStringList& pairs) {
        for (const QString& pair : pairs)
            set(pair.section('=', 0, 0), pair.section('=', 1));
    }

    Outcome compute() {
        in.cells = table.cells();
        return PredictionModel::compute(in);
    }
};

QStringList messages(const Outcome& out) {
    QStringList list;
    for (const auto& publication : out.publications)
        list << publication.pagerMessage;
    return list;
}

} // namespace

class TestPredictionModel : public QObject {
    Q_OBJECT
private slots:
    void workedCaseToTheCharacter() {
        Case c;
        const Outcome out = c.compute();
        QVERIFY(!out.fault);
        QCOMPARE(out.publications.size(), 2);
        QCOMPARE(out.publications[0].pagerMessage, "RaceLog# 1> ET: 9.5041");
        QCOMPARE(out.publications[0].caption, "Race Log# 1  ET: 9.5041");
        QCOMPARE(out.publications[1].pagerMessage,
                 "RaceLog# 1> ET: 9.5041  TS @ 9.50: 1.3991 VP+0.025");
        QCOMPARE(out.publications[1].caption,
                 "Race Log# 1  ET: 9.5041  TS @ 9.50: 1.3991 VP+0.025");
    }

    void noReferenceRunReadsTheHeaderAndPublishesNothing() {
        Case c;
        c.in.referenceRow = 0;
        const Outcome out = c.compute();
        QVERIFY(out.publications.isEmpty());
        QVERIFY(!out.fault);
    }

    // Each missing number ends the call quietly where its step stands: before step 6
    // nothing is published, from step 7 on the ET alone stays published.
    void aMissingNumberEndsAtItsStep_data() {
        QTest::addColumn<QString>("input");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("published");
        const QStringList none;
        const QStringList etAlone{"RaceLog# 1> ET: 9.5041"};
        QTest::newRow("no reference time") << "1320 ft"
                                           << "" << none;
        QTest::newRow("reference time not a number") << "1320 ft"
                                                     << "DNF" << none;
        QTest::newRow("no reference AA") << "AAref"
                                         << "" << none;
        QTest::newRow("AA now not a number") << "adjustedAltitude"
                                             << "abc" << none;
        QTest::newRow("no PF") << "performanceFactor"
                               << "" << none;
        QTest::newRow("empty target: ET alone, no VP") << "targetEt"
                                                       << "" << etAlone;
        QTest::newRow("no timer in the reference") << "TimerRef"
                                                   << "" << etAlone;
        QTest::newRow("no ratio") << "throttleStopRatio"
                                  << "x" << etAlone;
    }
    void aMissingNumberEndsAtItsStep() {
        QFETCH(QString, input);
        QFETCH(QString, text);
        QFETCH(QStringList, published);
        Case c;
        c.set(input, text);
        const Outcome out = c.compute();
        QCOMPARE(messages(out), published);
        QVERIFY(!out.fault);
    }

    // Only the pieces after the ET fall away; a failed test in step 10 or 11 skips just
    // its own piece and the full line is still published.
    void piecesOfTheFullLine_data() {
        QTest::addColumn<QStringList>("inputs"); // name=text pairs
        QTest::addColumn<QString>("line");
        QTest::newRow("target 0 keeps the VP piece")
            << QStringList{"targetEt=0"} << "RaceLog# 1> ET: 9.5041 VP+0.025";
        // A timer of 300 would make TS positive even for a zero target.
        QTest::newRow("target 0 drops TS whatever the timer")
            << QStringList{"targetEt=0", "TimerRef=300"} << "RaceLog# 1> ET: 9.5041 VP+0.025";
        QTest::newRow("TS below zero drops TS")
            << QStringList{"TimerRef=0"} << "RaceLog# 1> ET: 9.5041 VP+0.025";
        QTest::newRow("VP option off")
            << QStringList{"deltaVP=0"} << "RaceLog# 1> ET: 9.5041  TS @ 9.50: 1.3991";
        QTest::newRow("VP now not a number")
            << QStringList{"vaporPressure=abc"} << "RaceLog# 1> ET: 9.5041  TS @ 9.50: 1.3991";
        QTest::newRow("no VP in the reference")
            << QStringList{"VPref="} << "RaceLog# 1> ET: 9.5041  TS @ 9.50: 1.3991";
    }
    void piecesOfTheFullLine() {
        QFETCH(QStringList, inputs);
        QFETCH(QString, line);
        Case c;
        c.setAll(inputs);
        const Outcome out = c.compute();
        QCOMPARE(out.publications.size(), 2);
        QCOMPARE(out.publications.last().pagerMessage, line);
        QVERIFY(!out.fault);
    }

    // With PF 10 the ET is the reference time itself and, with the target equal to it, the
    // timer is the reference timer: the patterns show through unchanged.
    void patternsAtTheirEdges_data() {
        QTest::addColumn<QString>("referenceAndTarget");
        QTest::addColumn<QString>("timer");
        QTest::addColumn<QString>("line");
        QTest::newRow("TS below one has no leading digit") << "9.5"
                                                           << "0.5"
                                                           << "ET: 9.5000  TS @ 9.50: .5000";
        QTest::newRow("ET below one has no leading digit") << "0.95"
                                                           << "1.5"
                                                           << "ET: .9500  TS @ 0.95: 1.5000";
        QTest::newRow("target with two decimals") << "10"
                                                  << "1.5"
                                                  << "ET: 10.0000  TS @ 10.00: 1.5000";
        QTest::newRow("target with three decimals") << "9.125"
                                                    << "1.5"
                                                    << "ET: 9.1250  TS @ 9.125: 1.5000";
        QTest::newRow("target with four decimals") << "9.1237"
                                                   << "1.5"
                                                   << "ET: 9.1237  TS @ 9.1237: 1.5000";
        QTest::newRow("target rounded to four decimals") << "9.12346"
                                                         << "1.5"
                                                         << "ET: 9.1235  TS @ 9.1235: 1.5000";
        QTest::newRow("TS rounded to four decimals") << "9.5"
                                                     << "1.23456"
                                                     << "ET: 9.5000  TS @ 9.50: 1.2346";
    }
    void patternsAtTheirEdges() {
        QFETCH(QString, referenceAndTarget);
        QFETCH(QString, timer);
        QFETCH(QString, line);
        Case c;
        c.set("performanceFactor", "10");
        c.set("1320 ft", referenceAndTarget);
        c.set("targetEt", referenceAndTarget);
        c.set("TimerRef", timer);
        c.in.deltaVP = false;
        const Outcome out = c.compute();
        QCOMPARE(out.publications.size(), 2);
        QCOMPARE(out.publications.last().pagerMessage, "RaceLog# 1> " + line);
    }

    void timerExactlyZeroDropsTS() {
        Case c;
        c.set("performanceFactor", "10");
        c.set("TimerRef", "0");
        c.in.deltaVP = false;
        QCOMPARE(c.compute().publications.last().pagerMessage, "RaceLog# 1> ET: 9.5000");
    }

    void vaporPressurePiece_data() {
        QTest::addColumn<QString>("vpRef");
        QTest::addColumn<QString>("vpNow");
        QTest::addColumn<QString>("piece");
        QTest::newRow("higher") << "0.512"
                                << "0.487"
                                << " VP+0.025";
        QTest::newRow("lower takes its minus from the pattern") << "0.487"
                                                                << "0.512"
                                                                << " VP-0.025";
        QTest::newRow("exactly +0.01 shows nothing") << "0.02"
                                                     << "0.01"
                                                     << "";
        QTest::newRow("exactly -0.01 shows nothing") << "0.01"
                                                     << "0.02"
                                                     << "";
        QTest::newRow("equal shows nothing") << "0.5"
                                             << "0.5"
                                             << "";
        // 0.497 - 0.487 is a hair above 0.01 in binary, so it shows.
        QTest::newRow("a hair above 0.01") << "0.497"
                                           << "0.487"
                                           << " VP+0.010";
        QTest::newRow("leading digit below one") << "0.9"
                                                 << "0.1"
                                                 << " VP+0.800";
        QTest::newRow("above one") << "2.5"
                                   << "0.5"
                                   << " VP+2.000";
    }
    void vaporPressurePiece() {
        QFETCH(QString, vpRef);
        QFETCH(QString, vpNow);
        QFETCH(QString, piece);
        Case c;
        c.set("VPref", vpRef);
        c.set("vaporPressure", vpNow);
        QCOMPARE(c.compute().publications.last().pagerMessage,
                 "RaceLog# 1> ET: 9.5041  TS @ 9.50: 1.3991" + piece);
    }

    void referenceTimeFromTheFarthestMark_data() {
        QTest::addColumn<QString>("ft1320");
        QTest::addColumn<QString>("ft660");
        QTest::addColumn<QString>("ft60");
        QTest::addColumn<QString>("et");
        QTest::newRow("1320 ft preferred over 660 ft") << "9.5"
                                                       << "6.1"
                                                       << ""
                                                       << "ET: 9.5000";
        QTest::newRow("660 ft without 1320 ft") << ""
                                                << "6.1"
                                                << ""
                                                << "ET: 6.1000";
        QTest::newRow("only 60 ft") << ""
                                    << ""
                                    << "1.25"
                                    << "ET: 1.2500";
    }
    void referenceTimeFromTheFarthestMark() {
        QFETCH(QString, ft1320);
        QFETCH(QString, ft660);
        QFETCH(QString, ft60);
        QFETCH(QString, et);
        Case c;
        c.set("performanceFactor", "10");
        c.set("1320 ft", ft1320);
        c.table.set(c.row, Ft660, ft660);
        c.table.set(c.row, Ft60, ft60);
        QCOMPARE(c.compute().publications.first().pagerMessage, "RaceLog# 1> " + et);
    }

    void pf10PredictsTheReferenceTime_data() {
        QTest::addColumn<QString>("aaNow");
        QTest::newRow("higher") << "2100";
        QTest::newRow("much lower") << "-3000";
        QTest::newRow("far above") << "90000";
    }
    void pf10PredictsTheReferenceTime() {
        QFETCH(QString, aaNow);
        Case c;
        c.set("performanceFactor", "10");
        c.set("1320 ft", "9.87654");
        c.set("adjustedAltitude", aaNow);
        QCOMPARE(c.compute().publications.first().pagerMessage, "RaceLog# 1> ET: 9.8765");
    }

    void pfAbove10IsAccepted() {
        Case c;
        c.set("performanceFactor", "12");
        c.in.deltaVP = false;
        // 9.5 - 1.7e-6 x 101 x 9.5 = 9.49836885: higher air now makes the car quicker.
        QCOMPARE(c.compute().publications.first().pagerMessage, "RaceLog# 1> ET: 9.4984");
    }

    void identifierNamesTheLog_data() {
        QTest::addColumn<QString>("identifier");
        QTest::addColumn<int>("slot");
        QTest::addColumn<QString>("message");
        QTest::addColumn<QString>("caption");
        QTest::newRow("first slot") << "" << 0 << "RaceLog# 1> ET: 9.5041"
                                    << "Race Log# 1  ET: 9.5041";
        QTest::newRow("third slot") << "" << 2 << "RaceLog# 3> ET: 9.5041"
                                    << "Race Log# 3  ET: 9.5041";
        QTest::newRow("identifier") << "Red" << 2 << "Red> ET: 9.5041"
                                    << "Red  ET: 9.5041";
    }
    void identifierNamesTheLog() {
        QFETCH(QString, identifier);
        QFETCH(int, slot);
        QFETCH(QString, message);
        QFETCH(QString, caption);
        Case c;
        c.set("targetEt", "");
        c.set("pageIdentifier", identifier);
        c.in.slot = slot;
        const Outcome out = c.compute();
        QCOMPARE(out.publications.size(), 1);
        QCOMPARE(out.publications[0].pagerMessage, message);
        QCOMPARE(out.publications[0].caption, caption);
    }

    void removedIdentifierTakesEffectAtTheNextPublish() {
        Case c;
        c.set("pageIdentifier", "Blue");
        QCOMPARE(c.compute().publications.last().caption,
                 "Blue  ET: 9.5041  TS @ 9.50: 1.3991 VP+0.025");
        c.set("pageIdentifier", "");
        QCOMPARE(c.compute().publications.last().caption,
                 "Race Log# 1  ET: 9.5041  TS @ 9.50: 1.3991 VP+0.025");
    }

    // The log keeps its last message when a later call ends early: such a call publishes
    // nothing at all, and it is no fault.
    void invalidInputsLeaveTheLastMessageAlone() {
        Case c;
        QCOMPARE(c.compute().publications.size(), 2);
        c.set("adjustedAltitude", "");
        const Outcome later = c.compute();
        QVERIFY(later.publications.isEmpty());
        QVERIFY(!later.fault);
    }

    // An overflow is a fault wherever it happens; the ET published before it stands.
    void arithmeticFaults_data() {
        QTest::addColumn<QStringList>("inputs"); // name=text pairs
        QTest::addColumn<QStringList>("published");
        const QStringList etAlone{"RaceLog# 1> ET: 9.5041"};
        QTest::newRow("predicted ET overflows")
            << QStringList{"adjustedAltitude=1e308"} << QStringList();
        QTest::newRow("AA difference overflows")
            << QStringList{"AAref=-1.7e308", "adjustedAltitude=1.7e308"} << QStringList();
        QTest::newRow("ratio overflows") << QStringList{"throttleStopRatio=1e307"} << etAlone;
        QTest::newRow("target at zero overflows") << QStringList{"targetEt=1e306"} << etAlone;
        QTest::newRow("TS overflows")
            << QStringList{"TimerRef=1.797e308", "throttleStopRatio=-1e306"} << etAlone;
        QTest::newRow("VP difference overflows")
            << QStringList{"VPref=1.7e308", "vaporPressure=-1.7e308"} << etAlone;
    }
    void arithmeticFaults() {
        QFETCH(QStringList, inputs);
        QFETCH(QStringList, published);
        Case c;
        c.setAll(inputs);
        const Outcome out = c.compute();
        QVERIFY(out.fault);
        QCOMPARE(messages(out), published);
    }

    // Both altitudes huge: the ET is fine, but taking the reference to zero altitude
    // overflows the product after the ET was published.
    void overflowAfterTheEtKeepsTheEt() {
        Case c;
        c.set("AAref", "1e308");
        c.set("adjustedAltitude", "1e308");
        const Outcome out = c.compute();
        QVERIFY(out.fault);
        QCOMPARE(messages(out), QStringList{"RaceLog# 1> ET: 9.5000"});
    }

    // The crew's track offset moves the ET and shows after it; the timer aims at the target
    // less the offset, since the track adds the offset to whatever the timer makes.
    void theTrackOffsetMovesTheEtAndTheTimer() {
        Case c;
        c.in.trackOffset = "0.012";
        const Outcome out = c.compute();
        const double sensitivity = 8.5e-6 - 5 * 8.5e-7;
        const double et = 9.5 + sensitivity * ((2100 - 2000 + 1.0) * 9.5) + 0.012; // 9.516078
        const double refAtZero = 9.5 + sensitivity * ((0 - 2000 + 1.0) * 9.5);
        const double aimedAtZero = (9.50 - 0.012) + sensitivity * ((0 - 2100 + 1.0) * 9.488);
        const double timer = 1.5 - (refAtZero - aimedAtZero) * (0.25 * 100.0);
        QCOMPARE(out.publications.size(), 2);
        QCOMPARE(*out.publications[1].predictedEt, et);
        QCOMPARE(*out.publications[1].throttleStop, timer);
        QCOMPARE(out.publications[0].caption, "Race Log# 1  ET: 9.5161 (+0.012 trk)");
        QCOMPARE(out.publications[1].pagerMessage,
                 "RaceLog# 1> ET: 9.5161 (+0.012 trk)  TS @ 9.50: " +
                     QString::number(timer, 'f', 4) + " VP+0.025");
    }

    void aTrackFasterThanTheAirTakesTimeOff() {
        Case c;
        c.in.trackOffset = "-0.008";
        c.in.targetEt.clear();
        const Outcome out = c.compute();
        // 9.504078 less 0.008
        QCOMPARE(messages(out), QStringList{"RaceLog# 1> ET: 9.4961 (-0.008 trk)"});
    }

    void anOffsetOfNothingShowsNothing_data() {
        QTest::addColumn<QString>("offset");
        QTest::newRow("0") << "0";
        QTest::newRow("empty") << "";
        QTest::newRow("no number") << "abc";
    }

    void anOffsetOfNothingShowsNothing() {
        QFETCH(QString, offset);
        Case c;
        c.in.trackOffset = offset;
        QCOMPARE(c.compute().publications[1].pagerMessage,
                 "RaceLog# 1> ET: 9.5041  TS @ 9.50: 1.3991 VP+0.025");
    }

    void faultMessage() {
        const Dialogs::Message box = PredictionModel::faultMessage();
        QCOMPARE(box.text, "Failed to make a valid prediction!");
        QCOMPARE(box.title, "Predict");
        QCOMPARE(box.icon, Dialogs::Icon::Information);
        QCOMPARE(box.buttons, Dialogs::Buttons::Ok);
    }
};

QTEST_GUILESS_MAIN(TestPredictionModel)
#include "tst_predictionmodel.moc"
