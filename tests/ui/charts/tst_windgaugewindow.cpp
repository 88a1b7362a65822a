// The wind gauge window as the main window shows it: the dial and its figure, the mark a
// reading puts the pointer on, the caption, and what it has no part in.
#include "../PredictionWindows.h"
#include "charts/WindGauge.h"
#include "common/TestHome.h"
#include "core/ScriptedDialogs.h"
#include "ui/charts/ViewCommands.h"
#include "ui/charts/WindGaugeWindow.h"

#include <QAbstractSlider>
#include <QLabel>
#include <QTest>

namespace {

using View = ViewTable::View;

struct GaugeWindows : PredictionWindows {
    GaugeWindows() {
        ViewCommands::add(main, station.views());
        main.resize(1200, 800);
        main.show();
    }
    WindGaugeWindow* open() {
        run(QStringLiteral("miWindDirection"));
        return gauge();
    }
    WindGaugeWindow* gauge() {
        return dynamic_cast<WindGaugeWindow*>(station.views().at(View::WindDirection));
    }
    QMdiSubWindow* frame() { return qobject_cast<QMdiSubWindow*>(gauge()->parentWidget()); }
    void read(qint32 direction) {
        WeatherRecord w;
        w.ABP = 29.92f;
        w.WD = direction;
        w.WS = 6;
        station.views().showReading(w, QStringLiteral("ABP: 29.92"));
    }
};

} // namespace

class TestWindGaugeWindow : public QObject {
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

    void theWindDirectionCommandShowsTheDial() {
        GaugeWindows windows;
        WindGaugeWindow* gauge = windows.open();
        QVERIFY(gauge);
        QCOMPARE(gauge->objectName(), QStringLiteral("frmWindDirection"));
        QCOMPARE(windows.frame()->windowTitle(), QStringLiteral("Wind Direction"));
        auto* dial = gauge->findChild<WindDial*>(QStringLiteral("windDirection"));
        QVERIFY(dial);
        QVERIFY(dial->isVisible());
        QVERIFY(!gauge->findChild<QAbstractSlider*>());
        QVERIFY(gauge->findChild<QLabel*>(QStringLiteral("lblWindDirection")));
        // Until the first reading the pointer rests at the top.
        QCOMPARE(dial->mark(), 1);
    }

    void aReadingSetsFigureCaptionAndMark_data() {
        QTest::addColumn<int>("direction");
        QTest::addColumn<int>("mark");
        QTest::newRow("0") << 0 << 17;
        QTest::newRow("22") << 22 << 17;
        QTest::newRow("23") << 23 << 2;
        QTest::newRow("44") << 44 << 3;
        QTest::newRow("90") << 90 << 5;
        QTest::newRow("180") << 180 << 9;
        QTest::newRow("352") << 352 << 17;
        QTest::newRow("360") << 360 << 17;
    }
    void aReadingSetsFigureCaptionAndMark() {
        QFETCH(int, direction);
        QFETCH(int, mark);
        GaugeWindows windows;
        WindGaugeWindow* gauge = windows.open();
        windows.read(direction);
        QCOMPARE(gauge->valueLabel()->text(), QString::number(direction));
        QCOMPARE(windows.frame()->windowTitle(),
                 QStringLiteral("Wind Direction: %1 deg").arg(direction));
        QCOMPARE(gauge->dial()->mark(), mark);
    }

    void theTailWindMarkIsAtTheBottomOfTheDial() {
        GaugeWindows windows;
        WindGaugeWindow* gauge = windows.open();
        windows.frame()->resize(400, 440);
        windows.read(180);
        const QImage image = gauge->dial()->grab().toImage();
        const QPoint centre(image.width() / 2, image.height() / 2);
        const int reach = std::min(image.width(), image.height()) / 8;
        QCOMPARE(image.pixelColor(centre + QPoint(0, reach)), WindGauge::Pointer);
        QVERIFY(image.pixelColor(centre - QPoint(0, reach * 2)) != WindGauge::Pointer);
        windows.read(0);
        const QImage up = gauge->dial()->grab().toImage();
        QCOMPARE(up.pixelColor(centre - QPoint(0, reach)), WindGauge::Pointer);
        QVERIFY(up.pixelColor(centre + QPoint(0, reach * 2)) != WindGauge::Pointer);
    }

    void aDirectionPastTheDialLeavesThePointer() {
        GaugeWindows windows;
        WindGaugeWindow* gauge = windows.open();
        windows.read(90);
        windows.read(400); // 400 / 22 + 1 = 19: no such mark
        QCOMPARE(gauge->valueLabel()->text(), QStringLiteral("400"));
        QCOMPARE(windows.frame()->windowTitle(), QStringLiteral("Wind Direction: 400 deg"));
        QCOMPARE(gauge->dial()->mark(), 5);
    }

    void clearViewsAndReplayPassItBy() {
        GaugeWindows windows;
        WindGaugeWindow* gauge = windows.open();
        windows.read(90);
        windows.run(QStringLiteral("miClearViews"));
        WeatherRecord row;
        row.ABP = 29.92f;
        row.WD = 180;
        windows.station.views().addLoggedRow(row, 0.5f, 1.0f);
        QCOMPARE(gauge->dial()->mark(), 5);
        QCOMPARE(gauge->valueLabel()->text(), QStringLiteral("90"));
    }

    void theGaugeDoesNotPrint() {
        GaugeWindows windows;
        windows.open();
        windows.run(QStringLiteral("miPrint"));
        windows.run(QStringLiteral("miPDFExport"));
        QCOMPARE(dialogs->messages.size(), 2);
        for (const Dialogs::Message& message : dialogs->messages)
            QCOMPARE(message.text,
                     QStringLiteral("The Active Form does not support this feature."));
        QCOMPARE(dialogs->fileRequests.size(), 0);
        QCOMPARE(dialogs->quietPrintRequests, 0);
    }

    void aReopenedGaugeStartsAtTheTop() {
        GaugeWindows windows;
        windows.open();
        windows.read(180);
        windows.frame()->close();
        QCoreApplication::processEvents();
        QVERIFY(!windows.station.views().isOpen(View::WindDirection));
        WindGaugeWindow* again = windows.open();
        QCOMPARE(again->dial()->mark(), 1);
        QCOMPARE(windows.frame()->windowTitle(), QStringLiteral("Wind Direction"));
    }
};

QTEST_MAIN(TestWindGaugeWindow)
#include "tst_windgaugewindow.moc"
