#include "ScreenLayout.h"
#include "core/MonitorList.h"
#include "ui/shell/CountMonitors.h"

#include <QMainWindow>
#include <QScreen>

namespace {

const QRect primaryScreen(0, 0, 1920, 1080);
const QRect leftScreen(-1280, 0, 1280, 1024);

} // namespace

class TestLeftOfPrimary : public QObject {
    Q_OBJECT
private slots:
    void theDesktopStartsLeftOfTheOrigin() {
        const MonitorList monitors;
        QCOMPARE(monitors.desktopLeft(), -1280);
        QCOMPARE(monitors.desktopTop(), 0);
        QCOMPARE(monitors.desktopWidth(), 3200);
        QCOMPARE(monitors.desktopHeight(), 1080);
    }

    // Sampling starts at the desktop's left edge, so the monitor there is found first.
    void theLeftMonitorIsFoundFirstWithANegativeLeft() {
        const MonitorList monitors;
        QCOMPARE(monitors.monitors.count(), 2);
        const Monitor& first = monitors.monitors.item(1);
        QCOMPARE(first.left, -1280);
        QCOMPARE(first.right, 0);
        QCOMPARE(first.workLeft, -1280);
        QCOMPARE(first.width, 1280);
        QCOMPARE(monitors.monitors.item(2).left, 0);
        QCOMPARE(monitors.monitorFromPoint(-1000, 100, MonitorList::DefaultToNone), first.handle);
    }

    // The second monitor found is the primary one, so that is where a display goes.
    void aDisplayInstanceGoesToTheSecondFoundNotTheOneToTheRight() {
        QMainWindow window;
        window.resize(640, 480);
        window.move(-1000, 100);
        window.show();
        QTRY_COMPARE(window.screen(), QGuiApplication::screens().at(1));
        QVERIFY(countMonitors(window));
        QVERIFY(window.isMaximized());
        QTRY_COMPARE(window.screen(), QGuiApplication::primaryScreen());
        QTRY_VERIFY(window.width() > 640);
        QVERIFY(primaryScreen.contains(window.frameGeometry()));
    }
};

int main(int argc, char** argv) {
    return RunWithScreens<TestLeftOfPrimary>({primaryScreen, leftScreen}, argc, argv);
}
#include "tst_monitors_left_of_primary.moc"
