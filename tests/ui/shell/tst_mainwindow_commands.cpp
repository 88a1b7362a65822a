#include "common/TestHome.h"
#include "common/TestRelay.h"
#include "common/WindowTesting.h"
#include "core/LiveView.h"
#include "core/ScriptedDialogs.h"
#include "feed/InstrumentConnection.h"
#include "feed/PortDevices.h"
#include "feed/WeatherLog.h"
#include "feed/WeatherStation.h"
#include "ui/feed/PortCommand.h"
#include "ui/shell/MainWindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPushButton>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QUrl>
#include <memory>

using WindowTesting::whenModal;

namespace {

// A child window that asks before it closes, as a race log with changes does.
class AskingChild : public QWidget {
public:
    int asked = 0;

protected:
    void closeEvent(QCloseEvent* event) override {
        ++asked;
        const Dialogs::Answer answer =
            Dialogs::show({"Close?", "Child", Dialogs::Icon::Question, Dialogs::Buttons::YesNo,
                           Dialogs::Answer::Yes});
        if (answer == Dialogs::Answer::Yes)
            event->accept();
        else
            event->ignore();
    }
};

// Takes the URLs the desktop would open.
class UrlCatcher : public QObject {
    Q_OBJECT
public:
    QList<QUrl> urls;
public slots:
    void open(const QUrl& url) { urls.append(url); }
};

// Counts the paint events of a widget.
class PaintCounter : public QObject {
public:
    int paints = 0;
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint)
            ++paints;
        return false;
    }
};

// An open pressure chart that records what a replay sends it, and whether it was cleared.
class RecordingViews : public LiveView {
public:
    explicit RecordingViews(WeatherStation& station) : views(station.views()) {
        views.open(ViewTable::View::ABP, this);
    }
    ~RecordingViews() override { views.close(ViewTable::View::ABP, this); }
    void showReading(const WeatherRecord&, const QString&) override {}
    void addLoggedPoint(float, const QList<float>& values) override {
        pressures.append(values.value(0));
    }
    void clear() override { ++clears; }

    OpenViews& views;
    QList<float> pressures;
    int clears = 0;
};

// Answers like ScriptedDialogs and notes the pointer while the file dialog is open.
class PointerWatchingDialogs : public ScriptedDialogs {
public:
    std::optional<Qt::CursorShape> pointer;
    std::optional<Dialogs::FileChoice> chooseFile(const Dialogs::FileRequest& request) override {
        if (QGuiApplication::overrideCursor())
            pointer = QGuiApplication::overrideCursor()->shape();
        return ScriptedDialogs::chooseFile(request);
    }
};

const QString weatherRow = QStringLiteral(
    "\"10:42:07am\",29.92,71.5,43.2,1250,5.1,45,0.33,49,98.6,1410,120,275,7,11,340\r\n");

} // namespace

class TestMainWindowCommands : public QObject {
    Q_OBJECT
    std::unique_ptr<TestHome> home;
    std::unique_ptr<WeatherStation> station;
    std::unique_ptr<MainWindow> window;

    QAction* tool(const QString& name) { return window->findChild<QAction*>(name); }
    QMdiArea* area() { return window->mdiArea(); }

    QMdiSubWindow* addChild(const QString& title, QWidget* content = nullptr) {
        QMdiSubWindow* child = area()->addSubWindow(content ? content : new QWidget);
        child->setWindowTitle(title);
        child->resize(200, 150);
        child->show();
        return child;
    }

    QString writeWeatherLog(const QString& name, int rows) {
        const QString path = home->root() + u'/' + name;
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly))
            return {};
        for (int i = 0; i < rows; ++i)
            file.write(weatherRow.toLatin1());
        return path;
    }

private slots:
    void init() {
        home = std::make_unique<TestHome>();
        station = std::make_unique<WeatherStation>();
        window = std::make_unique<MainWindow>(*station);
        PortCommand::add(*window);
        window->load();
        window->resize(900, 700);
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
    }
    void cleanup() {
        window.reset();
        station.reset();
        home.reset();
    }

    void exitClosesTheWindow() {
        tool("miExit")->trigger();
        QVERIFY(!window->isVisible());
    }

    void paletteSetsTheClientArea_data() {
        QTest::addColumn<QString>("tool");
        QTest::addColumn<QColor>("color");
        QTest::newRow("dark red") << "miDarkRed" << QColor(0x80, 0, 0);
        QTest::newRow("red") << "miRed" << QColor(0xC0, 0, 0);
        QTest::newRow("blue") << "miBlue" << QColor(0, 0, 0xC0);
        QTest::newRow("dark yellow") << "miDarkYellow" << QColor(0x80, 0x80, 0);
        QTest::newRow("violiet") << "miVioliet" << QColor(0x80, 0, 0x80);
        QTest::newRow("turquoise") << "miTurquoise" << QColor(0, 0xFF, 0xFF);
    }
    void paletteSetsTheClientArea() {
        QFETCH(QString, tool);
        QFETCH(QColor, color);
        this->tool(tool)->trigger();
        QCOMPARE(area()->background().color(), color);
    }

    void moreColorsTakesThePickedColour() {
        ScriptedDialogs dialogs;
        dialogs.queueColor(QColor(10, 20, 30));
        tool("miMoreColors")->trigger();
        QCOMPARE(area()->background().color(), QColor(10, 20, 30));
        QCOMPARE(window->background(), 0x1E140Au);
        QVERIFY(dialogs.messages.isEmpty());
    }

    void moreColorsCancelledChangesNothing() {
        ScriptedDialogs dialogs;
        tool("miGreen")->trigger();
        tool("miMoreColors")->trigger();
        QCOMPARE(area()->background().color(), QColor(0, 0x80, 0));
        QCOMPARE(window->background(), 0x008000u);
        QVERIFY(dialogs.messages.isEmpty());
    }

    void automaticUpdatesToggle() {
        QVERIFY(station->predictionSettings().automaticUpdates);
        tool("miAutomaticUpdates")->trigger();
        QVERIFY(!station->predictionSettings().automaticUpdates);
        QVERIFY(!tool("miAutomaticUpdates")->isChecked());
        window->dispatch("miAutomaticUpdates");
        QVERIFY(station->predictionSettings().automaticUpdates);
        QVERIFY(tool("miAutomaticUpdates")->isChecked());
    }

    void deltaVPToggles() {
        QVERIFY(!station->predictionSettings().deltaVP);
        tool("miDeltaVP")->trigger();
        QVERIFY(station->predictionSettings().deltaVP);
        QVERIFY(tool("miDeltaVP")->isChecked());
        window->dispatch("miDeltaVP");
        QVERIFY(!station->predictionSettings().deltaVP);
        QVERIFY(!tool("miDeltaVP")->isChecked());
    }

    void calculatorStartsTheFirstOneFound() {
        QTemporaryDir bin;
        const QString marker = bin.filePath("started");
        QFile script(bin.filePath("kcalc"));
        QVERIFY(script.open(QIODevice::WriteOnly));
        // Only the shell's own commands work with nothing else on the path.
        script.write(QStringLiteral("#!/bin/sh\necho started > '%1'\n").arg(marker).toLocal8Bit());
        script.close();
        script.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        const QByteArray path = qgetenv("PATH");
        qputenv("PATH", QFile::encodeName(bin.path()));
        tool("miCalculator")->trigger();
        qputenv("PATH", path);
        QTRY_VERIFY(QFile::exists(marker));
    }

    void noCalculatorIsNoMessage() {
        ScriptedDialogs dialogs;
        QTemporaryDir empty;
        const QByteArray path = qgetenv("PATH");
        qputenv("PATH", QFile::encodeName(empty.path()));
        window->dispatch("miCalculator");
        qputenv("PATH", path);
        QVERIFY(dialogs.messages.isEmpty());
        QVERIFY(window->isVisible());
    }

    void refreshRepaintsTheBars() {
        auto* time = window->findChild<QLabel*>("lblTIME");
        QStatusBar* bar = window->statusBar();
        PaintCounter counter;
        QApplication::processEvents();
        bar->installEventFilter(&counter);
        time->clear();
        tool("miRefresh")->trigger();
        bar->removeEventFilter(&counter);
        QVERIFY(counter.paints > 0);
        QVERIFY(!time->text().isEmpty());
    }

    void tileHorizontallyStacksTheWindows() {
        addChild("One");
        addChild("Two");
        addChild("Three")->showMaximized();
        tool("miTileHorizontally")->trigger();
        const QRect client = area()->viewport()->rect();
        const QList<QMdiSubWindow*> children = area()->subWindowList(QMdiArea::CreationOrder);
        int top = 0;
        for (QMdiSubWindow* child : children) {
            QVERIFY(!child->isMaximized());
            QCOMPARE(child->geometry().left(), 0);
            QCOMPARE(child->geometry().width(), client.width());
            QCOMPARE(child->geometry().top(), top);
            QVERIFY(qAbs(child->geometry().height() - client.height() / 3) <= 1);
            top = child->geometry().bottom() + 1;
        }
        QCOMPARE(top, client.height());
    }

    void tileVerticallyPutsTheWindowsSideBySide() {
        addChild("One");
        addChild("Two");
        tool("miTileVertically")->trigger();
        const QRect client = area()->viewport()->rect();
        const QList<QMdiSubWindow*> children = area()->subWindowList(QMdiArea::CreationOrder);
        QCOMPARE(children[0]->geometry(), QRect(0, 0, client.width() / 2, client.height()));
        QCOMPARE(children[1]->geometry().left(), client.width() / 2);
        QCOMPARE(children[1]->geometry().right(), client.width() - 1);
        QCOMPARE(children[1]->geometry().height(), client.height());
    }

    void cascadeStepsTheWindows() {
        addChild("One");
        addChild("Two");
        addChild("Three");
        tool("miTileVertically")->trigger();
        tool("miCascade")->trigger();
        const QList<QMdiSubWindow*> children = area()->subWindowList(QMdiArea::CreationOrder);
        for (qsizetype i = 1; i < children.size(); ++i) {
            QVERIFY(children[i]->geometry().top() > children[i - 1]->geometry().top());
            QVERIFY(children[i]->geometry().left() > children[i - 1]->geometry().left());
        }
    }

    void closeAllClosesEachWithItsOwnQuestion() {
        ScriptedDialogs dialogs;
        auto* keeps = new AskingChild;
        auto* goes = new AskingChild;
        addChild("Plain");
        addChild("Keeps", keeps);
        addChild("Goes", goes);
        dialogs.queueAnswer(Dialogs::Answer::No);
        dialogs.queueAnswer(Dialogs::Answer::Yes);
        tool("miCloseAll")->trigger();
        QCOMPARE(dialogs.messages.size(), 2);
        const QList<QMdiSubWindow*> left = area()->subWindowList();
        QCOMPARE(left.size(), 1);
        QCOMPARE(left[0]->windowTitle(), QStringLiteral("Keeps"));
        QCOMPARE(keeps->asked, 1);
    }

    void windowListNamesTheOpenWindows() {
        QMdiSubWindow* one = addChild("One");
        QMdiSubWindow* two = addChild("Two");
        area()->setActiveSubWindow(two);
        QMenu* list = tool("miWindowList")->menu();
        emit list->aboutToShow();
        QList<QAction*> entries = window->findChildren<QAction*>("miChildWindow");
        QCOMPARE(entries.size(), 2);
        QCOMPARE(list->actions()[0]->text(), QStringLiteral("&1 One"));
        QCOMPARE(list->actions()[1]->text(), QStringLiteral("&2 Two"));
        QVERIFY(!list->actions()[0]->isChecked());
        QVERIFY(list->actions()[1]->isChecked());
        list->actions()[0]->trigger();
        QCOMPARE(area()->activeSubWindow(), one);

        // The list is made anew each time, so a closed window drops out of it.
        two->close();
        emit list->aboutToShow();
        QCOMPARE(window->findChildren<QAction*>("miChildWindow").size(), 1);
    }

    void helpOpensTheManual() {
        UrlCatcher catcher;
        QDesktopServices::setUrlHandler("file", &catcher, "open");
        tool("miHelpContents")->trigger();
        QDesktopServices::unsetUrlHandler("file");
        QCOMPARE(catcher.urls.size(), 1);
        const QString page = catcher.urls[0].toLocalFile();
        QVERIFY2(QFile::exists(page), qPrintable(page));
        QVERIFY(page.endsWith("/share/tarnwick/manual/index.html"));
    }

    void aboutShowsNameAndVersion() {
        QString product, version;
        QString name;
        bool modal = false;
        whenModal([&](QWidget* about) {
            name = about->objectName();
            modal = about->isModal();
            product = about->findChild<QLabel*>("lblProduct")->text();
            version = about->findChild<QLabel*>("lblVersion")->text();
            about->findChild<QPushButton*>("cmdOK")->click();
        });
        tool("miAbout")->trigger();
        QCOMPARE(name, QStringLiteral("frmAbout"));
        QVERIFY(modal);
        QCOMPARE(product, QStringLiteral("Tarnwick"));
        QVERIFY(version.startsWith("Version "));
        QVERIFY(version.size() > 8);
    }

    void loadLoggedWeatherCancelledShowsNothing() {
        PointerWatchingDialogs dialogs;
        tool("miLoadLoggedWeather")->trigger();
        QCOMPARE(dialogs.fileRequests.size(), 1);
        const Dialogs::FileRequest& request = dialogs.fileRequests[0];
        QVERIFY(!request.save);
        QCOMPARE(request.title, QStringLiteral("Load Logged Weather"));
        QCOMPARE(request.filter, QStringLiteral("Tarnwick Weather Log Files (*.csv) |*.csv|"
                                                "All Files (*.*) |*.*|"));
        QCOMPARE(request.filterIndex, 1);
        QCOMPARE(request.initialFolder, home->weatherLogFolder());
        QVERIFY(dialogs.messages.isEmpty());
        QCOMPARE(dialogs.pointer, std::optional(Qt::WaitCursor));
        QVERIFY(!QGuiApplication::overrideCursor());
    }

    void loadLoggedWeatherAsksAndReplays() {
        ScriptedDialogs dialogs;
        RecordingViews views(*station);
        dialogs.queueFile(writeWeatherLog("2026-11-22.csv", 3));
        dialogs.queueAnswer(Dialogs::Answer::No);
        tool("miLoadLoggedWeather")->trigger();
        QCOMPARE(dialogs.messages.size(), 1);
        const Dialogs::Message& question = dialogs.messages[0];
        QCOMPARE(question.text, QStringLiteral("Do you want to clear the existing logged weather "
                                               "data\r\nfrom the graph before loading\r\n"
                                               "2026-11-22.csv?"));
        QCOMPARE(question.title, QStringLiteral("Load Logged Weather"));
        QCOMPARE(question.icon, Dialogs::Icon::Question);
        QCOMPARE(question.buttons, Dialogs::Buttons::YesNo);
        QCOMPARE(views.pressures, QList<float>({29.92f, 29.92f, 29.92f}));
        QCOMPARE(views.clears, 0);
        QVERIFY(!QGuiApplication::overrideCursor());
    }

    // A display instance, which writes no weather log of its own, replays the main
    // instance's log through the same command.
    void aDisplayInstanceReplaysTheMainInstancesLog() {
        window.reset();
        station = std::make_unique<WeatherStation>(InstanceRole::Display);
        window = std::make_unique<MainWindow>(*station);
        ScriptedDialogs dialogs;
        window->load();
        dialogs.messages.clear();
        RecordingViews views(*station);

        WeatherLog mainInstance;
        WeatherRecord reading;
        reading.ABP = 29.5f;
        mainInstance.writeRow(readingTexts(reading), QDateTime(QDate(2026, 11, 22), QTime(9, 0)));
        reading.ABP = 29.75f;
        mainInstance.writeRow(readingTexts(reading), QDateTime(QDate(2026, 11, 22), QTime(9, 1)));
        dialogs.queueFile(weatherLogPath(QDate(2026, 11, 22)));
        dialogs.queueAnswer(Dialogs::Answer::No);
        QVERIFY(tool("miLoadLoggedWeather")->isEnabled());
        tool("miLoadLoggedWeather")->trigger();
        QCOMPARE(dialogs.fileRequests.size(), 1);
        QCOMPARE(views.pressures, QList<float>({29.5f, 29.75f}));
    }

    // A relay that cannot be reached is tried again; the status line says so, no box.
    void aLinkBeingBroughtBackShowsInTheStatusLine() {
        ScriptedDialogs dialogs;
        const quint16 closedPort = freePort();
        window->instrument().portSettings.host = QStringLiteral("127.0.0.1");
        window->instrument().portSettings.tcpPort = QString::number(closedPort);
        window->connectRelay();
        auto* status = window->findChild<QLabel*>(QStringLiteral("lblStatus"));
        QTRY_COMPARE(status->text(), QStringLiteral("Reconnecting..."));
        QVERIFY(dialogs.messages.isEmpty());
    }

    // The links' failures open their boxes from the main window, each when it happens: OK
    // with a port that won't open tells so before the relay is called, and the relay's
    // refusal follows.
    void linkFailuresOpenTheirBoxesInTurn() {
        ScriptedDialogs dialogs;
        setPortDevice(3, home->root() + QStringLiteral("/no-such-tty"));
        const quint16 closedPort = freePort();
        whenModal([&](QWidget* dialog) {
            dialog->findChild<QComboBox*>("cboComPort")->setCurrentIndex(3);
            dialog->findChild<QComboBox*>("cboHost")->setEditText(QStringLiteral("127.0.0.1"));
            dialog->findChild<QComboBox*>("cboPort")->setEditText(QString::number(closedPort));
            dialog->findChild<QPushButton*>("cmdOK")->click();
        });
        tool("miProperties")->trigger();
        QTRY_COMPARE(dialogs.messages.size(), 2);
        const Dialogs::Message& apply = dialogs.messages[0];
        QCOMPARE(apply.text, QStringLiteral("Error applying settings"));
        QCOMPARE(apply.title, QStringLiteral("Tarnwick"));
        QCOMPARE(apply.icon, Dialogs::Icon::Critical);
        QCOMPARE(apply.buttons, Dialogs::Buttons::Ok);
        const Dialogs::Message& relay = dialogs.messages[1];
        QCOMPARE(relay.text, QStringLiteral("Error 0: Connection refused"));
        QCOMPARE(relay.title, QStringLiteral("Network Connection"));
        QCOMPARE(relay.icon, Dialogs::Icon::Critical);
        QCOMPARE(relay.buttons, Dialogs::Buttons::Ok);
    }

    void propertiesOpensThePortSettingsOnTheWindowsLink() {
        QString opened;
        QString comPort;
        QTimer::singleShot(0, [&] {
            QWidget* dialog = QApplication::activeModalWidget();
            if (!dialog)
                return;
            opened = dialog->objectName();
            comPort = dialog->findChild<QComboBox*>("cboComPort")->currentText();
            dialog->findChild<QPushButton*>("cmdCancel")->click();
        });
        window->instrument().portSettings.comPort = 3;
        tool("miProperties")->trigger();
        QCOMPARE(opened, QStringLiteral("frmProperties"));
        QCOMPARE(comPort, QStringLiteral("Com3"));
    }

    void loadLoggedWeatherWithNoChartLeavesTheLiveWeatherAlone() {
        ScriptedDialogs dialogs;
        station->feed().tcpBytes(
            " 11/22/26 10:42:07 28.5 71.5 43.2 1250 5.1 45 0.33 49 98.6 1410 120 275 7 11 340\r");
        const QString status = station->statusLine();
        QVERIFY(status.startsWith(QStringLiteral("ABP=28.5 ")));
        dialogs.queueFile(writeWeatherLog("quiet.csv", 5));
        dialogs.queueAnswer(Dialogs::Answer::No);
        window->dispatch("miLoadLoggedWeather");
        QCOMPARE(dialogs.messages.size(), 1);
        QCOMPARE(station->reading().ABP, 28.5f);
        QCOMPARE(station->statusLine(), status);
        QVERIFY(!QGuiApplication::overrideCursor());
    }

    void loadLoggedWeatherReplaysAfterClearing() {
        ScriptedDialogs dialogs;
        RecordingViews views(*station);
        dialogs.queueFile(writeWeatherLog("day.csv", 2));
        dialogs.queueAnswer(Dialogs::Answer::Yes);
        window->dispatch("miLoadLoggedWeather");
        QCOMPARE(dialogs.messages.size(), 1);
        QCOMPARE(views.clears, 1);
        QCOMPARE(views.pressures.size(), 2);
    }

    void clearViewsClearsTheOpenCharts() {
        RecordingViews views(*station);
        QVERIFY(tool("miClearViews")->isVisible());
        tool("miClearViews")->trigger();
        QCOMPARE(views.clears, 1);
    }
};

QTEST_MAIN(TestMainWindowCommands)
#include "tst_mainwindow_commands.moc"
