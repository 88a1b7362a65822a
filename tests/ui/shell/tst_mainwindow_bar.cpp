#include "common/TestHome.h"
#include "common/WindowTesting.h"
#include "core/CommandTable.h"
#include "core/DateText.h"
#include "core/Palette.h"
#include "core/ScriptedDialogs.h"
#include "feed/WeatherFeed.h"
#include "feed/WeatherStation.h"
#include "ui/shell/CommandBar.h"
#include "ui/shell/MainWindow.h"

#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMdiArea>
#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>
#include <QTest>
#include <QToolBar>
#include <memory>

using namespace CommandTable;
using WindowTesting::itemName;

namespace {

QStringList names(const QList<QAction*>& actions) {
    QStringList list;
    for (QAction* action : actions)
        list.append(itemName(action));
    return list;
}

QStringList visibleNames(const QList<QAction*>& actions) {
    QStringList list;
    for (QAction* action : actions) {
        if (action->isVisible())
            list.append(itemName(action));
    }
    return list;
}

} // namespace

class TestMainWindowBar : public QObject {
    Q_OBJECT
    std::unique_ptr<TestHome> home;
    std::unique_ptr<WeatherStation> station;
    std::unique_ptr<MainWindow> window;

    QAction* tool(const QString& name) { return window->findChild<QAction*>(name); }
    QMenu* menu(const QString& name) { return window->findChild<QMenu*>(name); }

private slots:
    void init() {
        home = std::make_unique<TestHome>();
        station = std::make_unique<WeatherStation>();
        window = std::make_unique<MainWindow>(*station);
    }
    void cleanup() {
        window.reset();
        station.reset();
        home.reset();
    }

    void theFrame() {
        QCOMPARE(window->objectName(), QStringLiteral("frmMain"));
        QCOMPARE(window->windowTitle(), QStringLiteral("Tarnwick"));
        QVERIFY(window->mdiArea());
        QCOMPARE(window->centralWidget(), static_cast<QWidget*>(window->mdiArea()));
    }

    void everyToolIsOneActionWithItsCaptionAndTooltip() {
        for (const Tool& entry : tools()) {
            if (entry.kind == ToolKind::TextBox)
                continue;
            const QList<QAction*> actions = window->findChildren<QAction*>(entry.name);
            QVERIFY2(actions.size() == 1, qPrintable(entry.name));
            QCOMPARE(actions[0]->text(), entry.caption);
            if (!entry.toolTip.isEmpty())
                QCOMPARE(actions[0]->toolTip(), entry.toolTip);
        }
        QCOMPARE(tool("miTileHorizontally")->text(), QStringLiteral("&Tile &Horizontally"));
        QCOMPARE(tool("miVioliet")->text(), QStringLiteral("Violiet"));
        QCOMPARE(tool("miGR")->toolTip(), QStringLiteral("Grains per lb."));
    }

    void togglesCarryACheckMark() {
        QVERIFY(tool("miAutomaticUpdates")->isCheckable());
        QVERIFY(tool("miDeltaVP")->isCheckable());
        QVERIFY(!tool("miExit")->isCheckable());
    }

    void menusInBarOrder() {
        QStringList shown;
        for (QAction* action : window->menuBar()->actions())
            shown.append(action->menu()->objectName());
        QCOMPARE(shown, QStringList({"miFile", "miView", "miTools", "miPellamor", "miReports",
                                     "miWindow", "miHelp"}));
        for (const Band& band : bands()) {
            if (band.kind == BandKind::Menu)
                QCOMPARE(menu(band.name)->title(), band.caption);
        }
    }

    void menusHoldTheirTools() {
        for (const Band& band : bands()) {
            if (band.kind == BandKind::Menu || band.kind == BandKind::Submenu)
                QCOMPARE(names(menu(band.name)->actions()), band.items);
        }
    }

    void submenusOpenFromTheirTools() {
        QCOMPARE(tool("miRaceLogOptions")->menu(), menu("miRaceLog"));
        QCOMPARE(tool("miBackgroundColor")->menu(), menu("tbColor"));
        QCOMPARE(menu("miRaceLog")->windowTitle(), QStringLiteral("Race Log Options"));
        QCOMPARE(menu("tbColor")->windowTitle(), QStringLiteral("Color"));
        QVERIFY(menu("miTools")->actions().contains(tool("miBackgroundColor")));
        QVERIFY(tool("miWindowList")->menu());
    }

    void toolBarInTableOrder() {
        auto* bar = window->findChild<QToolBar*>("tbMain");
        QVERIFY(bar);
        QCOMPARE(bar->windowTitle(), QStringLiteral("Tool Bar"));
        QCOMPARE(names(bar->actions()), findBand("tbMain")->items);
        auto* message = bar->findChild<QLineEdit*>("txtPageMessage");
        QVERIFY(message);
    }

    void statusBarPanels() {
        auto* bar = window->findChild<QStatusBar*>("sbMain");
        QVERIFY(bar);
        QCOMPARE(window->statusBar(), bar);
        QStringList order;
        for (QLabel* label : bar->findChildren<QLabel*>(Qt::FindDirectChildrenOnly))
            order.append(label->objectName());
        QCOMPARE(order, findBand("sbMain")->items);

        auto* status = bar->findChild<QLabel*>("lblStatus");
        QCOMPARE(status->text(), QStringLiteral("Waiting for Weather Update..."));
        QCOMPARE(status->toolTip(), QStringLiteral("Current Weather"));
        auto* online = bar->findChild<QLabel*>("lblPellamor");
        QCOMPARE(online->text(), QStringLiteral("Pellamor"));
        QCOMPARE(online->toolTip(), QStringLiteral("Pellamor Online Status"));
        QVERIFY(!online->isEnabled());
        QCOMPARE(bar->findChild<QLabel*>("lblCAPS")->text(), QStringLiteral("CAPS"));
    }

    // A status line far wider than the window is cut short on the screen; the window keeps
    // its width and the label keeps the whole line.
    void aLongStatusLineNeverWidensTheWindow() {
        window->resize(800, 600);
        QTRY_COMPARE(window->width(), 800);
        const QString longLine = QStringLiteral("Comm Error: ") + QString(600, u'x');
        window->weatherFeed().commError(0, QString(600, u'x'));
        QCoreApplication::processEvents();
        auto* status = window->findChild<QLabel*>("lblStatus");
        QCOMPARE(status->text(), longLine);
        QCOMPARE(window->width(), 800);
        QVERIFY(window->minimumSizeHint().width() < 800);
        QVERIFY(status->width() < 800);
    }

    void statusBarShowsTheClock() {
        auto* time = window->findChild<QLabel*>("lblTIME");
        auto* date = window->findChild<QLabel*>("lblDATE");
        const QDateTime before = QDateTime::currentDateTime();
        time->clear();
        date->clear();
        // The clock ticks each second.
        QTRY_VERIFY(!time->text().isEmpty());
        const QDateTime after = QDateTime::currentDateTime();
        QVERIFY(time->text() == DateText::timeText(before.time()) ||
                time->text() == DateText::timeText(after.time()));
        QVERIFY(date->text() == DateText::logDateText(before.date()) ||
                date->text() == DateText::logDateText(after.date()));
    }

    // The bar is driven by what can run, not by what this build happens to hold: a window of
    // its own with a chosen set of commands shows those, the tools that are always there, and
    // no band or separator left with nothing in it.
    void aToolShowsOnlyWhenItsCommandCanRun() {
        QMainWindow frame;
        CommandBar bar(frame, [](const QString&) {});
        const QStringList runnable = {"miExit",    "miLoadLoggedWeather", "miAutomaticUpdates",
                                      "miDeltaVP", "miCalculator",        "miRefresh",
                                      "miAbout"};
        const auto canRun = [&runnable](const QString& name) {
            return runnable.contains(name) || findBand("tbColor")->items.contains(name);
        };
        bar.showTools(canRun);
        for (const Tool& entry : tools()) {
            if (entry.kind == ToolKind::Command || entry.kind == ToolKind::Toggle)
                QVERIFY2(bar.tool(entry.name)->isVisible() == canRun(entry.name),
                         qPrintable(entry.name));
        }
        QVERIFY(bar.tool("miSetDateTime")->isVisible());
        QVERIFY(bar.tool("miWindowList")->isVisible());
        QVERIFY(!bar.tool("txtPageMessage")->isVisible());
        QVERIFY(!frame.findChild<QToolBar*>("tbMain")->isVisibleTo(&frame));
        QVERIFY(!frame.findChild<QMenu*>("miView")->menuAction()->isVisible());
        QVERIFY(!frame.findChild<QMenu*>("miReports")->menuAction()->isVisible());
        QCOMPARE(visibleNames(frame.findChild<QMenu*>("miFile")->actions()),
                 QStringList({"miLoadLoggedWeather", "-", "miExit"}));
        QCOMPARE(visibleNames(frame.findChild<QMenu*>("miTools")->actions()),
                 QStringList(
                     {"miRaceLogOptions", "-", "miCalculator", "miRefresh", "miBackgroundColor"}));
        QCOMPARE(visibleNames(frame.findChild<QMenu*>("miHelp")->actions()),
                 QStringList({"miAbout"}));
    }

    void thePagerToolsCarryTheirDescriptionsAndGroups() {
        QCOMPARE(tool("btnSendPage")->statusTip(), QStringLiteral("Send default page"));
        QCOMPARE(tool("btnSendPage")->property("category").toString(), QStringLiteral("Pager"));
        QCOMPARE(tool("btnSend")->statusTip(), QStringLiteral("Send custom message to pager"));
        QCOMPARE(tool("btnSend")->toolTip(), QStringLiteral("Send Custom Page"));
        auto* message = window->findChild<QLineEdit*>("txtPageMessage");
        QCOMPARE(message->placeholderText(), QStringLiteral("Pager Message"));
        QCOMPARE(message->accessibleName(), QStringLiteral("Pager Message"));
        QCOMPARE(message->statusTip(), QStringLiteral("Custom message to pager"));
        QCOMPARE(message->property("category").toString(), QStringLiteral("Custom Page Message"));
    }

    // Resting the pointer on a pager tool puts its description on the status bar.
    void aToolsDescriptionShowsOnTheStatusBar() {
        window->setCommand("btnSendPage", [] {});
        window->resize(900, 400);
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
        auto* bar = window->findChild<QToolBar*>("tbMain");
        QWidget* button = bar->widgetForAction(tool("btnSendPage"));
        QVERIFY(button);
        QTest::mouseMove(button);
        QTRY_COMPARE(window->statusBar()->currentMessage(), QStringLiteral("Send default page"));
    }

    void aGivenCommandShowsItsTool() {
        int runs = 0;
        window->setCommand("miWindPlot", [&runs] { ++runs; });
        QVERIFY(tool("miWindPlot")->isVisible());
        QVERIFY(menu("miView")->menuAction()->isVisible());
        QVERIFY(!window->findChild<QToolBar*>("tbMain")->isHidden());
        QVERIFY(
            visibleNames(window->findChild<QToolBar*>("tbMain")->actions()).contains("miWindPlot"));
        tool("miWindPlot")->trigger();
        QCOMPARE(runs, 1);
        window->dispatch("miWindPlot");
        QCOMPARE(runs, 2);
    }

    void thePageFieldShowsWithTheSendButton() {
        auto* bar = window->findChild<QToolBar*>("tbMain");
        QVERIFY(!visibleNames(bar->actions()).contains("txtPageMessage"));
        window->setCommand("btnSend", [] {});
        QCOMPARE(visibleNames(bar->actions()), QStringList({"txtPageMessage", "btnSend"}));
    }

    void unknownToolsRunNothing() {
        ScriptedDialogs dialogs;
        window->show();
        window->dispatch("miNoSuchTool");
        window->dispatch("miSetDateTime");
        QVERIFY(dialogs.messages.isEmpty());
        QVERIFY(dialogs.fileRequests.isEmpty());
        QVERIFY(window->isVisible());
    }

    void newFollowedByATypeMakesALogOfThatType() {
        QStringList made;
        window->setNewRaceLog([&made](const QString& type) { made.append(type); });
        window->dispatch("newFunny Car");
        window->dispatch("newSuper Pro");
        window->dispatch("NewNothing");
        window->dispatch("miNewRaceLog");
        QCOMPARE(made, QStringList({"Funny Car", "Super Pro"}));
    }

    void openFileSaysWhenTheLogCannotLoad() {
        ScriptedDialogs dialogs;
        window->openFile("/nowhere/race.trl");
        QCOMPARE(dialogs.messages.size(), 1);
        QCOMPARE(dialogs.messages[0].text,
                 QStringLiteral("Not able to load Race Log...\r\n/nowhere/race.trl"));
        QCOMPARE(dialogs.messages[0].title, QStringLiteral("Tarnwick - Load Race Log"));
        QCOMPARE(dialogs.messages[0].icon, Dialogs::Icon::Information);
        QVERIFY(!QGuiApplication::overrideCursor());
    }

    void openFileHandsThePathToTheLoader() {
        ScriptedDialogs dialogs;
        QStringList loaded;
        Qt::CursorShape pointer = Qt::ArrowCursor;
        window->setRaceLogLoader([&](const QString& path) {
            loaded.append(path);
            pointer = QGuiApplication::overrideCursor()->shape();
            return RaceLogLoad{true, {}};
        });
        window->openFile("/races/event.trl");
        QCOMPARE(loaded, QStringList{"/races/event.trl"});
        QCOMPARE(pointer, Qt::WaitCursor);
        QVERIFY(dialogs.messages.isEmpty());
        QVERIFY(!QGuiApplication::overrideCursor());
    }
};

QTEST_MAIN(TestMainWindowBar)
#include "tst_mainwindow_bar.moc"
