#include "FeedSamples.h"
#include "common/TestHome.h"
#include "feed/CorrectionFactor.h"
#include "feed/WeatherLog.h"

#include <QTest>
#include <memory>

using namespace FeedSamples;

namespace {

// Writes down every point the replay sends, one text per call.
class RecordingSink : public WeatherReplaySink {
public:
    QStringList calls;
    void windSpeed(float t, qint32 ws) override { add("windSpeed", t, {double(ws)}); }
    void abp(float t, float abp) override { add("abp", t, {abp}); }
    void rh(float t, float rh, float temp) override { add("rh", t, {rh, temp}); }
    void cf(float t, float factor) override { add("cf", t, {factor}); }
    void adr(float t, float adr) override { add("adr", t, {adr}); }
    void gr(float t, qint32 gr) override { add("gr", t, {double(gr)}); }
    void vp(float t, float vp, float temp) override { add("vp", t, {vp, temp}); }
    void aada(float t, qint32 aa, qint32 da) override { add("aada", t, {double(aa), double(da)}); }
    void rosePlot(qint32 wd, qint32 ws) override {
        calls << QStringLiteral("rosePlot %1 %2").arg(wd).arg(ws);
    }

private:
    void add(const char* view, float t, std::initializer_list<double> values) {
        QString text = QStringLiteral("%1 t=%2").arg(QLatin1String(view)).arg(double(t));
        for (double value : values)
            text += QStringLiteral(" %1").arg(value);
        calls << text;
    }
};

ViewFlags allOpen() {
    ViewFlags views;
    views.bWeatherOpen = views.bRosePlotOpen = views.bWindDirectionOpen = views.bWindSpeedOpen =
        views.bVPOpen = views.bAADAOpen = views.bABPOpen = views.bRHOpen = views.bGROpen =
            views.bCFOpen = views.bADROpen = true;
    return views;
}

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
        RecordingSink sink;
        const int rows = LoadLoggedWeather(logFile(FullRow), allOpen(), sink);
        QCOMPARE(rows, 1);
        const QString t = QString::number(double(float((10 * 3600 + 42 * 60 + 7) / 86400.0)));
        const QString cf = QString::number(double(*CorrectionFactor(29.92f, 71.5f, 0.33f)));
        QCOMPARE(sink.calls, (QStringList{
                                 "windSpeed t=" + t + " 7",
                                 "abp t=" + t + " " + QString::number(double(29.92f)),
                                 "rh t=" + t + " " + QString::number(double(43.2f)) + " 71.5",
                                 "cf t=" + t + " " + cf,
                                 "adr t=" + t + " " + QString::number(double(98.6f)),
                                 "gr t=" + t + " 45",
                                 "vp t=" + t + " " + QString::number(double(0.33f)) + " 71.5",
                                 "aada t=" + t + " 1250 1410",
                                 "rosePlot 275 7",
                             }));
    }

    void timeIsAFractionOfTheDay() {
        RecordingSink sink;
        ViewFlags views;
        views.bWindSpeedOpen = true;
        LoadLoggedWeather(logFile(Row("06:00:00pm") + Row("12:00:00am")), views, sink);
        QCOMPARE(sink.calls, (QStringList{"windSpeed t=0.75 7", "windSpeed t=0 7"}));
    }

    void onlyOpenViewsGetRows() {
        RecordingSink sink;
        ViewFlags views;
        views.bRHOpen = true;
        views.bRosePlotOpen = true;
        views.bWeatherOpen = true;       // shows only the present
        views.bWindDirectionOpen = true; // likewise
        LoadLoggedWeather(logFile(Row("10:00:00am") + Row("10:00:01am")), views, sink);
        QCOMPARE(sink.calls.size(), 4);
        QVERIFY(sink.calls[0].startsWith(QStringLiteral("rh ")));
        QCOMPARE(sink.calls[1], QStringLiteral("rosePlot 275 7"));
    }

    void noViewOpenReadsTheWholeFileAndCallsNothing() {
        RecordingSink sink;
        QByteArray rows;
        for (int i = 0; i < 50; ++i)
            rows += Row(QStringLiteral("10:%1:00am").arg(i, 2, 10, QChar(u'0')));
        QCOMPARE(LoadLoggedWeather(logFile(rows), ViewFlags{}, sink), 50);
        QVERIFY(sink.calls.isEmpty());
    }

    void replayLeavesTheLiveWeatherAlone() {
        AppState state;
        state.CurrentWeather.ABP = 28.5f;
        state.CurrentWeather.WS = 3;
        state.sStatusLine = QStringLiteral("ABP=28.5");
        const WeatherRecord weatherBefore = state.CurrentWeather;
        const QString statusBefore = state.sStatusLine;
        state.views = allOpen();
        RecordingSink sink;
        QCOMPARE(LoadLoggedWeather(logFile(FullRow + FullRow), state.views, sink), 2);
        QCOMPARE(state.CurrentWeather, weatherBefore);
        QCOMPARE(state.sStatusLine, statusBefore);
    }

    void correctionFactorFaultEndsTheReplay_data() {
        QTest::addColumn<QByteArray>("faulty");
        QTest::newRow("ABP 0") << Row("10:00:02am", 0, 71.5f, 0);
        QTest::newRow("ABP equal to VP") << Row("10:00:02am", 0.5f, 71.5f, 0.5f);
    }
    void correctionFactorFaultEndsTheReplay() {
        QFETCH(QByteArray, faulty);
        const QByteArray rows = Row("10:00:00am") + Row("10:00:01am") + faulty + Row("10:00:03am");
        RecordingSink sink;
        ViewFlags views;
        views.bWindSpeedOpen = true;
        QCOMPARE(LoadLoggedWeather(logFile(rows), views, sink), 2);
        QCOMPARE(sink.calls.size(), 2); // the points before the faulty row stay
    }

    void correctionFactorFaultEndsTheReplayWithItsViewClosed() {
        const QByteArray rows = Row("10:00:00am") + Row("10:00:01am", 0) + Row("10:00:02am");
        RecordingSink sink;
        QCOMPARE(LoadLoggedWeather(logFile(rows), ViewFlags{}, sink), 1);
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
        RecordingSink sink;
        ViewFlags views;
        views.bABPOpen = true;
        QCOMPARE(LoadLoggedWeather(logFile(rows), views, sink), 1);
        QCOMPARE(sink.calls.size(), 1);
    }

    void otherTimeFormsAreRead() {
        const QByteArray rows =
            "14:30:00,29.92,71.5,43.2,1250,5.1,45,0.33,49,98.6,1410,120,275,7,11,340\r\n";
        RecordingSink sink;
        ViewFlags views;
        views.bGROpen = true;
        QCOMPARE(LoadLoggedWeather(logFile(rows), views, sink), 1);
        QCOMPARE(sink.calls,
                 QStringList{QStringLiteral("gr t=%1 45").arg(double(float(14.5 / 24)))});
    }

    void blanksPlusSignsAndAMissingLastLineEndAreRead() {
        const QByteArray rows =
            " \"10:00:00am\" , +29.92,71.5 ,43.2,1250,5.1,45,0.33,49,98.6,1410,120,275,7,11,340";
        RecordingSink sink;
        ViewFlags views;
        views.bABPOpen = true;
        QCOMPARE(LoadLoggedWeather(logFile(rows), views, sink), 1);
        QCOMPARE(
            sink.calls,
            QStringList{
                QStringLiteral("abp t=%1 %2").arg(double(float(10.0 / 24))).arg(double(29.92f))});
    }

    void missingFileReplaysNothing() {
        RecordingSink sink;
        QCOMPARE(LoadLoggedWeather(home->root() + QStringLiteral("/none.csv"), allOpen(), sink), 0);
        QVERIFY(sink.calls.isEmpty());
    }

    void writtenRowsReadBackTheSame() {
        AppState state;
        state.CurrentWeather = FullRecord();
        state.CurrentWeather.ADR = 1.0f / 3.0f; // a float that needs all its digits
        LogWeather(state, QDateTime(QDate(2026, 11, 22), QTime(15, 0, 0)));
        RecordingSink sink;
        ViewFlags views;
        views.bADROpen = true;
        LoadLoggedWeather(WeatherLogPath(QDate(2026, 11, 22)), views, sink);
        QCOMPARE(sink.calls, QStringList{QStringLiteral("adr t=%1 %2")
                                             .arg(double(float(15.0 / 24)))
                                             .arg(double(1.0f / 3.0f))});
    }
};

QTEST_GUILESS_MAIN(TestWeatherReplay)
#include "tst_weatherreplay.moc"
