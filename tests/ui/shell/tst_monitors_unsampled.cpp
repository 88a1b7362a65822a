#include "ScreenLayout.h"
#include "core/MonitorList.h"
#include "ui/shell/CountMonitors.h"

#include <QMainWindow>

namespace {

// A desktop that starts right of the origin: its width, taken as the bound of the sampling,
// stops short of its right edge.
const QRect wideScreen(1000, 0, 1920, 1080);
const QRect lastScreen(2920, 0, 800, 600);

} // namespace

class TestUnsampledColumns : public QObject {
    Q_OBJECT
private slots:
    void theLastColumnsAreNotSampled() {
        const MonitorList monitors;
        QCOMPARE(monitors.desktopLeft(), 1000);
        QCOMPARE(monitors.desktopWidth(), 2720);
        QCOMPARE(monitors.monitors.count(), 1);
        QCOMPARE(monitors.monitors.item(1).left, 1000);
        // The monitor is there, and wider than a cell; the grid just never reaches it.
        QVERIFY(monitors.monitorFromPoint(2920 + 320, 240, MonitorList::DefaultToNone) > 0);
    }

    void withOnlyOneMonitorFoundNothingMoves() {
        QMainWindow window;
        window.resize(400, 300);
        window.move(1200, 100);
        window.show();
        QVERIFY(countMonitors(window));
        QVERIFY(!window.isMaximized());
        QCOMPARE(window.pos(), QPoint(1200, 100));
    }
};

int main(int argc, char** argv) {
    return RunWithScreens<TestUnsampledColumns>({wideScreen, lastScreen}, argc, argv);
}
#include "tst_monitors_unsampled.moc"
