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
        QCOMPARE(monitors.Monitors.Count(), 1);
        const Monitor& only = monitors.Monitors.Item(1);
        QCOMPARE(only.Handle, 1);
        QCOMPARE(only.Left, 0);
        QCOMPARE(only.Top, 0);
        QCOMPARE(only.Width, 1280);
        QCOMPARE(only.Height, 1024);
        QCOMPARE(only.Right, 1280);
        QCOMPARE(only.Bottom, 1024);
        QCOMPARE(only.WorkRight, 1280);
        QCOMPARE(only.WorkBottom, 1024);
    }

    void theDesktopIsThePrimaryScreen() {
        const MonitorList monitors;
        QCOMPARE(monitors.DesktopLeft(), 0);
        QCOMPARE(monitors.DesktopTop(), 0);
        QCOMPARE(monitors.DesktopWidth(), 1280);
        QCOMPARE(monitors.DesktopHeight(), 1024);
    }

    void refreshFindsTheMonitorAgainOnce() {
        MonitorList monitors;
        monitors.Refresh();
        monitors.Refresh();
        QCOMPARE(monitors.Monitors.Count(), 1);
    }

    void aPointOffTheMonitorHasNoneUnlessTheNearestIsAsked() {
        const MonitorList monitors;
        QCOMPARE(monitors.GetMonitorFromXYPoint(100, 100, MonitorList::DefaultToNone), 1);
        QCOMPARE(monitors.GetMonitorFromXYPoint(1280, 10, MonitorList::DefaultToNone), -1);
        QCOMPARE(monitors.GetMonitorFromXYPoint(-5, -5, MonitorList::DefaultToNone), -1);
        QCOMPARE(monitors.GetMonitorFromXYPoint(5000, 10, MonitorList::DefaultToNearest), 1);
    }

    void aWindowIsOnItsMonitor() {
        const MonitorList monitors;
        QWindow window;
        window.setGeometry(100, 100, 300, 200);
        QCOMPARE(monitors.GetMonitorFromWindow(&window, MonitorList::DefaultToNone), 1);
        window.setGeometry(3000, 3000, 300, 200);
        QCOMPARE(monitors.GetMonitorFromWindow(&window, MonitorList::DefaultToNone), -1);
        QCOMPARE(monitors.GetMonitorFromWindow(&window, MonitorList::DefaultToNearest), 1);
        QCOMPARE(monitors.GetMonitorFromWindow(nullptr, MonitorList::DefaultToNearest), -1);
    }

    void aFormIsCentredInTheWorkArea() {
        const MonitorList monitors;
        QWindow form;
        form.setGeometry(0, 0, 301, 201);
        QVERIFY(monitors.CenterFormOnMonitor(form));
        QCOMPARE(form.framePosition(), QPoint((1280 - 301) / 2, (1024 - 201) / 2));
    }

    void withOneMonitorTheWindowStaysWhereTheLoadCentredIt() {
        QMainWindow window;
        window.resize(800, 600);
        window.move((1280 - 800) / 2, (1024 - 600) / 2);
        window.show();
        QVERIFY(CountMonitors(window));
        QCOMPARE(window.pos(), QPoint(240, 212));
        QCOMPARE(window.size(), QSize(800, 600));
        QVERIFY(!window.isMaximized());
    }
};

int main(int argc, char** argv) {
    return RunWithScreens<TestSingleMonitor>({QRect(0, 0, 1280, 1024)}, argc, argv);
}
#include "tst_monitors_single.moc"
