#include "common/TestHome.h"
#include "core/Registry.h"
#include "ui/shell/WindowPlacement.h"

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTest>
#include <QWidget>

#include <functional>
#include <memory>

namespace {

const QString key = QStringLiteral("SOFTWARE\\Zorvane\\Weather\\ScreenSettings");
const QRect designPlace(40, 50, 300, 200);

QString stored(const char* valueName) {
    return Registry::get(key, QLatin1String(valueName));
}

// A top-level window or a child of the MDI area, as the windows of the program are.
class Window {
public:
    virtual ~Window() = default;
    virtual QWidget* widget() = 0;
};

class TopLevel : public Window {
public:
    TopLevel() { place(top); }
    QWidget* widget() override { return &top; }
    static void place(QWidget& w) {
        w.resize(designPlace.size());
        w.move(designPlace.topLeft());
    }

private:
    QWidget top;
};

class Child : public Window {
public:
    Child() {
        area.resize(1000, 800);
        area.show();
        sub = area.addSubWindow(new QWidget);
        TopLevel::place(*sub);
    }
    QWidget* widget() override { return sub; }

private:
    QMdiArea area;
    QMdiSubWindow* sub = nullptr;
};

using MakeWindow = std::function<std::unique_ptr<Window>()>;

} // namespace

Q_DECLARE_METATYPE(MakeWindow)

class TestPlacement : public QObject {
    Q_OBJECT
private:
    static void addKinds() {
        QTest::addColumn<MakeWindow>("make");
        QTest::newRow("top-level window")
            << MakeWindow([] { return std::make_unique<TopLevel>(); });
        QTest::newRow("MDI child") << MakeWindow([] { return std::make_unique<Child>(); });
    }

private slots:
    void firstStartSeedsTheDesignPlace_data() { addKinds(); }
    void firstStartSeedsTheDesignPlace() {
        QFETCH(MakeWindow, make);
        TestHome home;
        {
            auto first = make();
            Settings::loadWindowPlacement(key, first->widget());
            QCOMPARE(first->widget()->geometry().size(), designPlace.size());
            QCOMPARE(first->widget()->pos(), designPlace.topLeft());
        }
        QCOMPARE(stored("WindowState"), QString("0"));
        QCOMPARE(stored("Width"), QString("300"));
        QCOMPARE(stored("Height"), QString("200"));
        QCOMPARE(stored("Top"), QString("50"));
        QCOMPARE(stored("Left"), QString("40"));

        // The next start reads them back, whatever its window was made with.
        auto next = make();
        next->widget()->setGeometry(5, 6, 120, 90);
        Settings::loadWindowPlacement(key, next->widget());
        QCOMPARE(next->widget()->size(), designPlace.size());
        QCOMPARE(next->widget()->pos(), designPlace.topLeft());
    }

    void storedPlaceIsApplied_data() { addKinds(); }
    void storedPlaceIsApplied() {
        QFETCH(MakeWindow, make);
        TestHome home;
        Registry::set(key, "WindowState", "0");
        Registry::set(key, "Width", "420");
        Registry::set(key, "Height", "310");
        Registry::set(key, "Top", "70");
        Registry::set(key, "Left", "-20");
        auto window = make();
        Settings::loadWindowPlacement(key, window->widget());
        QCOMPARE(window->widget()->size(), QSize(420, 310));
        QCOMPARE(window->widget()->pos(), QPoint(-20, 70));
    }

    void unknownStateChangesNothingAndStays_data() { addKinds(); }
    void unknownStateChangesNothingAndStays() {
        QFETCH(MakeWindow, make);
        TestHome home;
        Registry::set(key, "WindowState", "3");
        auto window = make();
        window->widget()->show();
        Settings::loadWindowPlacement(key, window->widget());
        QCOMPARE(window->widget()->windowState() & (Qt::WindowMinimized | Qt::WindowMaximized),
                 Qt::WindowNoState);
        QCOMPARE(stored("WindowState"), QString("3"));
    }

    void textStateIsReplacedByNormal() {
        TestHome home;
        Registry::set(key, "WindowState", "big");
        TopLevel window;
        Settings::loadWindowPlacement(key, window.widget());
        QVERIFY(!window.widget()->isMaximized());
        QCOMPARE(stored("WindowState"), QString("0"));
    }

    void aNormalWindowSavesItsPlace_data() { addKinds(); }
    void aNormalWindowSavesItsPlace() {
        QFETCH(MakeWindow, make);
        TestHome home;
        auto window = make();
        window->widget()->show();
        window->widget()->setGeometry(QRect(QPoint(), QSize(350, 260)));
        window->widget()->move(15, 25);
        Settings::saveWindowPlacement(key, window->widget());
        QCOMPARE(stored("WindowState"), QString("0"));
        QCOMPARE(stored("Width"), QString("350"));
        QCOMPARE(stored("Height"), QString("260"));
        QCOMPARE(stored("Top"), QString("25"));
        QCOMPARE(stored("Left"), QString("15"));
    }

    void closedMaximisedKeepsTheNormalPlace_data() { addKinds(); }
    void closedMaximisedKeepsTheNormalPlace() {
        QFETCH(MakeWindow, make);
        TestHome home;
        {
            auto window = make();
            window->widget()->show();
            window->widget()->resize(360, 240);
            window->widget()->move(30, 35);
            Settings::saveWindowPlacement(key, window->widget());
            window->widget()->showMaximized();
            QVERIFY(window->widget()->isMaximized());
            Settings::saveWindowPlacement(key, window->widget());
        }
        QCOMPARE(stored("WindowState"), QString("2"));
        QCOMPARE(stored("Width"), QString("360"));
        QCOMPARE(stored("Left"), QString("30"));

        auto reopened = make();
        Settings::loadWindowPlacement(key, reopened->widget());
        reopened->widget()->show();
        QVERIFY(reopened->widget()->isMaximized());
        QTRY_VERIFY(reopened->widget()->width() > 360);
        reopened->widget()->showNormal();
        QTRY_COMPARE(reopened->widget()->size(), QSize(360, 240));
        QCOMPARE(reopened->widget()->pos(), QPoint(30, 35));
    }

    void closedMinimisedReopensMinimised() {
        TestHome home;
        {
            TopLevel window;
            window.widget()->show();
            Settings::saveWindowPlacement(key, window.widget());
            window.widget()->showMinimized();
            Settings::saveWindowPlacement(key, window.widget());
        }
        QCOMPARE(stored("WindowState"), QString("1"));
        TopLevel reopened;
        Settings::loadWindowPlacement(key, reopened.widget());
        reopened.widget()->show();
        QVERIFY(reopened.widget()->isMinimized());
        reopened.widget()->showNormal();
        QTRY_COMPARE(reopened.widget()->size(), designPlace.size());
    }
};

QTEST_MAIN(TestPlacement)
#include "tst_placement.moc"
