#include "ScreenLayout.h"
#include "core/MonitorList.h"
#include "ui/shell/CountMonitors.h"

#include <QMainWindow>

namespace {

// Two monitors smaller than a sampling cell, with no cell centre on either.
const QRect tinyLeft(0, 0, 300, 200);
const QRect tinyRight(300, 0, 300, 200);

} // namespace

class TestTinyMonitors : public QObject {
    Q_OBJECT
private slots:
    void smallMonitorsCanBeMissed() {
        const MonitorList monitors;
        QCOMPARE(monitors.monitors.count(), 0);
        QCOMPARE(monitors.monitorFromPoint(350, 100, MonitorList::DefaultToNone), 2);
    }

    void withNoMonitorFoundTheMonitorsCannotBeExamined() {
        QMainWindow window;
        window.resize(200, 100);
        window.move(10, 20);
        window.show();
        QVERIFY(!countMonitors(window));
        QCOMPARE(window.pos(), QPoint(10, 20));
    }
};

int main(int argc, char** argv) {
    return RunWithScreens<TestTinyMonitors>({tinyLeft, tinyRight}, argc, argv);
}
#include "tst_monitors_tiny.moc"
