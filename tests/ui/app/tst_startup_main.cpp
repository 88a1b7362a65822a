#include "common/OtherInstance.h"
#include "common/TestHome.h"
#include "core/CommandTable.h"
#include "core/Registry.h"
#include "core/ScriptedDialogs.h"
#include "core/SettingKeys.h"
#include "crew/CrewClient.h"
#include "feed/WeatherStation.h"
#include "ui/app/Startup.h"
#include "ui/shell/MainWindow.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <memory>

using Dialogs::Answer;
using OtherInstance::Process;

namespace {

const QString displayQuestion =
    QStringLiteral("A previous instance of Tarnwick has been detected.\r\n"
                   "Tarnwick is being configured with display options!");

bool saidLoadFailure(const ScriptedDialogs& dialogs, const QString& path) {
    for (const Dialogs::Message& message : dialogs.messages) {
        if (message.title == u"Tarnwick - Load Race Log" &&
            message.text == QStringLiteral("Not able to load Race Log...\r\n") + path)
            return true;
    }
    return false;
}

bool saidTitle(const ScriptedDialogs& dialogs, const QString& title) {
    for (const Dialogs::Message& message : dialogs.messages) {
        if (message.title == title)
            return true;
    }
    return false;
}

// The crew view turned on, on a port of its own on this computer only.
quint16 crewViewOnAFreePort() {
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost, 0);
    Registry::set(SettingKeys::CrewEnabled, QStringLiteral("1"));
    Registry::set(SettingKeys::CrewAddress, QStringLiteral("127.0.0.1"));
    Registry::set(SettingKeys::CrewPort, QString::number(probe.serverPort()));
    Registry::set(SettingKeys::CrewCode, QStringLiteral("731904"));
    return probe.serverPort();
}

bool splashShown() {
    for (const QWidget* widget : QApplication::topLevelWidgets()) {
        if (widget->objectName() == u"frmSplash")
            return true;
    }
    return false;
}

} // namespace

class TestStartupMain : public QObject {
    Q_OBJECT
private:
    std::unique_ptr<TestHome> home;
    std::unique_ptr<ScriptedDialogs> dialogs;
    // The program folder of the start under test: empty, or holding a stand-in relay that
    // notes each start in a file beside it.
    QTemporaryDir bareFolder;
    QTemporaryDir relayFolder;

    QString relayStarts() const { return relayFolder.filePath("oskerby.starts"); }

    std::unique_ptr<Startup> startup(const QStringList& arguments, const QString& folder) {
        return std::make_unique<Startup>(QStringList{"tarnwick"} + arguments, folder);
    }

private slots:
    void initTestCase() {
        QFile relay(relayFolder.filePath("oskerby"));
        QVERIFY(relay.open(QIODevice::WriteOnly));
        relay.write("#!/bin/sh\necho started >> \"$(dirname \"$0\")/oskerby.starts\"\n");
        relay.close();
        relay.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    void init() {
        home = std::make_unique<TestHome>();
        dialogs = std::make_unique<ScriptedDialogs>();
        QFile::remove(relayStarts());
    }

    void cleanup() {
        dialogs.reset();
        home.reset();
    }

    void theFirstProcessIsTheMainInstance() {
        auto start = startup({}, relayFolder.path());
        QElapsedTimer clock;
        clock.start();
        QCOMPARE(start->run(), std::nullopt);
        // The splash stood for its second and is gone.
        QVERIFY(clock.elapsed() >= 1000);
        QVERIFY(!splashShown());
        QVERIFY(start->mainWindow());
        QVERIFY(!start->weatherStation()->isDisplay());
        QVERIFY(start->mainWindow()->isVisible());
        QVERIFY(!saidTitle(*dialogs, "Tarnwick"));
        // A main instance never starts the relay.
        QTest::qWait(100);
        QVERIFY(!QFile::exists(relayStarts()));
    }

    // Every command the program binds by name is a tool of the table, and every tool of the
    // table that runs a command has one: none is bound to a misspelt name, none left without.
    void everyCommandIsAToolOfTheTable() {
        auto start = startup({}, bareFolder.path());
        QCOMPARE(start->run(), std::nullopt);
        const QStringList bound = start->mainWindow()->commandNames();
        for (const QString& name : bound)
            QVERIFY2(CommandTable::findTool(name), qPrintable(name));
        for (const CommandTable::Tool& tool : CommandTable::tools()) {
            if (tool.kind == CommandTable::ToolKind::Command ||
                tool.kind == CommandTable::ToolKind::Toggle)
                QVERIFY2(bound.contains(tool.name), qPrintable(tool.name));
        }
    }

    void theMainInstanceServesTheCrewViewAndToolsOpensItsDialog() {
        const quint16 port = crewViewOnAFreePort();
        auto start = startup({}, bareFolder.path());
        QCOMPARE(start->run(), std::nullopt);
        QCOMPARE(crewGet(port, QStringLiteral("/?code=731904")).status, 200);

        QString opened;
        QTimer::singleShot(0, [&opened] {
            QWidget* dialog = QApplication::activeModalWidget();
            opened = dialog ? dialog->objectName() : QString();
            if (dialog)
                dialog->close();
        });
        start->mainWindow()->dispatch(QStringLiteral("miCrewView"));
        QCOMPARE(opened, QStringLiteral("frmCrewView"));
    }

    void theCommandLineIsOnePath() {
        auto start = startup({"/races/Car", "12", "Bristol.trl"}, bareFolder.path());
        QCOMPARE(start->run(), std::nullopt);
        QVERIFY(saidLoadFailure(*dialogs, "/races/Car 12 Bristol.trl"));
    }

    void theMainInstanceOpensAHandedPathInFront() {
        auto start = startup({}, bareFolder.path());
        QCOMPARE(start->run(), std::nullopt);
        start->mainWindow()->showMinimized();
        Process later({OtherInstance::handOver, "/races/handed over.trl"});
        QTRY_VERIFY_WITH_TIMEOUT(saidLoadFailure(*dialogs, "/races/handed over.trl"), 5000);
        QVERIFY(!start->mainWindow()->isMinimized());
        QTRY_COMPARE_WITH_TIMEOUT(later.state(), QProcess::NotRunning, 5000);
        QCOMPARE(later.exitCode(), 0);
    }

    // A maximised window minimised before the hand-over comes back maximised.
    void aHandedPathRestoresTheWindowAsItWasBefore() {
        auto start = startup({}, bareFolder.path());
        QCOMPARE(start->run(), std::nullopt);
        start->mainWindow()->showMaximized();
        QTRY_VERIFY(start->mainWindow()->isMaximized());
        start->mainWindow()->showMinimized();
        QTRY_VERIFY(start->mainWindow()->isMinimized());
        Process later({OtherInstance::handOver, "/races/restored.trl"});
        QTRY_VERIFY_WITH_TIMEOUT(saidLoadFailure(*dialogs, "/races/restored.trl"), 5000);
        QVERIFY(!start->mainWindow()->isMinimized());
        QVERIFY(start->mainWindow()->isMaximized());
    }

    void theMainInstanceTakesNoPathsOnceItsWindowHasClosed() {
        auto start = startup({}, bareFolder.path());
        QCOMPARE(start->run(), std::nullopt);
        start->mainWindow()->close();
        QVERIFY(!start->mainWindow()->isVisible());
        Process later({OtherInstance::handOver, "/races/after closing.trl"});
        QTRY_COMPARE_WITH_TIMEOUT(later.state(), QProcess::NotRunning, 5000);
        QCOMPARE(later.exitCode(), 1);
        QVERIFY(!saidLoadFailure(*dialogs, "/races/after closing.trl"));
    }

    void aLaterStartWithAPathHandsItOverAndEnds() {
        Process mainInstance({OtherInstance::holdMain});
        QVERIFY(mainInstance.holding());
        auto start = startup({"/races/second.trl"}, relayFolder.path());
        QCOMPARE(start->run(), 0);
        QVERIFY(!start->mainWindow());
        QVERIFY(dialogs->messages.isEmpty());
        QTRY_VERIFY_WITH_TIMEOUT(mainInstance.received().contains("RECEIVED: /races/second.trl\n"),
                                 5000);
    }

    // A relative path is resolved in the later start's working folder, where the user named
    // the file, not in the main instance's.
    void aRelativePathIsHandedOverInFull() {
        Process mainInstance({OtherInstance::holdMain});
        QVERIFY(mainInstance.holding());
        QTemporaryDir workingFolder;
        QFile log(workingFolder.filePath("friday.trl"));
        QVERIFY(log.open(QIODevice::WriteOnly));
        log.close();
        const QString before = QDir::currentPath();
        QVERIFY(QDir::setCurrent(workingFolder.path()));
        auto start = startup({"friday.trl"}, relayFolder.path());
        const std::optional<int> ended = start->run();
        QDir::setCurrent(before);
        QCOMPARE(ended, 0);
        QTRY_VERIFY_WITH_TIMEOUT(mainInstance.received().contains(
                                     "RECEIVED: " + workingFolder.filePath("friday.trl") + "\n"),
                                 5000);
    }

    void aLaterStartWithAPathWhileOnlyADisplayRunsLosesIt() {
        Process displayInstance({OtherInstance::holdDisplay});
        QVERIFY(displayInstance.holding());
        auto start = startup({"/races/lost.trl"}, relayFolder.path());
        QCOMPARE(start->run(), 0);
        QVERIFY(!start->mainWindow());
        QVERIFY(dialogs->messages.isEmpty());
    }

    void aLaterStartWithoutAPathAsksAndCancelEndsIt() {
        Process mainInstance({OtherInstance::holdMain});
        QVERIFY(mainInstance.holding());
        dialogs->queueAnswer(Answer::Cancel);
        auto start = startup({}, relayFolder.path());
        QCOMPARE(start->run(), 0);
        QCOMPARE(dialogs->messages.size(), 1);
        const Dialogs::Message& question = dialogs->messages.at(0);
        QCOMPARE(question.text, displayQuestion);
        QCOMPARE(question.title, QString("Tarnwick"));
        QCOMPARE(question.icon, Dialogs::Icon::Information);
        QCOMPARE(question.buttons, Dialogs::Buttons::OkCancel);
        QVERIFY(!start->mainWindow());
        QVERIFY(!start->weatherStation());
        QVERIFY(!QFile::exists(Registry::storeFilePath()));
        QVERIFY(!QFile::exists(relayStarts()));
    }

    void okMakesADisplayInstanceThatStartsTheRelay() {
        Process mainInstance({OtherInstance::holdMain});
        QVERIFY(mainInstance.holding());
        dialogs->queueAnswer(Answer::Ok);
        auto start = startup({}, relayFolder.path());
        QCOMPARE(start->run(), std::nullopt);
        QVERIFY(start->weatherStation()->isDisplay());
        QCOMPARE(dialogs->messages.at(0).text, displayQuestion);
        QVERIFY(start->mainWindow()->isVisible());
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(relayStarts()), 5000);
        // One monitor: the window stays where its load put it.
        QVERIFY(!start->mainWindow()->isMaximized());
        QVERIFY(!saidTitle(*dialogs, "Tarnwick - Startup"));
    }

    void aDisplayInstanceTakesNoPaths() {
        Process mainInstance({OtherInstance::holdMain});
        QVERIFY(mainInstance.holding());
        dialogs->queueAnswer(Answer::Ok);
        auto start = startup({}, relayFolder.path());
        QCOMPARE(start->run(), std::nullopt);
        mainInstance.kill();
        InstanceChannel later;
        QVERIFY(later.anotherProcessRunning());
        QVERIFY(!InstanceChannel::handOver("/races/nobody.trl"));
    }

    // The main instance has the phones: a display instance beside it does not even try. A
    // display whose main instance has ended leaves them to this one.
    void aDisplayInstanceServesTheCrewViewOnlyWithoutAMainInstance_data() {
        QTest::addColumn<QString>("other");
        QTest::addColumn<int>("status");
        QTest::newRow("beside a main instance") << OtherInstance::holdMain << 0;
        QTest::newRow("beside another display") << OtherInstance::holdDisplay << 200;
    }
    void aDisplayInstanceServesTheCrewViewOnlyWithoutAMainInstance() {
        QFETCH(QString, other);
        QFETCH(int, status);
        const quint16 port = crewViewOnAFreePort();
        Process otherProcess({other});
        QVERIFY(otherProcess.holding());
        dialogs->queueAnswer(Answer::Ok);
        auto start = startup({}, relayFolder.path());
        QCOMPARE(start->run(), std::nullopt);
        QVERIFY(start->weatherStation()->isDisplay());
        QCOMPARE(crewGet(port, QStringLiteral("/?code=731904")).status, status);
    }

    void withoutTheRelayADisplayInstanceEndsInSilence() {
        Process mainInstance({OtherInstance::holdMain});
        QVERIFY(mainInstance.holding());
        dialogs->queueAnswer(Answer::Ok);
        auto start = startup({}, bareFolder.path());
        QCOMPARE(start->run(), 0);
        // It ends after the main window was shown.
        QVERIFY(start->mainWindow());
        QVERIFY(start->mainWindow()->isVisible());
        QVERIFY(!saidTitle(*dialogs, "Tarnwick - Startup"));
    }
};

int main(int argc, char** argv) {
    if (const auto exitCode = OtherInstance::PlayRole(argc, argv))
        return *exitCode;
    QApplication app(argc, argv);
    TestStartupMain test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_startup_main.moc"
