// The live views together in the main window: the view commands, Clear Views, and a whole
// day of the weather log replayed into every chart and the rose, whole or cancelled midway.
#include "../PredictionWindows.h"
#include "common/TestHome.h"
#include "core/Registry.h"
#include "core/ScriptedDialogs.h"
#include "feed/WeatherLogFormat.h"
#include "ui/charts/StripChart.h"
#include "ui/charts/StripChartWindow.h"
#include "ui/charts/ViewCommands.h"
#include "ui/charts/WeatherDisplayWindow.h"
#include "ui/charts/WindGaugeWindow.h"
#include "ui/charts/WindRoseWindow.h"

#include <QFile>
#include <QProgressDialog>
#include <QTest>
#include <QTimer>

namespace {

using View = ViewTable::View;
constexpr int Day = 86400;
const QList<View> Charts{
    View::WindSpeed, View::VaporPressure, View::AADA, View::ABP, View::RH, View::GR, View::CF,
    View::ADR};

// The main window with every command, as the program puts it together.
struct ViewWindows : PredictionWindows {
    ViewWindows() {
        ViewCommands::add(main, station.views());
        main.resize(1400, 900);
        main.show();
    }
    void openAll() {
        for (const ViewTable::Entry& entry : ViewTable::Views)
            run(entry.command.toString());
    }
    template <typename Window> Window* window(View view) {
        return dynamic_cast<Window*>(station.views().at(view));
    }
    StripChart* chart(View view) { return window<StripChartWindow>(view)->chart(); }
    WindRoseWindow* rose() { return window<WindRoseWindow>(View::RosePlot); }
};

// A day of the weather log, a row a second: the wind turns a degree a second and blows
// second % 25 MPH.
QString writeDay(const QString& folder) {
    const QString path = folder + QStringLiteral("/day.csv");
    QFile file(path);
    file.open(QIODevice::WriteOnly);
    WeatherRecord w;
    w.ABP = 29.5f;
    w.Temp = 70;
    w.VP = 0.4f;
    w.RH = 40;
    w.ADR = 97;
    for (int second = 0; second < Day; ++second) {
        w.AA = 1000 + second % 700;
        w.DA = 2000 + second % 500;
        w.GR = 40 + second % 30;
        w.WD = second % 360;
        w.WS = second % 25;
        file.write(weatherLogRow(QTime::fromMSecsSinceStartOfDay(second * 1000), readingTexts(w)));
    }
    return path;
}

WeatherRecord reading() {
    WeatherRecord w;
    w.ABP = 29.5f;
    w.Temp = 70;
    w.VP = 0.4f;
    w.AA = 1850;
    w.WD = 20;
    w.WS = 8;
    return w;
}

// The wind speeds of the first `rows` rows of that day, added up.
qint64 windOfFirstRows(int rows) {
    qint64 sum = 0;
    for (int second = 0; second < rows; ++second)
        sum += second % 25;
    return sum;
}

qint64 roseTotal(WindRoseWindow* rose) {
    qint64 sum = 0;
    for (int sector = 0; sector < WindRose::SectorCount; ++sector)
        sum += rose->rose().sum(sector);
    return sum;
}

// The time of day of a chart's last point.
double lastTime(StripChart* chart) {
    const QCPCurve* line = chart->line(0);
    return line->dataCount() ? line->data()->at(line->dataCount() - 1)->key : -1;
}

} // namespace

class TestLiveViews : public QObject {
    Q_OBJECT

    std::unique_ptr<TestHome> home;
    std::unique_ptr<ScriptedDialogs> dialogs;

private slots:
    void init() {
        home = std::make_unique<TestHome>();
        dialogs = std::make_unique<ScriptedDialogs>();
    }
    void cleanup() {
        dialogs.reset();
        home.reset();
    }

    // Each command shows its view's window, once: a second command brings it forward.
    void everyViewCommandShowsItsWindowOnce() {
        ViewWindows windows;
        windows.openAll();
        windows.openAll();
        QCOMPARE(windows.main.mdiArea()->subWindowList().size(), 11);
        for (const ViewTable::Entry& entry : ViewTable::Views) {
            auto* window = dynamic_cast<QWidget*>(windows.station.views().at(entry.view));
            QVERIFY2(window, qPrintable(entry.objectName.toString()));
            QCOMPARE(window->objectName(), entry.objectName.toString());
            QCOMPARE(window->windowTitle(), entry.caption.toString());
        }
        windows.run(QStringLiteral("miWindSpeed"));
        QCOMPARE(windows.main.mdiArea()->activeSubWindow()->widget()->objectName(),
                 QStringLiteral("frmWindSpeed"));
    }

    // Each view keeps its place under its own branch of the settings, and a window opened
    // again takes that place and starts empty.
    void everyViewKeepsItsPlaceAndReopensEmpty() {
        ViewWindows windows;
        int shift = 0;
        for (const ViewTable::Entry& entry : ViewTable::Views) {
            windows.run(entry.command.toString());
            auto* view = dynamic_cast<QWidget*>(windows.station.views().at(entry.view));
            auto* frame = qobject_cast<QMdiSubWindow*>(view->parentWidget());
            const QRect place(40 + shift, 30 + shift, 380 + shift, 260 + shift);
            shift += 7;
            frame->setGeometry(place);
            windows.station.views().showReading(reading(), QStringLiteral("ABP=29.5"));
            frame->close();
            QTRY_VERIFY(!windows.station.views().isOpen(entry.view));

            const QString branch = QStringLiteral("SOFTWARE\\Zorvane\\") + entry.branch.toString() +
                                   QStringLiteral("\\ScreenSettings");
            QCOMPARE(Registry::get(branch, QStringLiteral("Left")), QString::number(place.x()));
            QCOMPARE(Registry::get(branch, QStringLiteral("Top")), QString::number(place.y()));
            QCOMPARE(Registry::get(branch, QStringLiteral("Width")),
                     QString::number(place.width()));
            QCOMPARE(Registry::get(branch, QStringLiteral("Height")),
                     QString::number(place.height()));

            windows.run(entry.command.toString());
            view = dynamic_cast<QWidget*>(windows.station.views().at(entry.view));
            QCOMPARE(view->parentWidget()->geometry(), place);
            // Nothing of the first window: the caption is the view's own again, and a chart
            // or the rose holds nothing.
            QCOMPARE(view->windowTitle(), entry.caption.toString());
            if (auto* chart = dynamic_cast<StripChartWindow*>(view))
                QCOMPARE(chart->chart()->line(0)->dataCount(), 0);
            if (auto* rose = dynamic_cast<WindRoseWindow*>(view))
                QCOMPARE(roseTotal(rose), 0);
        }
    }

    // Clear Views empties the charts and the rose; the gauge and the large display keep the
    // latest reading.
    void clearViewsEmptiesTheChartsAndTheRoseOnly() {
        ViewWindows windows;
        windows.openAll();
        WeatherRecord w;
        w.ABP = 29.92f;
        w.Temp = 60;
        w.WD = 180;
        w.WS = 9;
        windows.station.views().showReading(w, QStringLiteral("ABP=29.92"));
        windows.run(QStringLiteral("miClearViews"));
        for (const View view : Charts)
            QCOMPARE(windows.chart(view)->line(0)->dataCount(), 0);
        QCOMPARE(roseTotal(windows.rose()), 0);
        QCOMPARE(windows.window<WeatherDisplayWindow>(View::Weather)
                     ->findChild<QLineEdit*>(QStringLiteral("txtWS"))
                     ->text(),
                 QStringLiteral("9"));
        QCOMPARE(windows.window<WindGaugeWindow>(View::WindDirection)
                     ->findChild<QLabel*>(QStringLiteral("lblWindDirection"))
                     ->text(),
                 QStringLiteral("180"));
    }

    void clearViewsWithNoViewOpenDoesNothing() {
        ViewWindows windows;
        windows.run(QStringLiteral("miClearViews"));
        QVERIFY(windows.main.mdiArea()->subWindowList().isEmpty());
        QVERIFY(dialogs->messages.isEmpty());
    }

    // The whole day goes to every chart, which keeps its last 5,000 points, and to the rose.
    void aWholeDayReplaysIntoEveryChartAndTheRose() {
        ViewWindows windows;
        windows.openAll();
        dialogs->queueFile(writeDay(home->root()));
        dialogs->queueAnswer(Dialogs::Answer::Yes);
        windows.run(QStringLiteral("miLoadLoggedWeather"));
        const double lastSecond = double(float((Day - 1) / double(Day)));
        for (const View view : Charts) {
            StripChart* chart = windows.chart(view);
            QCOMPARE(chart->line(0)->dataCount(), 5000);
            QCOMPARE(lastTime(chart), lastSecond);
        }
        QCOMPARE(windows.chart(View::AADA)->line(1)->data()->at(4999)->value,
                 double(2000 + (Day - 1) % 500));
        QCOMPARE(roseTotal(windows.rose()), windOfFirstRows(Day));
    }

    // Cancel stops the replay between two rows: every chart ends at the same row, and the
    // rose holds the wind of exactly the rows the charts got.
    void aCancelledReplayLeavesEveryChartAtTheSameRow() {
        ViewWindows windows;
        windows.openAll();
        dialogs->queueFile(writeDay(home->root()));
        dialogs->queueAnswer(Dialogs::Answer::Yes);
        QTimer cancel;
        QObject::connect(&cancel, &QTimer::timeout, [&windows] {
            auto* progress =
                windows.main.findChild<QProgressDialog*>(QStringLiteral("dlgLoadLoggedWeather"));
            if (progress && progress->value() >= 300)
                progress->cancel();
        });
        cancel.start(0);
        windows.run(QStringLiteral("miLoadLoggedWeather"));
        cancel.stop();

        const double last = lastTime(windows.chart(View::WindSpeed));
        const int rows = qRound(last * Day) + 1;
        QVERIFY2(rows > Day / 4 && rows < Day, qPrintable(QString::number(rows)));
        for (const View view : Charts) {
            QCOMPARE(lastTime(windows.chart(view)), last);
            QCOMPARE(windows.chart(view)->line(0)->dataCount(), 5000);
        }
        QCOMPARE(roseTotal(windows.rose()), windOfFirstRows(rows));
    }
};

QTEST_MAIN(TestLiveViews)
#include "tst_liveviews.moc"
