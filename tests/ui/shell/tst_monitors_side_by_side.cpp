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
        QCOMPARE(monitors.monitors.count(), 2);
        const Monitor& first = monitors.monitors.item(1);
        const Monitor& second = monitors.monitors.item(2);
        QCOMPARE(first.left, 0);
        QCOMPARE(first.width, 1920);
        QCOMPARE(first.height, 1080);
        QCOMPARE(second.left, 1920);
        QCOMPARE(second.right, 3200);
        QCOMPARE(second.top, 0);
        QCOMPARE(second.bottom, 1024);
        QCOMPARE(second.width, 1280);
        QCOMPARE(second.height, 1024);
        QCOMPARE(second.workLeft, 1920);
        QCOMPARE(second.workRight, 3200);
        QVERIFY(first.handle != second.handle);
    }

    void theDesktopHoldsBoth() {
        const MonitorList monitors;
        QCOMPARE(monitors.desktopLeft(), 0);
        QCOMPARE(monitors.desktopTop(), 0);
        QCOMPARE(monitors.desktopWidth(), 3200);
        QCOMPARE(monitors.desktopHeight(), 1080);
    }

    void pointsAndWindowsFindTheirMonitor() {
        const MonitorList monitors;
        const qint32 second = monitors.monitors.item(2).handle;
        QCOMPARE(monitors.monitorFromPoint(2500, 500, MonitorList::DefaultToNone), second);
        // Below the shorter monitor lies no monitor at all.
        QCOMPARE(monitors.monitorFromPoint(2500, 1050, MonitorList::DefaultToNone), -1);
        QCOMPARE(monitors.monitorFromPoint(2500, 1050, MonitorList::DefaultToNearest), second);
        QWindow window;
        // Mostly on the right monitor.
        window.setGeometry(1800, 100, 600, 400);
        QCOMPARE(monitors.monitorFromWindow(&window, MonitorList::DefaultToNone), second);
    }

    void aFormIsCentredOnTheMonitorOfAnother() {
        const MonitorList monitors;
        QWindow other;
        other.setGeometry(2000, 100, 300, 200);
        QWindow form;
        form.setGeometry(10, 10, 400, 300);
        QVERIFY(monitors.centerFormOnMonitor(form, &other));
        QCOMPARE(form.framePosition(), QPoint(1920 + (1280 - 400) / 2, (1024 - 300) / 2));
        QVERIFY(monitors.centerFormOnMonitor(form));
        QCOMPARE(form.framePosition(), QPoint((1920 - 400) / 2, (1080 - 300) / 2));
    }

    void aDisplayInstanceLandsMaximisedOnTheSecond() {
        QMainWindow window;
        window.resize(800, 600);
        window.move((1920 - 800) / 2, (1080 - 600) / 2);
        window.show();
        QVERIFY(countMonitors(window));
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
