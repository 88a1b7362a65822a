#include "ScreenLayout.h"
#include "core/MonitorList.h"
#include "ui/shell/CentreOnScreen.h"
#include "ui/shell/CountMonitors.h"

#include <QMainWindow>
#include <QScreen>
#include <QWindow>

namespace {

const QRect leftScreen(0, 0, 1920, 1080);
const QRect rightScreen(1920, 0, 1280, 1024);

} // namespace

class TestSideBySide : public QObject {
    Q_OBJECT
private slots:
    // A window goes to the middle of the screen it is on, or of the screen named.
    void aWindowIsCentredOnItsScreenOrTheOneNamed() {
        QWidget window;
        window.resize(400, 300);
        window.move(rightScreen.left() + 10, 10);
        window.show();
        QTRY_COMPARE(window.screen()->geometry(), rightScreen);
        centreOnScreen(window);
        QCOMPARE(window.pos(), QPoint(1920 + (1280 - 400) / 2, (1024 - 300) / 2));
        centreOnScreen(window, QGuiApplication::screens().at(0));
        QCOMPARE(window.pos(), QPoint((1920 - 400) / 2, (1080 - 300) / 2));
    }

    void twoMonitorsTheLeftOneFirst() {
        const MonitorList monitors;
        QCOMPARE(monitors.Monitors.Count(), 2);
        const Monitor& first = monitors.Monitors.Item(1);
        const Monitor& second = monitors.Monitors.Item(2);
        QCOMPARE(first.Left, 0);
        QCOMPARE(first.Width, 1920);
        QCOMPARE(first.Height, 1080);
        QCOMPARE(second.Left, 1920);
        QCOMPARE(second.Right, 3200);
        QCOMPARE(second.Top, 0);
        QCOMPARE(second.Bottom, 1024);
        QCOMPARE(second.Width, 1280);
        QCOMPARE(second.Height, 1024);
        QCOMPARE(second.WorkLeft, 1920);
        QCOMPARE(second.WorkRight, 3200);
        QVERIFY(first.Handle != second.Handle);
    }

    void theDesktopHoldsBoth() {
        const MonitorList monitors;
        QCOMPARE(monitors.DesktopLeft(), 0);
        QCOMPARE(monitors.DesktopTop(), 0);
        QCOMPARE(monitors.DesktopWidth(), 3200);
        QCOMPARE(monitors.DesktopHeight(), 1080);
    }

    void pointsAndWindowsFindTheirMonitor() {
        const MonitorList monitors;
        const qint32 second = monitors.Monitors.Item(2).Handle;
        QCOMPARE(monitors.GetMonitorFromXYPoint(2500, 500, MonitorList::DefaultToNone), second);
        // Below the shorter monitor lies no monitor at all.
        QCOMPARE(monitors.GetMonitorFromXYPoint(2500, 1050, MonitorList::DefaultToNone), -1);
        QCOMPARE(monitors.GetMonitorFromXYPoint(2500, 1050, MonitorList::DefaultToNearest), second);
        QWindow window;
        // Mostly on the right monitor.
        window.setGeometry(1800, 100, 600, 400);
        QCOMPARE(monitors.GetMonitorFromWindow(&window, MonitorList::DefaultToNone), second);
    }

    void aFormIsCentredOnTheMonitorOfAnother() {
        const MonitorList monitors;
        QWindow other;
        other.setGeometry(2000, 100, 300, 200);
        QWindow form;
        form.setGeometry(10, 10, 400, 300);
        QVERIFY(monitors.CenterFormOnMonitor(form, &other));
        QCOMPARE(form.framePosition(), QPoint(1920 + (1280 - 400) / 2, (1024 - 300) / 2));
        QVERIFY(monitors.CenterFormOnMonitor(form));
        QCOMPARE(form.framePosition(), QPoint((1920 - 400) / 2, (1080 - 300) / 2));
    }

    void aDisplayInstanceLandsMaximisedOnTheSecond() {
        QMainWindow window;
        window.resize(800, 600);
        window.move((1920 - 800) / 2, (1080 - 600) / 2);
        window.show();
        QVERIFY(CountMonitors(window));
        QVERIFY(window.isMaximized());
        QTRY_COMPARE(window.screen(), QGuiApplication::screens().at(1));
        QTRY_VERIFY(window.width() > 800);
        QVERIFY(rightScreen.contains(window.frameGeometry()));
        // Restored, it stands centred on that monitor.
        window.showNormal();
        QTRY_COMPARE(window.size(), QSize(800, 600));
        QCOMPARE(window.pos(), QPoint(1920 + (1280 - window.frameGeometry().width()) / 2,
                                      (1024 - window.frameGeometry().height()) / 2));
    }
};

int main(int argc, char** argv) {
    return RunWithScreens<TestSideBySide>({leftScreen, rightScreen}, argc, argv);
}
#include "tst_monitors_side_by_side.moc"
