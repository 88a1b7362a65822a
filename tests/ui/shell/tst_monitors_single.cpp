#include "ScreenLayout.h"
#include "core/MonitorList.h"
#include "ui/shell/CountMonitors.h"

#include <QMainWindow>
#include <QScreen>
#include <QWindow>

class TestSingleMonitor : public QObject {
    Q_OBJECT
private slots:
    void theScreenIsThere() {
        QCOMPARE(QGuiApplication::screens().size(), 1);
        QCOMPARE(QGuiApplication::primaryScreen()->geometry(), QRect(0, 0, 1280, 1024));
    }

    void aSingleMonitorGivesACollectionOfOne() {
        const MonitorList monitors;
        QCOMPARE(monitors.monitors.count(), 1);
        const Monitor& only = monitors.monitors.item(1);
        QCOMPARE(only.handle, 1);
        QCOMPARE(only.left, 0);
        QCOMPARE(only.top, 0);
        QCOMPARE(only.width, 1280);
        QCOMPARE(only.height, 1024);
        QCOMPARE(only.right, 1280);
        QCOMPARE(only.bottom, 1024);
        QCOMPARE(only.workRight, 1280);
        QCOMPARE(only.workBottom, 1024);
    }

    void theDesktopIsThePrimaryScreen() {
        const MonitorList monitors;
        QCOMPARE(monitors.desktopLeft(), 0);
        QCOMPARE(monitors.desktopTop(), 0);
        QCOMPARE(monitors.desktopWidth(), 1280);
        QCOMPARE(monitors.desktopHeight(), 1024);
    }

    void refreshFindsTheMonitorAgainOnce() {
        MonitorList monitors;
        monitors.refresh();
        monitors.refresh();
        QCOMPARE(monitors.monitors.count(), 1);
    }

    void aPointOffTheMonitorHasNoneUnlessTheNearestIsAsked() {
        const MonitorList monitors;
        QCOMPARE(monitors.monitorFromPoint(100, 100, MonitorList::DefaultToNone), 1);
        QCOMPARE(monitors.monitorFromPoint(1280, 10, MonitorList::DefaultToNone), -1);
        QCOMPARE(monitors.monitorFromPoint(-5, -5, MonitorList::DefaultToNone), -1);
        QCOMPARE(monitors.monitorFromPoint(5000, 10, MonitorList::DefaultToNearest), 1);
    }

    void aWindowIsOnItsMonitor() {
        const MonitorList monitors;
        QWindow window;
        window.setGeometry(100, 100, 300, 200);
        QCOMPARE(monitors.monitorFromWindow(&window, MonitorList::DefaultToNone), 1);
        window.setGeometry(3000, 3000, 300, 200);
        QCOMPARE(monitors.monitorFromWindow(&window, MonitorList::DefaultToNone), -1);
        QCOMPARE(monitors.monitorFromWindow(&window, MonitorList::DefaultToNearest), 1);
        QCOMPARE(monitors.monitorFromWindow(nullptr, MonitorList::DefaultToNearest), -1);
    }

    void aFormIsCentredInTheWorkArea() {
        const MonitorList monitors;
        QWindow form;
        form.setGeometry(0, 0, 301, 201);
        QVERIFY(monitors.centerFormOnMonitor(form));
        QCOMPARE(form.framePosition(), QPoint((1280 - 301) / 2, (1024 - 201) / 2));
    }

    void withOneMonitorTheWindowStaysWhereTheLoadCentredIt() {
        QMainWindow window;
        window.resize(800, 600);
        window.move((1280 - 800) / 2, (1024 - 600) / 2);
        window.show();
        QVERIFY(countMonitors(window));
        QCOMPARE(window.pos(), QPoint(240, 212));
        QCOMPARE(window.size(), QSize(800, 600));
        QVERIFY(!window.isMaximized());
    }
};

int main(int argc, char** argv) {
    return RunWithScreens<TestSingleMonitor>({QRect(0, 0, 1280, 1024)}, argc, argv);
}
#include "tst_monitors_single.moc"
