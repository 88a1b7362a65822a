#include "SqliteShell.h"
#include "common/TestHome.h"
#include "common/WindowTesting.h"
#include "core/Registry.h"
#include "core/ScriptedDialogs.h"
#include "feed/WeatherStation.h"
#include "racelog/Database.h"
#include "racelog/RunEdits.h"
#include "racelog/RunTable.h"
#include "ui/output/PrintableWindow.h"
#include "ui/racelog/LogSidePanel.h"
#include "ui/racelog/RaceLogCommands.h"
#include "ui/racelog/RaceLogWindow.h"
#include "ui/racelog/RunGrid.h"
#include "ui/shell/MainWindow.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDate>
#include <QDir>
#include <QFile>
#include <QHeaderView>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <memory>

namespace {

const QString DefaultsKey = QStringLiteral("SOFTWARE\\Zorvane\\Main\\Defaults\\");
const QString PathKey = QStringLiteral("SOFTWARE\\Zorvane\\RaceLog\\Path");
const QString PrintMessage = QStringLiteral("The Active Form does not support this feature.");

QByteArray contents(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// A race log file as the program writes it, with some runs and a page identifier.
void writeRaceLog(const QString& path, int runs, const QString& pageIdentifier) {
    RaceLogData data;
    for (int run = 2; run <= runs; ++run) {
        data.grid.addRun();
        data.refRunItems << QString::number(run);
    }
    data.grid.setCell(runs, 6, "1.0123");
    data.refRunIndex = runs - 1;
    data.pageIdentifier = pageIdentifier;
    data.pf = "5.5";
    QCOMPARE(Database::saveRaceLog(path, data), Database::SaveResult::Ok);
}

// A window that can print, as the charts can.
class Printable : public QWidget, public PrintableWindow {
public:
    void printDocument() override { ++printed; }
    void saveAsPdf() override { ++saved; }
    int printed = 0;
    int saved = 0;
};

// The main window with its race log commands, shown and in front.
struct MainWindowHarness {
    MainWindowHarness() {
        commands = new RaceLogCommands(main, station);
        main.show();
        QVERIFY(QTest::qWaitForWindowActive(&main));
    }
    ~MainWindowHarness() {
        // The logs go without their save questions when the test is over.
        const QList<QMdiSubWindow*> windows = main.mdiArea()->subWindowList();
        for (QMdiSubWindow* window : windows)
            delete window;
    }
    QAction* tool(const char* name) { return main.findChild<QAction*>(name); }
    void run(const char* name) { tool(name)->trigger(); }
    RaceLogWindow* slot(int index) {
        return WindowTesting::windowOfSlot(*main.mdiArea(), station.raceLogs(), index);
    }
    QList<QMdiSubWindow*> children() { return main.mdiArea()->subWindowList(); }
    RaceLogWindow* active() {
        QMdiSubWindow* child = main.mdiArea()->currentSubWindow();
        return child ? qobject_cast<RaceLogWindow*>(child->widget()) : nullptr;
    }
    void activate(RaceLogWindow* log) {
        main.mdiArea()->setActiveSubWindow(qobject_cast<QMdiSubWindow*>(log->parentWidget()));
    }
    // Deletes what the closes left for later.
    static void settle() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    WeatherStation station;
    MainWindow main{station};
    RaceLogCommands* commands;
};

} // namespace

class TestRaceLogCommands : public QObject {
    Q_OBJECT
    std::unique_ptr<TestHome> home;
    std::unique_ptr<ScriptedDialogs> dialogs;

    QString file(const QString& name) const { return home->root() + u'/' + name; }

private slots:
    void init() {
        home = std::make_unique<TestHome>();
        dialogs = std::make_unique<ScriptedDialogs>();
    }
    void cleanup() {
        dialogs.reset();
        home.reset();
    }

    void selectLogColumnsOpensItsModalDialogue() {
        MainWindowHarness window;
        QString opened;
        QTimer::singleShot(0, [&opened] {
            QWidget* dialog = QApplication::activeModalWidget();
            opened = dialog ? dialog->objectName() : QString();
            if (dialog)
                dialog->findChild<QPushButton*>("cmdCancel")->click();
        });
        window.run("miSelectColumns");
        QCOMPARE(opened, QStringLiteral("frmSelectLogColumns"));
    }

    void aFrequencyChosenInTheConfigurationTakesEffectAtOnce() {
        MainWindowHarness window;
        QCOMPARE(window.main.pagerFrequency(), 75);
        QString opened;
        QTimer::singleShot(0, [&opened] {
            QWidget* dialog = QApplication::activeModalWidget();
            opened = dialog ? dialog->objectName() : QString();
            if (!dialog)
                return;
            auto* frequency = dialog->findChild<QComboBox*>("cboPagerFrequency");
            frequency->setCurrentIndex(0); // "1min"
            emit frequency->activated(0);  // as a click of the user picks it
            dialog->findChild<QPushButton*>("cmdCancel")->click();
        });
        window.run("miConfiguration");
        QCOMPARE(opened, QStringLiteral("frmConfiguration"));
        QCOMPARE(window.main.pagerFrequency(), 15);
    }

    void aNewLogTakesAFreeSlotAndIsNamedByIt() {
        MainWindowHarness window;
        window.run("miNewRaceLog");
        window.run("miNewRaceLog");
        QCOMPARE(window.station.raceLogs().slotCount(), 2);
        RaceLogWindow* first = window.slot(0);
        RaceLogWindow* second = window.slot(1);
        QVERIFY(first && second);
        QCOMPARE(first->document().slot(), 0);
        QCOMPARE(second->document().slot(), 1);
        QCOMPARE(first->windowTitle(), QStringLiteral("Race Log# 1"));
        QCOMPARE(second->windowTitle(), QStringLiteral("Race Log# 2"));
        QVERIFY(first->isVisible() && second->isVisible());
        QCOMPARE(window.children().size(), 2);
        QCOMPARE(second->grid->table().tableRows(), 2);
    }

    void closingSlot0FreesItForTheNextNewLog() {
        // The save dialog starts beside the program; Cancel writes nothing there or anywhere.
        const QDir programFolder(QCoreApplication::applicationDirPath());
        const QStringList logsBeside = programFolder.entryList({"*.trl"});
        MainWindowHarness window;
        window.run("miNewRaceLog");
        window.run("miNewRaceLog");
        RaceLogWindow* second = window.slot(1);
        window.activate(window.slot(0));
        window.slot(0)->grid->newRun();
        // A log never saved asks for a file; Cancel throws it away.
        dialogs->queueFile(QString());
        window.run("miClose");
        MainWindowHarness::settle();
        QCOMPARE(dialogs->fileRequests.size(), 1);
        QCOMPARE(dialogs->fileRequests[0].title, QStringLiteral("Save Race Log - Race Log# 1"));
        QCOMPARE(window.station.raceLogs().at(0), nullptr);
        QCOMPARE(window.slot(1), second);
        QCOMPARE(window.children().size(), 1);
        QVERIFY(dialogs->messages.isEmpty());
        QCOMPARE(programFolder.entryList({"*.trl"}), logsBeside);
        QVERIFY(QDir(home->root()).entryList({"*.trl"}).isEmpty());

        window.run("miNewRaceLog");
        QVERIFY(window.slot(0));
        QCOMPARE(window.slot(0)->windowTitle(), QStringLiteral("Race Log# 1"));
        QCOMPARE(window.station.raceLogs().slotCount(), 2);
        window.run("miNewRaceLog");
        QCOMPARE(window.station.raceLogs().slotCount(), 3);
        QCOMPARE(window.slot(2)->windowTitle(), QStringLiteral("Race Log# 3"));
    }

    // On a fresh profile a new log shows its whole side panel and ten runs, and that is the
    // size kept for the next one.
    void aNewLogOnAFreshProfileOpensAtAUsableSize() {
        MainWindowHarness window;
        window.main.resize(1200, 900);
        window.run("miNewRaceLog");
        RaceLogWindow* log = window.slot(0);
        QCoreApplication::processEvents();
        QVERIFY2(log->sidePanel->height() >= log->sidePanel->sizeHint().height(),
                 qPrintable(QString::number(log->sidePanel->height())));
        const int rowHeight = log->grid->verticalHeader()->defaultSectionSize();
        QVERIFY2(log->grid->viewport()->height() >= 10 * rowHeight,
                 qPrintable(QString::number(log->grid->viewport()->height())));
        QVERIFY(log->grid->viewport()->width() > 0);
        auto* frame = qobject_cast<QMdiSubWindow*>(log->parentWidget());
        const QSize opened = frame->size();
        dialogs->queueFile(QString());
        window.run("miClose");
        const QString key = "SOFTWARE\\Zorvane\\RaceLog\\ScreenSettings";
        QCOMPARE(Registry::get(key, "Width"), QString::number(opened.width()));
        QCOMPARE(Registry::get(key, "Height"), QString::number(opened.height()));
    }

    // With the side panel opened, a new log still shows the whole panel beside the runs.
    void aNewLogShowsItsWholeSidePanelBesideTheRuns() {
        MainWindowHarness window;
        window.main.resize(1200, 900);
        window.main.show();
        window.run("miNewRaceLog");
        RaceLogWindow* log = window.slot(0);
        QVERIFY(QTest::qWaitForWindowExposed(log));
        emit log->grid->panelToggleRequested();
        QCoreApplication::processEvents();
        QVERIFY(log->sidePanel->isVisible());
        QVERIFY(log->sidePanel->geometry().right() < log->width());
        for (const char* page : {"scrollSettings", "scrollPredict"}) {
            auto* area = log->sidePanel->findChild<QScrollArea*>(page);
            QVERIFY2(area, page);
            QCOMPARE(area->verticalScrollBar()->maximum(), 0);
        }
        QVERIFY2(log->sidePanel->height() >= log->sidePanel->sizeHint().height(),
                 qPrintable(QString::number(log->sidePanel->height())));
        QVERIFY2(log->grid->viewport()->width() >= 2 * log->grid->columnWidth(1),
                 qPrintable(QString::number(log->grid->viewport()->width())));
    }

    // A stored sliver grows to the least usable size, and a place outside the client area
    // comes back into it.
    void aStoredPlacementThatIsOfNoUseIsCorrected() {
        const QString key = "SOFTWARE\\Zorvane\\RaceLog\\ScreenSettings";
        Registry::set(key, "WindowState", "0");
        Registry::set(key, "Width", "120");
        Registry::set(key, "Height", "28");
        Registry::set(key, "Left", "5000");
        Registry::set(key, "Top", "-4000");
        MainWindowHarness window;
        window.main.resize(1000, 800);
        QCoreApplication::processEvents();
        window.run("miNewRaceLog");
        RaceLogWindow* log = window.slot(0);
        auto* frame = qobject_cast<QMdiSubWindow*>(log->parentWidget());
        QVERIFY(log->width() >= log->minimumWidth());
        QVERIFY(log->height() >= log->minimumHeight());
        QVERIFY(log->sidePanel->height() >= log->sidePanel->sizeHint().height());
        QVERIFY(window.main.mdiArea()->viewport()->rect().intersects(frame->geometry()));
    }

    void closingKeepsThePlacement() {
        MainWindowHarness window;
        window.run("miNewRaceLog");
        auto* frame = qobject_cast<QMdiSubWindow*>(window.slot(0)->parentWidget());
        frame->setGeometry(10, 20, 800, 500);
        dialogs->queueFile(QString());
        window.run("miClose");
        const QString key = "SOFTWARE\\Zorvane\\RaceLog\\ScreenSettings";
        QCOMPARE(Registry::get(key, "Width"), QStringLiteral("800"));
        QCOMPARE(Registry::get(key, "Top"), QStringLiteral("20"));
        MainWindowHarness::settle();

        window.run("miNewRaceLog");
        frame = qobject_cast<QMdiSubWindow*>(window.slot(0)->parentWidget());
        QCOMPARE(frame->geometry(), QRect(10, 20, 800, 500));
    }

    void closingASavedLogAsksAndNoKeepsTheFile() {
        const QString path = file("kept.trl");
        writeRaceLog(path, 2, "Pro");
        MainWindowHarness window;
        window.main.openFile(path);
        RaceLogWindow* log = window.slot(0);
        QVERIFY(log);
        RunEdits::editCell(log->document(), 1, 6, "1.5555");
        const QByteArray before = contents(path);

        dialogs->queueAnswer(Dialogs::Answer::No);
        window.run("miClose");
        MainWindowHarness::settle();
        QCOMPARE(dialogs->messages.size(), 1);
        QCOMPARE(dialogs->messages[0].text,
                 QStringLiteral("Do you want to save the information for:\r\n  Pro"));
        QCOMPARE(dialogs->messages[0].title, QStringLiteral("Save Race Log?"));
        QCOMPARE(contents(path), before);
        QVERIFY(window.children().isEmpty());
        QCOMPARE(window.station.raceLogs().at(0), nullptr);
    }

    void aFailedSaveOnCloseKeepsTheWindowOutOfTheList() {
        QVERIFY(QDir().mkpath(file("event")));
        const QString path = file("event/log.trl");
        writeRaceLog(path, 1, "");
        MainWindowHarness window;
        window.main.openFile(path);
        RaceLogWindow* log = window.slot(0);
        log->grid->newRun();
        QVERIFY(QDir(file("event")).removeRecursively());

        dialogs->queueAnswer(Dialogs::Answer::Yes);
        window.run("miClose");
        MainWindowHarness::settle();
        QCOMPARE(dialogs->messages.size(), 2);
        QCOMPARE(dialogs->messages[1].text, QStringLiteral("Unable to create log database!"));
        QCOMPARE(window.children().size(), 1);
        QVERIFY(log->isVisible());
        QCOMPARE(window.station.raceLogs().at(0), nullptr);

        // Save All no longer reaches it, and its slot goes to the next log.
        window.run("miSaveAll");
        QCOMPARE(dialogs->messages.size(), 2);
        QVERIFY(dialogs->fileRequests.isEmpty());
        window.run("miNewRaceLog");
        QVERIFY(window.slot(0) != log);
        QCOMPARE(window.slot(0)->windowTitle(), QStringLiteral("Race Log# 1"));
    }

    void openAsksForAFileAndLoadsIt() {
        QVERIFY(QDir().mkpath(file("logs")));
        const QString path = file("logs/2026-05-04 Brainerd.trl");
        writeRaceLog(path, 2, "Pro");
        Registry::set(PathKey, "0", file("start"));
        MainWindowHarness window;
        dialogs->queueFile(path);
        window.run("miOpenRaceLog");

        QCOMPARE(dialogs->fileRequests.size(), 1);
        const Dialogs::FileRequest& request = dialogs->fileRequests[0];
        QVERIFY(!request.save);
        QCOMPARE(request.title, QStringLiteral("Open Race Log"));
        QCOMPARE(request.filter,
                 QStringLiteral("Tarnwick Race Log Files (*.trl) |*.trl|All Files (*.*) |*.*|"));
        QCOMPARE(request.filterIndex, 1);
        QCOMPARE(request.initialFolder, file("start"));
        QCOMPARE(Registry::get(PathKey, "0"), file("logs"));

        RaceLogWindow* log = window.slot(0);
        QVERIFY(log);
        QVERIFY(log->isVisible());
        QCOMPARE(log->windowTitle(), QStringLiteral("Pro"));
        QCOMPARE(log->document().filePath(), path);
        QCOMPARE(log->document().fileTitle(), QStringLiteral("2026-05-04 Brainerd.trl"));
        QCOMPARE(log->sidePanel->fileNameField->text(), QStringLiteral("2026-05-04 Brainerd.trl"));
        QCOMPARE(log->sidePanel->fileNameField->toolTip(), path);
        QCOMPARE(log->sidePanel->pfField->text(), QStringLiteral("5.5"));
        QCOMPARE(log->sidePanel->referenceRunList->count(), 2);
        QCOMPARE(log->sidePanel->referenceRunList->currentIndex(), 1);
        RunTable& table = log->grid->table();
        QCOMPARE(table.cell(2, 6), QStringLiteral("1.0123"));
        QCOMPARE(table.look(2, 5).background, 0xC0FFFFu);
        QVERIFY(table.look(1, 5).background != 0xC0FFFFu);
        QVERIFY(dialogs->messages.isEmpty());
    }

    void cancelledOpenDoesNothing() {
        MainWindowHarness window;
        window.run("miOpenRaceLog");
        QCOMPARE(dialogs->fileRequests.size(), 1);
        QCOMPARE(dialogs->fileRequests[0].initialFolder, QString());
        QVERIFY(dialogs->messages.isEmpty());
        QVERIFY(window.children().isEmpty());
        QCOMPARE(Registry::get(PathKey, "0"), Registry::NoKeyValue);
    }

    void aMissingFileIsNotLoaded() {
        MainWindowHarness window;
        const QString path = file("missing.trl");
        window.main.openFile(path);
        QCOMPARE(dialogs->messages.size(), 1);
        QCOMPARE(dialogs->messages[0].text,
                 QStringLiteral("Not able to load Race Log...\r\n") + path);
        QCOMPARE(dialogs->messages[0].title, QStringLiteral("Tarnwick - Load Race Log"));
        QCOMPARE(dialogs->messages[0].icon, Dialogs::Icon::Information);
        QVERIFY(window.children().isEmpty());
        QCOMPARE(window.station.raceLogs().bySlot(), QList<RaceLog*>{nullptr});
        QVERIFY(!window.commands->loadRaceLog(QString(), "x.trl").loaded);
        QVERIFY(!window.commands->loadRaceLog(path, QString()).loaded);
        QVERIFY(!window.commands->loadRaceLog(home->root(), "folder").loaded);
        QVERIFY(window.children().isEmpty());
    }

    // A file that is no race log leaves no window behind, only the reason.
    void aFileThatIsNoRaceLogIsNotOpened() {
        const QString path = file("notes.trl");
        QFile text(path);
        QVERIFY(text.open(QIODevice::WriteOnly));
        text.write("Runs: 9.51, 9.49\n");
        text.close();
        MainWindowHarness window;
        window.main.openFile(path);
        QCOMPARE(dialogs->messages.size(), 1);
        QCOMPARE(dialogs->messages[0].text, QStringLiteral("Not able to load Race Log...\r\n") +
                                                path +
                                                QStringLiteral("\r\nThe file is not a race log."));
        QVERIFY(window.children().isEmpty());
        QCOMPARE(window.station.raceLogs().bySlot(), QList<RaceLog*>{nullptr});
    }

    // A file that lacks a column says which, and leaves no half-loaded window.
    void aFileWithoutAColumnNamesItAndOpensNothing() {
        const QString path = file("old.trl");
        writeRaceLog(path, 2, "Pro");
        QCOMPARE(SqliteShell::run(path, "ALTER TABLE Log DROP COLUMN mph1320").exitCode, 0);
        MainWindowHarness window;
        window.main.openFile(path);
        QCOMPARE(dialogs->messages.size(), 1);
        QCOMPARE(dialogs->messages[0].text,
                 QStringLiteral("Not able to load Race Log...\r\n") + path +
                     QStringLiteral("\r\nThe file has no column Log.mph1320."));
        QCOMPARE(dialogs->messages[0].title, QStringLiteral("Tarnwick - Load Race Log"));
        QVERIFY(window.children().isEmpty());
        QCOMPARE(window.station.raceLogs().bySlot(), QList<RaceLog*>{nullptr});
        // The next log takes the first slot again.
        window.run("miNewRaceLog");
        QVERIFY(window.slot(0));
    }

    // Values that could not be read are told once; the first save over the file keeps the
    // original beside it, later saves leave that copy alone.
    void aFileNotReadWholeIsKeptBeforeTheFirstSave() {
        const QString path = file("event.trl");
        writeRaceLog(path, 3, "Pro");
        QCOMPARE(
            SqliteShell::run(path, "UPDATE Log SET Time = 'noon' WHERE GeneralID = 2").exitCode, 0);
        const QByteArray original = contents(path);
        MainWindowHarness window;
        window.main.openFile(path);
        RaceLogWindow* log = window.slot(0);
        QVERIFY(log);
        QCOMPARE(dialogs->messages.size(), 1);
        QCOMPARE(dialogs->messages[0].text,
                 QStringLiteral("1 value(s) of event.trl could not be read and were left "
                                "empty.\r\nThe first save keeps the original file as "
                                "event.bak.trl."));
        QCOMPARE(dialogs->messages[0].icon, Dialogs::Icon::Exclamation);
        QCOMPARE(log->grid->table().tableRows(), 4);
        QCOMPARE(log->grid->table().cell(2, 1), QString());

        const QString backup = file("event.bak.trl");
        QVERIFY(!QFile::exists(backup));
        dialogs->queueAnswer(Dialogs::Answer::Yes);
        window.run("miSave");
        QCOMPARE(contents(backup), original);
        RaceLogData saved;
        QVERIFY(Database::loadLog(path, saved));
        QCOMPARE(saved.grid.tableRows(), 4);

        log->sidePanel->pfField->setText("7.5");
        dialogs->queueAnswer(Dialogs::Answer::Yes);
        window.run("miSave");
        QCOMPARE(contents(backup), original);
        QVERIFY(Database::loadLog(path, saved));
        QCOMPARE(saved.pf, QStringLiteral("7.5"));
        QCOMPARE(dialogs->messages.size(), 3); // the notice and two save questions
    }

    // A file read whole gets no copy.
    void aFileReadWholeIsSavedWithoutACopy() {
        const QString path = file("whole.trl");
        writeRaceLog(path, 2, "Pro");
        MainWindowHarness window;
        window.main.openFile(path);
        QVERIFY(dialogs->messages.isEmpty());
        dialogs->queueAnswer(Dialogs::Answer::Yes);
        window.run("miSave");
        QVERIFY(!QFile::exists(file("whole.bak.trl")));
    }

    // A log saved without a reference run opens with none selected and no complaint.
    void aLogWithoutAReferenceRunOpensWithNoneSelected() {
        const QString path = file("none.trl");
        writeRaceLog(path, 3, "Pro");
        QCOMPARE(SqliteShell::run(path, "UPDATE Properties SET RefRun = -1").exitCode, 0);
        MainWindowHarness window;
        window.main.openFile(path);
        QVERIFY(dialogs->messages.isEmpty());
        RaceLogWindow* log = window.slot(0);
        QCOMPARE(log->sidePanel->referenceRunList->count(), 3);
        QCOMPARE(log->sidePanel->referenceRunList->currentIndex(), -1);
        QCOMPARE(log->sidePanel->pfField->text(), QStringLiteral("5.5"));
        const RunTable& table = log->grid->table();
        for (int row = 1; row <= 3; ++row)
            QVERIFY(!table.look(row, 0).bold);
    }

    // A name typed without an extension is saved as a race log file.
    void aBareNameIsSavedWithTheRaceLogExtension() {
        MainWindowHarness window;
        window.run("miNewRaceLog");
        dialogs->queueFile(file("friday"));
        window.run("miSave");
        QVERIFY(QFile::exists(file("friday.trl")));
        QVERIFY(!QFile::exists(file("friday")));
        QCOMPARE(window.slot(0)->document().filePath(), file("friday.trl"));
        QCOMPARE(window.slot(0)->document().fileTitle(), QStringLiteral("friday.trl"));
        RaceLogData saved;
        QVERIFY(Database::loadLog(file("friday.trl"), saved));
    }

    void saveActsOnTheActiveLog() {
        MainWindowHarness window;
        window.run("miSave");
        window.run("miSaveAs");
        QVERIFY(dialogs->messages.isEmpty());
        QVERIFY(dialogs->fileRequests.isEmpty());

        const QString path = file("active.trl");
        writeRaceLog(path, 1, "Pro");
        window.main.openFile(path);
        RaceLogWindow* log = window.slot(0);
        log->sidePanel->pfField->setText("6.25");
        dialogs->queueAnswer(Dialogs::Answer::Yes);
        window.run("miSave");
        QCOMPARE(dialogs->messages.size(), 1);
        RaceLogData saved;
        QVERIFY(Database::loadLog(path, saved));
        QCOMPARE(saved.pf, QStringLiteral("6.25"));

        // Save As asks for a file even when the log has one.
        const QString copy = file("copy.trl");
        dialogs->queueFile(copy);
        window.run("miSaveAs");
        QCOMPARE(dialogs->fileRequests.size(), 1);
        QCOMPARE(dialogs->fileRequests[0].title, QStringLiteral("Save Race Log - Pro"));
        QCOMPARE(log->document().filePath(), copy);
        QVERIFY(Database::loadLog(copy, saved));
    }

    void saveAllSavesEveryOpenLog() {
        const QString first = file("first.trl");
        writeRaceLog(first, 1, "First");
        MainWindowHarness window;
        window.main.openFile(first);
        window.run("miNewRaceLog");
        window.slot(0)->grid->table().setCell(1, 12, "9.8765");
        window.slot(1)->grid->table().setCell(1, 12, "10.125");
        const QString second = file("second.trl");
        dialogs->queueAnswer(Dialogs::Answer::Yes);
        dialogs->queueFile(second);

        window.run("miSaveAll");
        QCOMPARE(dialogs->messages.size(), 1);
        QCOMPARE(dialogs->messages[0].text,
                 QStringLiteral("Do you want to save the information for:\r\n  First"));
        QCOMPARE(dialogs->fileRequests.size(), 1);
        QCOMPARE(dialogs->fileRequests[0].title, QStringLiteral("Save Race Log - Race Log# 2"));
        RaceLogData saved;
        QVERIFY(Database::loadLog(first, saved));
        QCOMPARE(saved.grid.cell(1, 12), QStringLiteral("9.8765"));
        RaceLogData other;
        QVERIFY(Database::loadLog(second, other));
        QCOMPARE(other.grid.cell(1, 12), QStringLiteral("10.1250"));
    }

    void closeAllClosesEveryWindowWithItsQuestions() {
        MainWindowHarness window;
        window.run("miNewRaceLog");
        window.run("miNewRaceLog");
        for (int slot : {0, 1})
            window.slot(slot)->grid->newRun();
        dialogs->queueFile(QString());
        dialogs->queueFile(QString());
        window.run("miCloseAll");
        MainWindowHarness::settle();
        QCOMPARE(dialogs->fileRequests.size(), 2);
        QVERIFY(window.children().isEmpty());
        QCOMPARE(window.station.raceLogs().bySlot(), (QList<RaceLog*>{nullptr, nullptr}));
    }

    void printAndPdfWithNoWindowSayTheyCannot() {
        MainWindowHarness window;
        window.run("miPrint");
        window.run("miPDFExport");
        QCOMPARE(dialogs->messages.size(), 2);
        for (const Dialogs::Message& message : dialogs->messages) {
            QCOMPARE(message.text, PrintMessage);
            QCOMPARE(message.title, QStringLiteral("Tarnwick - Print"));
        }
    }

    void printReachesAWindowThatCanPrint() {
        MainWindowHarness window;
        auto* printable = new Printable;
        window.main.mdiArea()->addSubWindow(printable)->show();
        window.main.mdiArea()->setActiveSubWindow(
            qobject_cast<QMdiSubWindow*>(printable->parentWidget()));
        window.run("miPrint");
        QCOMPARE(printable->printed, 1);
        QCOMPARE(printable->saved, 0);
        window.run("miPDFExport");
        QCOMPARE(printable->saved, 1);
        QVERIFY(dialogs->messages.isEmpty());
    }

    void aWindowThatCannotPrintSaysSo() {
        MainWindowHarness window;
        auto* plain = new QWidget;
        window.main.mdiArea()->addSubWindow(plain)->show();
        window.main.mdiArea()->setActiveSubWindow(
            qobject_cast<QMdiSubWindow*>(plain->parentWidget()));
        window.run("miPrint");
        window.run("miPDFExport");
        QCOMPARE(dialogs->messages.size(), 2);
        QCOMPARE(dialogs->messages.last().text, PrintMessage);
    }

    // The spreadsheet export writes the race log in front, through the save dialogue, into a
    // workbook made from the shipped template, and remembers the folder.
    void excelExportWritesTheActiveLog() {
        MainWindowHarness window;
        window.run("miNewRaceLog");
        RaceLogWindow* log = window.slot(0);
        QVERIFY(log);
        log->document().runs().setCell(1, 12, "7.912");
        QVERIFY(QDir().mkpath(file("sheets")));
        dialogs->queueFile(file("sheets/event"));
        window.run("miExcelExport");
        QCOMPARE(dialogs->fileRequests.size(), 1);
        const Dialogs::FileRequest& request = dialogs->fileRequests.first();
        QCOMPARE(request.title, QStringLiteral("Save Excel File"));
        QCOMPARE(request.fileName,
                 QDate::currentDate().toString(QStringLiteral("yyyy-MM-dd")) + "log.xlsx");
        QCOMPARE(request.filter,
                 QStringLiteral("Microsoft Excel Files (*.xlsx) |*.xlsx|All Files (*.*) |*.*|"));
        QVERIFY(request.save);
        QVERIFY2(dialogs->messages.isEmpty(),
                 qPrintable(dialogs->messages.isEmpty() ? "" : dialogs->messages.first().text));
        QVERIFY(QFile::exists(file("sheets/event.xlsx")));
        QCOMPARE(Registry::get(SettingKeys::FileDialogFolder), file("sheets"));

        // Cancel ends the command without a word; the next dialog starts in the folder.
        dialogs->queueFile(QString());
        window.run("miExcelExport");
        QCOMPARE(dialogs->fileRequests.last().initialFolder, file("sheets"));
        QVERIFY(dialogs->messages.isEmpty());
    }

    void excelExportWithNoLogSaysItCannot() {
        MainWindowHarness window;
        window.run("miExcelExport");
        QVERIFY(dialogs->fileRequests.isEmpty());
        QCOMPARE(dialogs->messages.size(), 1);
        QCOMPARE(dialogs->messages.first().text, PrintMessage);
    }

    void eachRaceLogTypeGetsANewTool() {
        Registry::set(DefaultsKey + "Bracket\\", "PF", "5.5");
        Registry::set(DefaultsKey + "Bracket\\", "CarNumber", "7X");
        Registry::set(DefaultsKey + "Super Pro\\", "PF", "2");
        MainWindowHarness window;
        window.commands->createRaceLogListing();
        auto* band = window.main.findChild<QMenu*>("RaceLogType");
        QVERIFY(band);
        QStringList names, captions;
        for (QAction* tool : band->actions()) {
            names << tool->objectName();
            captions << tool->text();
        }
        QCOMPARE(names, (QStringList{"newBracket", "newSuper Pro"}));
        QCOMPARE(captions, (QStringList{"Bracket", "Super Pro"}));
        QCOMPARE(band->actions()[0]->data().toInt(), 10000);
        QCOMPARE(band->actions()[1]->data().toInt(), 10001);

        QAction* newRaceLog = window.tool("miNewRaceLog");
        QCOMPARE(newRaceLog->menu(), band);
        QVERIFY(window.main.findChild<QMenu*>("miFile")->actions().contains(newRaceLog));
        auto* bar = window.main.findChild<QToolBar*>("tbMain");
        auto* button = qobject_cast<QToolButton*>(bar->widgetForAction(newRaceLog));
        QCOMPARE(button->popupMode(), QToolButton::InstantPopup);

        band->actions()[0]->trigger();
        RaceLogWindow* log = window.slot(0);
        QVERIFY(log);
        QCOMPARE(log->raceLogType, QStringLiteral("Bracket"));
        QCOMPARE(log->windowTitle(), QStringLiteral("Bracket"));
        QCOMPARE(log->sidePanel->pfField->text(), QStringLiteral("5.5"));
        QCOMPARE(log->sidePanel->carNumberField->text(), QStringLiteral("7X"));

        window.main.dispatch("newSuper Pro");
        QCOMPARE(window.slot(1)->raceLogType, QStringLiteral("Super Pro"));
        QCOMPARE(window.slot(1)->sidePanel->pfField->text(), QStringLiteral("2"));
    }

    void removingATypeLeavesAnOpenLogOfThatTypeAsItIs() {
        Registry::set("SOFTWARE\\Zorvane\\Main\\Defaults\\Red\\", "PF", "7");
        MainWindowHarness window;
        window.main.dispatch("newRed");
        RaceLogWindow* log = window.slot(0);
        QVERIFY(log);
        QCOMPARE(log->sidePanel->pfField->text(), QStringLiteral("7"));

        QTimer::singleShot(0, [] {
            QWidget* dialog = QApplication::activeModalWidget();
            if (!dialog)
                return;
            auto* types = dialog->findChild<QComboBox*>("cboPageIdentifier");
            types->setCurrentIndex(types->findText("Red"));
            emit types->activated(types->currentIndex());
            dialog->findChild<QPushButton*>("cmdRemoveSetting")->click();
            dialog->findChild<QPushButton*>("cmdCancel")->click();
        });
        window.run("miConfiguration");

        QStringList types;
        Registry::enumSubKeys(Registry::HKEY_CURRENT_USER, "SOFTWARE\\Zorvane\\Main\\Defaults\\",
                              types);
        QVERIFY(!types.contains("Red"));
        QCOMPARE(log->raceLogType, QStringLiteral("Red"));
        QCOMPARE(log->windowTitle(), QStringLiteral("Red"));
        QCOMPARE(log->sidePanel->pfField->text(), QStringLiteral("7"));
        QCOMPARE(log->sidePanel->pageIdentifierField->text(), QStringLiteral("Red"));
    }

    void withoutTypesNewRaceLogStaysACommand() {
        MainWindowHarness window;
        window.commands->createRaceLogListing();
        QVERIFY(window.main.findChild<QMenu*>("RaceLogType")->actions().isEmpty());
        QCOMPARE(window.tool("miNewRaceLog")->menu(), nullptr);
        window.run("miNewRaceLog");
        QVERIFY(window.slot(0));
        QCOMPARE(window.slot(0)->raceLogType, QString());
    }
};

QTEST_MAIN(TestRaceLogCommands)
#include "tst_racelogcommands.moc"
