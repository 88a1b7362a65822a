#include "ScreenLayout.h"
#include "common/TestHome.h"
#include "common/WindowTesting.h"
#include "core/CommandTable.h"
#include "core/ScriptedDialogs.h"
#include "feed/WeatherStation.h"
#include "ui/app/Startup.h"
#include "ui/shell/MainWindow.h"

#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTemporaryDir>
#include <QToolBar>
#include <QToolButton>
#include <memory>

using namespace CommandTable;

namespace {

QImage drawn(const QIcon& icon) {
    return WindowTesting::drawn(icon, 32);
}

bool hasInk(const QImage& image) {
    return WindowTesting::hasInk(image, 1.0 / 4);
}

} // namespace

// The program as started, on a screen of 1024 by 768: the smallest a team's laptop has.
class TestMainWindowSmallScreen : public QObject {
    Q_OBJECT
    std::unique_ptr<TestHome> home;
    std::unique_ptr<ScriptedDialogs> dialogs;
    std::unique_ptr<Startup> startup;
    QTemporaryDir programFolder;
    // The icon the desktop entry installs, drawn.
    const QImage programIcon = drawn(QIcon(QStringLiteral(TARNWICK_PROGRAM_ICON)));

    MainWindow& start() {
        startup = std::make_unique<Startup>(QStringList{"tarnwick"}, programFolder.path());
        [&] { QCOMPARE(startup->run(), std::nullopt); }();
        return *startup->mainWindow();
    }

private slots:
    void init() {
        home = std::make_unique<TestHome>();
        dialogs = std::make_unique<ScriptedDialogs>();
    }
    void cleanup() {
        startup.reset();
        dialogs.reset();
        home.reset();
    }

    // Maximised, every tool of the bar shows, nothing is put behind the bar's extension, and
    // the page field has room for a short page.
    void theWholeToolBarFits() {
        MainWindow& window = start();
        window.showMaximized();
        QTRY_COMPARE(window.width(), 1024);
        auto* bar = window.findChild<QToolBar*>(QStringLiteral("tbMain"));
        QVERIFY(bar);
        QTRY_VERIFY(bar->isVisible());
        QCOMPARE(bar->toolButtonStyle(), Qt::ToolButtonIconOnly);
        auto* extension = bar->findChild<QToolButton*>(QStringLiteral("qt_toolbar_ext_button"));
        QVERIFY(extension);
        QVERIFY(!extension->isVisible());

        int tools = 0;
        for (const QString& item : findBand(QStringLiteral("tbMain"))->items) {
            if (item == Separator)
                continue;
            QAction* action = bar->actions().at(findBand("tbMain")->items.indexOf(item));
            QWidget* shown = bar->widgetForAction(action);
            QVERIFY2(shown && shown->isVisible(), qPrintable(item));
            QVERIFY2(bar->rect().contains(shown->geometry()), qPrintable(item));
            if (findTool(item)->kind == ToolKind::TextBox)
                continue;
            ++tools;
            auto* button = qobject_cast<QToolButton*>(shown);
            QVERIFY2(button, qPrintable(item));
            QVERIFY2(hasInk(drawn(button->icon())), qPrintable(item));
            // A picture alone, named by the table's tool tip where the table has one.
            QCOMPARE(button->toolButtonStyle(), Qt::ToolButtonIconOnly);
            if (const QString tip = findTool(item)->toolTip; !tip.isEmpty())
                QCOMPARE(button->toolTip(), tip);
        }
        QCOMPARE(tools, 18);
        auto* page = bar->findChild<QLineEdit*>(QStringLiteral("txtPageMessage"));
        QVERIFY(page->isVisible());
        QVERIFY2(page->width() >= 160, qPrintable(QString::number(page->width())));
        // The send button follows the field on the bar.
        QVERIFY(bar->widgetForAction(window.findChild<QAction*>(QStringLiteral("btnSend")))
                    ->geometry()
                    .left() > page->geometry().right());
    }

    // The menus show the same pictures beside their captions.
    void theMenusShowThePicturesWithTheirCaptions() {
        MainWindow& window = start();
        QVERIFY(!QCoreApplication::testAttribute(Qt::AA_DontShowIconsInMenus));
        for (const char* name : {"miNewRaceLog", "miSave", "miWindPlot", "miAADA", "miCF"}) {
            QAction* action = window.findChild<QAction*>(QLatin1String(name));
            QVERIFY(action->isIconVisibleInMenu());
            QVERIFY2(hasInk(drawn(action->icon())), name);
            QVERIFY(!action->text().isEmpty());
        }
    }

    // The program's icon, not the toolkit's, stands on the main window, every child window
    // and every dialog.
    void everyWindowShowsTheProgramIcon() {
        QVERIFY(hasInk(programIcon));
        MainWindow& window = start();
        QCOMPARE(drawn(window.windowIcon()), programIcon);
        for (const char* command : {"miNewRaceLog", "miWindPlot", "miAADA", "miGraphTS"})
            window.dispatch(QLatin1String(command));
        const QList<QMdiSubWindow*> children = window.mdiArea()->subWindowList();
        QCOMPARE(children.size(), 4);
        for (QMdiSubWindow* child : children)
            QCOMPARE(drawn(child->windowIcon()), programIcon);

        QImage dialogIcon;
        WindowTesting::whenModal([&dialogIcon](QWidget* dialog) {
            dialogIcon = drawn(dialog->windowIcon());
            dialog->close();
        });
        window.dispatch(QStringLiteral("miAbout"));
        QCOMPARE(dialogIcon, programIcon);
    }
};

int main(int argc, char** argv) {
    return RunWithScreens<TestMainWindowSmallScreen>({QRect(0, 0, 1024, 768)}, argc, argv);
}
#include "tst_mainwindow_small_screen.moc"
