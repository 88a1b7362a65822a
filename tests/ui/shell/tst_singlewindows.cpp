#include "ui/shell/SingleWindows.h"

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPointer>
#include <QTest>
#include <functional>
#include <memory>

namespace {

// Makes a window of one name and counts how often it was asked to.
struct Maker {
    QString name;
    int made = 0;

    std::function<QWidget*()> make() {
        return [this] {
            ++made;
            auto* window = new QWidget;
            window->setObjectName(name);
            return window;
        };
    }
};

} // namespace

class TestSingleWindows : public QObject {
    Q_OBJECT
    std::unique_ptr<QMdiArea> area;

    QMdiSubWindow* frameNamed(const QString& name) {
        for (QMdiSubWindow* frame : area->subWindowList())
            if (frame->widget()->objectName() == name)
                return frame;
        return nullptr;
    }

private slots:
    void init() {
        area = std::make_unique<QMdiArea>();
        area->resize(800, 600);
        area->show();
        QVERIFY(QTest::qWaitForWindowExposed(area.get()));
    }
    void cleanup() { area.reset(); }

    void aWindowNotOpenIsMadeAndShown() {
        Maker graph{QStringLiteral("frmGraph")};
        SingleWindows::show(*area, graph.name, graph.make());
        QCOMPARE(graph.made, 1);
        QMdiSubWindow* frame = frameNamed(graph.name);
        QVERIFY(frame);
        QVERIFY(frame->isVisible());
        QVERIFY(frame->widget()->isVisible());
        QVERIFY(frame->testAttribute(Qt::WA_DeleteOnClose));
    }

    // The open window comes to the front; no second one is made.
    void anOpenWindowIsBroughtToTheFront() {
        Maker graph{QStringLiteral("frmGraph")};
        Maker other{QStringLiteral("frmGraphTS")};
        SingleWindows::show(*area, graph.name, graph.make());
        SingleWindows::show(*area, other.name, other.make());
        QCOMPARE(area->activeSubWindow(), frameNamed(other.name));

        SingleWindows::show(*area, graph.name, graph.make());
        QCOMPARE(graph.made, 1);
        QCOMPARE(area->subWindowList().size(), 2);
        QCOMPARE(area->activeSubWindow(), frameNamed(graph.name));
    }

    // A closed window is gone with its frame; the next show makes a new one.
    void aClosedWindowIsMadeAgain() {
        Maker graph{QStringLiteral("frmGraph")};
        SingleWindows::show(*area, graph.name, graph.make());
        QPointer<QMdiSubWindow> frame = frameNamed(graph.name);
        frame->close();
        QTRY_VERIFY(!frame);
        SingleWindows::show(*area, graph.name, graph.make());
        QCOMPARE(graph.made, 2);
        QCOMPARE(area->subWindowList().size(), 1);
    }
};

QTEST_MAIN(TestSingleWindows)
#include "tst_singlewindows.moc"
