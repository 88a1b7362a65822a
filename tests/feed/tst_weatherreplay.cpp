#include "FeedSamples.h"
#include "common/TestHome.h"
#include "core/LiveView.h"
#include "core/OpenViews.h"
#include "feed/CorrectionFactor.h"
#include "feed/WeatherLog.h"
#include "feed/WeatherStation.h"

#include <QTest>
#include <memory>
#include <vector>

using namespace FeedSamples;

namespace {

using View = ViewTable::View;

// Open views that write down every point the replay sends them, one text per point.
class RecordingViews {
public:
    explicit RecordingViews(std::initializer_list<View> open) {
        for (const View view : open) {
            recorders.push_back(std::make_unique<Recorder>(name(view), calls, ends));
            views.open(view, recorders.back().get());
        }
    }
    static RecordingViews allOpen() {
        return RecordingViews({View::RosePlot, View::WindDirection, View::WindSpeed, View::Weather,
                               View::VaporPressure, View::AADA, View::ABP, View::RH, View::GR,
                               View::CF, View::ADR});
    }

    QStringList calls;
    int ends = 0; // ends of a replay told to a view
    OpenViews views;

private:
    class Recorder : public LiveView {
    public:
        Recorder(QString name, QStringList& calls, int& ends)
            : name(std::move(name)), calls(calls), ends(ends) {}
        void showReading(const WeatherRecord&, const QString&) override {}
        void addLoggedPoint(float t, const QList<float>& values) override {
            QString text = QStringLiteral("%1 t=%2").arg(name).arg(double(t));
            for (float value : values)
                text += QStringLiteral(" %1").arg(double(value));
            calls << text;
        }
        void endOfReplay() override { ++ends; }

    private:
        QString name;
        QStringList& calls;
        int& ends;
    };

    static QString name(View view) {
        switch (view) {
        case View::RosePlot:
            return QStringLiteral("rosePlot");
        case View::WindSpeed:
            return QStringLiteral("windSpeed");
        case View::VaporPressure:
            return QStringLiteral("vp");
        case View::AADA:
            return QStringLiteral("aada");
        case View::ABP:
            return QStringLiteral("abp");
        case View::RH:
            return QStringLiteral("rh");
        case View::GR:
            return QStringLiteral("gr");
        case View::CF:
            return QStringLiteral("cf");
        case View::ADR:
            return QStringLiteral("adr");
        default:
            return QStringLiteral("present only");
        }
    }

    std::vector<std::unique_ptr<Recorder>> recorders;
};

} // namespace

class TestWeatherReplay : public QObject {
    Q_OBJECT
    std::unique_ptr<TestHome> home;

    QString logFile(const QByteArray& rows) const {
        const QString path = home->root() + QStringLiteral("/replay.csv");
        WriteFile(path, rows);
        return path;
    }

private slots:
    void init() { home = std::make_unique<TestHome>(); }
    void cleanup() { home.reset(); }

    void rowGoesToEveryOpenViewInOrder() {
        RecordingViews sink = RecordingViews::allOpen();
        const int rows = loadLoggedWeather(logFile(FullRow), sink.views);
        QCOMPARE(rows, 1);
        const QString t = QString::number(double(float((10 * 3600 + 42 * 60 + 7) / 86400.0)));
        const QString cf = QString::number(double(*correctionFactor(29.92f, 71.5f, 0.33f)));
        QCOMPARE(sink.calls, (QStringList{
                                 "windSpeed t=" + t + " 7",
                                 "abp t=" + t + " " + QString::number(double(29.92f)),
                                 "rh t=" + t + " " + QString::number(double(43.2f)) + " 71.5",
                                 "cf t=" + t + " " + cf,
                                 "adr t=" + t + " " + QString::number(double(98.6f)),
                                 "gr t=" + t + " 45",
                                 "vp t=" + t + " " + QString::number(double(0.33f)) + " 71.5",
                                 "aada t=" + t + " 1250 1410",
                                 "rosePlot t=" + t + " 275 7",
                             }));
    }

    void timeIsAFractionOfTheDay() {
        RecordingViews sink({View::WindSpeed});
        loadLoggedWeather(logFile(Row("06:00:00pm") + Row("12:00:00am")), sink.views);
        QCOMPARE(sink.calls, (QStringList{"windSpeed t=0.75 7", "windSpeed t=0 7"}));
    }

    void onlyOpenViewsGetRows() {
        // The weather and the wind direction show only the present.
        RecordingViews sink({View::RH, View::RosePlot, View::Weather, View::WindDirection});
        loadLoggedWeather(logFile(Row("10:00:00am") + Row("10:00:01am")), sink.views);
        QCOMPARE(sink.calls.size(), 4);
        QVERIFY(sink.calls[0].startsWith(QStringLiteral("rh ")));
        QVERIFY(sink.calls[1].startsWith(QStringLiteral("rosePlot t=")));
        QVERIFY(sink.calls[1].endsWith(QStringLiteral(" 275 7")));
    }

    // Each view hears once that the replay has ended, after its last row.
    void theEndOfTheReplayIsToldOnceToEachReplayedView() {
        RecordingViews sink({View::WindSpeed, View::ABP, View::Weather});
        QCOMPARE(loadLoggedWeather(logFile(FullRow + FullRow), sink.views), 2);
        QCOMPARE(sink.ends, 2);
        QCOMPARE(sink.calls.size(), 4);
    }

    // Progress is told every 512 rows as the share of the file read, rising towards 1; a
    // progress that says stop ends the replay between two rows, so that every view has had
    // the same rows, and the views still hear that the replay has ended.
    void progressIsToldAndCanStopTheReplayBetweenRows() {
        QByteArray rows;
        for (int i = 0; i < 2000; ++i)
            rows += Row(QTime(10, 0).addSecs(i).toString(QStringLiteral("hh:mm:ssap")));
        const QString path = logFile(rows);
        QList<double> told;
        RecordingViews all({View::WindSpeed, View::ABP});
        QCOMPARE(loadLoggedWeather(path, all.views,
                                   [&told](double fraction) {
                                       told << fraction;
                                       return true;
                                   }),
                 2000);
        QCOMPARE(told.size(), 3); // after 512, 1024 and 1536 rows
        QVERIFY(told[0] > 0.25 && told[0] < 0.27);
        QVERIFY(told[1] > told[0] && told[2] > told[1] && told[2] < 1);

        RecordingViews stopped({View::WindSpeed, View::ABP});
        int reports = 0;
        QCOMPARE(
            loadLoggedWeather(path, stopped.views, [&reports](double) { return ++reports < 2; }),
            1024);
        QCOMPARE(stopped.calls.filter(QStringLiteral("windSpeed ")).size(), 1024);
        QCOMPARE(stopped.calls.filter(QStringLiteral("abp ")).size(), 1024);
        QCOMPARE(stopped.ends, 2);
    }

    void noViewOpenReadsTheWholeFileAndCallsNothing() {
        RecordingViews sink({});
        QByteArray rows;
        for (int i = 0; i < 50; ++i)
            rows += Row(QStringLiteral("10:%1:00am").arg(i, 2, 10, QChar(u'0')));
        QCOMPARE(loadLoggedWeather(logFile(rows), sink.views), 50);
        QVERIFY(sink.calls.isEmpty());
    }

    void replayLeavesTheLiveWeatherAlone() {
        WeatherStation station;
        station.feed().processWeatherRecord(FullLine);
        const WeatherRecord weatherBefore = station.reading();
        const QString statusBefore = station.statusLine();
        RecordingViews sink = RecordingViews::allOpen();
        QCOMPARE(loadLoggedWeather(logFile(FullRow + FullRow), sink.views), 2);
        QCOMPARE(station.reading(), FullRecord());
        QCOMPARE(station.reading(), weatherBefore);
        QCOMPARE(station.statusLine(), statusBefore);
    }

    void correctionFactorFaultEndsTheReplay_data() {
        QTest::addColumn<QByteArray>("faulty");
        QTest::newRow("ABP 0") << Row("10:00:02am", 0, 71.5f, 0);
        QTest::newRow("ABP equal to VP") << Row("10:00:02am", 0.5f, 71.5f, 0.5f);
    }
    void correctionFactorFaultEndsTheReplay() {
        QFETCH(QByteArray, faulty);
        const QByteArray rows = Row("10:00:00am") + Row("10:00:01am") + faulty + Row("10:00:03am");
        RecordingViews sink({View::WindSpeed});
        QCOMPARE(loadLoggedWeather(logFile(rows), sink.views), 2);
        QCOMPARE(sink.calls.size(), 2); // the points before the faulty row stay
    }

    void correctionFactorFaultEndsTheReplayWithItsViewClosed() {
        const QByteArray rows = Row("10:00:00am") + Row("10:00:01am", 0) + Row("10:00:02am");
        RecordingViews sink({});
        QCOMPARE(loadLoggedWeather(logFile(rows), sink.views), 1);
    }

    void malformedRowEndsTheReplay_data() {
        QTest::addColumn<QByteArray>("malformed");
        QTest::newRow("word for a number") << QByteArray(
            "\"10:00:02am\",29.92,warm,43.2,1250,5.1,45,0.33,49,98.6,1410,120,275,7,11,340\r\n");
        QTest::newRow("fifteen fields") << QByteArray(
            "\"10:00:02am\",29.92,71.5,43.2,1250,5.1,45,0.33,49,98.6,1410,120,275,7,11\r\n");
        QTest::newRow("seventeen fields") << QByteArray(
            "\"10:00:02am\",29.92,71.5,43.2,1250,5.1,45,0.33,49,98.6,1410,120,275,7,11,340,1\r\n");
        QTest::newRow("time that is no time") << QByteArray(
            "\"lunch\",29.92,71.5,43.2,1250,5.1,45,0.33,49,98.6,1410,120,275,7,11,340\r\n");
        QTest::newRow("integer too large") << QByteArray(
            "\"10:00:02am\",29.92,71.5,43.2,9e99,5.1,45,0.33,49,98.6,1410,120,275,7,11,340\r\n");
        QTest::newRow("empty field") << QByteArray(
            "\"10:00:02am\",29.92,,43.2,1250,5.1,45,0.33,49,98.6,1410,120,275,7,11,340\r\n");
        QTest::newRow("float too large") << QByteArray(
            "\"10:00:02am\",1e39,71.5,43.2,1250,5.1,45,0.33,49,98.6,1410,120,275,7,11,340\r\n");
        QTest::newRow("exponent without digits") << QByteArray(
            "\"10:00:02am\",29.92,1e,43.2,1250,5.1,45,0.33,49,98.6,1410,120,275,7,11,340\r\n");
        QTest::newRow("hour 13 in the afternoon") << QByteArray(
            "\"13:00:02pm\",29.92,71.5,43.2,1250,5.1,45,0.33,49,98.6,1410,120,275,7,11,340\r\n");
    }
    void malformedRowEndsTheReplay() {
        QFETCH(QByteArray, malformed);
        const QByteArray rows = Row("10:00:00am") + malformed + Row("10:00:03am");
        RecordingViews sink({View::ABP});
        QCOMPARE(loadLoggedWeather(logFile(rows), sink.views), 1);
        QCOMPARE(sink.calls.size(), 1);
    }

    void otherTimeFormsAreRead() {
        const QByteArray rows =
            "14:30:00,29.92,71.5,43.2,1250,5.1,45,0.33,49,98.6,1410,120,275,7,11,340\r\n";
        RecordingViews sink({View::GR});
        QCOMPARE(loadLoggedWeather(logFile(rows), sink.views), 1);
        QCOMPARE(sink.calls,
                 QStringList{QStringLiteral("gr t=%1 45").arg(double(float(14.5 / 24)))});
    }

    void blanksPlusSignsAndAMissingLastLineEndAreRead() {
        const QByteArray rows =
            " \"10:00:00am\" , +29.92,71.5 ,43.2,1250,5.1,45,0.33,49,98.6,1410,120,275,7,11,340";
        RecordingViews sink({View::ABP});
        QCOMPARE(loadLoggedWeather(logFile(rows), sink.views), 1);
        QCOMPARE(
            sink.calls,
            QStringList{
                QStringLiteral("abp t=%1 %2").arg(double(float(10.0 / 24))).arg(double(29.92f))});
    }

    void missingFileReplaysNothing() {
        RecordingViews sink = RecordingViews::allOpen();
        QCOMPARE(loadLoggedWeather(home->root() + QStringLiteral("/none.csv"), sink.views), 0);
        QVERIFY(sink.calls.isEmpty());
    }

    void writtenRowsReadBackTheSame() {
        WeatherLog log;
        WeatherRecord reading = FullRecord();
        reading.ADR = 1.0f / 3.0f; // a float that needs all its digits
        log.writeRow(readingTexts(reading), QDateTime(QDate(2026, 11, 22), QTime(15, 0, 0)));
        RecordingViews sink({View::ADR});
        loadLoggedWeather(weatherLogPath(QDate(2026, 11, 22)), sink.views);
        QCOMPARE(sink.calls, QStringList{QStringLiteral("adr t=%1 %2")
                                             .arg(double(float(15.0 / 24)))
                                             .arg(double(1.0f / 3.0f))});
    }
};

QTEST_GUILESS_MAIN(TestWeatherReplay)
#include "tst_weatherreplay.moc"
