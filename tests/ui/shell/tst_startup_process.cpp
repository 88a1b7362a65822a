#include "common/TestHome.h"
#include "common/TestRelay.h"
#include "core/InstanceChannel.h"
#include "core/Registry.h"
#include "tools/ToolProcess.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <signal.h>
#include <vector>

namespace {

const QString questionLine =
    QStringLiteral("MESSAGE: Tarnwick | A previous instance of Tarnwick has been detected.\\n"
                   "Tarnwick is being configured with display options!");
const QString loadFailure = QStringLiteral("Not able to load Race Log...\\n");
const QString portSettingsKey = QStringLiteral("SOFTWARE\\Zorvane\\SerialPort");

// One start of the real program, answering its boxes from a script and printing them.
class Tarnwick {
public:
    Tarnwick(const QString& folder, const QStringList& arguments, const QString& answers,
             const QProcessEnvironment& extra = {}) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("QT_QPA_PLATFORM", "offscreen");
        environment.insert("TARNWICK_SCRIPTED_DIALOGS", answers);
        environment.insert(extra);
        process.setProcessEnvironment(environment);
        process.start(folder + "/tarnwick", arguments);
    }
    ~Tarnwick() { kill(); }
    Tarnwick(const Tarnwick&) = delete;
    Tarnwick& operator=(const Tarnwick&) = delete;

    QString output() {
        printed += process.readAllStandardOutput();
        return QString::fromUtf8(printed);
    }
    bool running() const { return process.state() != QProcess::NotRunning; }
    int exitCode() const { return process.exitCode(); }
    void kill() {
        if (running()) {
            process.kill();
            process.waitForFinished(5000);
        }
    }

private:
    QProcess process;
    QByteArray printed;
};

// Established connections to a port of this machine, as the kernel lists them.
int connectionsTo(quint16 port) {
    QFile table(QStringLiteral("/proc/net/tcp"));
    if (!table.open(QIODevice::ReadOnly))
        return -1;
    const QByteArray remote = ':' + QByteArray::number(port, 16).toUpper().rightJustified(4, '0');
    int count = 0;
    for (const QByteArray& line : table.readAll().split('\n')) {
        const QList<QByteArray> fields = line.simplified().split(' ');
        // sl local_address rem_address st ...; 01 is ESTABLISHED
        if (fields.size() > 3 && fields[2].endsWith(remote) && fields[3] == "01")
            ++count;
    }
    return count;
}

// The process ids of the relays started for a port, found by their command lines.
QList<int> relaysOnPort(quint16 port) {
    QList<int> pids;
    const QStringList processes = QDir(QStringLiteral("/proc")).entryList(QDir::Dirs);
    for (const QString& pid : processes) {
        QFile commandLine(QStringLiteral("/proc/%1/cmdline").arg(pid));
        if (!commandLine.open(QIODevice::ReadOnly))
            continue;
        const QList<QByteArray> words = commandLine.readAll().split('\0');
        if (!words.isEmpty() && words[0].endsWith("/oskerby") &&
            words.contains(QByteArray::number(port)))
            pids << pid.toInt();
    }
    return pids;
}

} // namespace

class TestStartupProcess : public QObject {
    Q_OBJECT
private:
    // Copies of the program: one beside a stand-in relay that notes the process id of each
    // start and then waits, one alone.
    QTemporaryDir relayFolder;
    QTemporaryDir bareFolder;
    std::unique_ptr<TestHome> home;
    std::vector<std::unique_ptr<Tarnwick>> started;

    QString relayStarts() const { return relayFolder.filePath("oskerby.pids"); }
    QStringList relayPids() const {
        QFile file(relayStarts());
        if (!file.open(QIODevice::ReadOnly))
            return {};
        return QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
    }
    void stopRelays() {
        for (const QString& pid : relayPids())
            ::kill(pid.toInt(), SIGKILL);
        QFile::remove(relayStarts());
    }

    Tarnwick& start(const QString& folder, const QStringList& arguments = {},
                    const QString& answers = {}) {
        started.push_back(std::make_unique<Tarnwick>(folder, arguments, answers));
        return *started.back();
    }
    // Whether a main instance takes paths; it gets this one as a race log to open.
    static bool mainInstanceListens() { return InstanceChannel::handOver("probe"); }
    // The settings file as it stands, or a mark that there is none.
    static QByteArray settingsStore() {
        QFile store(Registry::storeFilePath());
        return store.open(QIODevice::ReadOnly) ? store.readAll() : QByteArray("(no file)");
    }
    static bool copyProgram(const QString& folder) {
        const QString copy = folder + "/tarnwick";
        return QFile::copy(programFolder() + "/tarnwick", copy) &&
               QFile::setPermissions(copy, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

private slots:
    void initTestCase() {
        QVERIFY(QFile::exists(programFolder() + "/tarnwick"));
        QVERIFY(copyProgram(relayFolder.path()));
        QVERIFY(copyProgram(bareFolder.path()));
        QFile relay(relayFolder.filePath("oskerby"));
        QVERIFY(relay.open(QIODevice::WriteOnly));
        relay.write("#!/bin/sh\n"
                    "echo $$ >> \"$(dirname \"$0\")/oskerby.pids\"\n"
                    "exec sleep 60 </dev/null >/dev/null 2>&1\n");
        relay.close();
        QVERIFY(relay.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    }

    void init() { home = std::make_unique<TestHome>(); }

    void cleanup() {
        started.clear();
        stopRelays();
        home.reset();
    }

    void aFirstStartOpensItsCommandLine() {
        Tarnwick& first = start(programFolder(), {home->root() + "/Race", "Log.trl"});
        QTRY_VERIFY_WITH_TIMEOUT(
            first.output().contains(loadFailure + home->root() + "/Race Log.trl"), 10000);
        QVERIFY(!first.output().contains(questionLine));
        QVERIFY(first.running());
    }

    // The demo run opens what it is told to, takes its picture and ends by itself.
    void aDemoRunOpensItsCommandsAndTakesItsPicture() {
        QProcessEnvironment demo;
        demo.insert("TARNWICK_DEMO_COMMANDS", "miNewRaceLog, miNewRaceLog");
        demo.insert("TARNWICK_SCREENSHOT", home->root() + "/demo.png");
        demo.insert("TARNWICK_QUIT_AFTER_MS", "2500");
        started.push_back(std::make_unique<Tarnwick>(programFolder(), QStringList(), "", demo));
        Tarnwick& run = *started.back();
        QTRY_VERIFY_WITH_TIMEOUT(!run.running(), 20000);
        QCOMPARE(run.exitCode(), 0);
        QImage picture(home->root() + "/demo.png");
        QVERIFY(!picture.isNull());
        QVERIFY(picture.width() > 300 && picture.height() > 200);
        // Each race log that opened left its place in the store when the program closed it.
        QVERIFY(!Registry::get("SOFTWARE\\Zorvane\\RaceLog\\ScreenSettings", "Width").isEmpty());
        QVERIFY2(!run.output().contains("Race Log"), qPrintable(run.output()));
    }

    void aSecondStartWithAPathOpensItInTheMainInstance() {
        Tarnwick& mainInstance = start(programFolder());
        QTRY_VERIFY_WITH_TIMEOUT(mainInstanceListens(), 10000);
        const QString path = home->root() + "/Car 12.trl";
        Tarnwick& second = start(relayFolder.path(), {path});
        QTRY_VERIFY_WITH_TIMEOUT(!second.running(), 10000);
        QCOMPARE(second.exitCode(), 0);
        QVERIFY(!second.output().contains("MESSAGE:"));
        QTRY_VERIFY_WITH_TIMEOUT(mainInstance.output().contains(loadFailure + path), 5000);
        QVERIFY(relayPids().isEmpty());
    }

    void aSecondStartWithAPathWhileOnlyADisplayRunsLosesIt() {
        Tarnwick& mainInstance = start(programFolder());
        QTRY_VERIFY_WITH_TIMEOUT(mainInstanceListens(), 10000);
        Tarnwick& display = start(relayFolder.path(), {}, "Ok");
        QTRY_COMPARE_WITH_TIMEOUT(relayPids().size(), 1, 10000);
        mainInstance.kill();
        const QString path = home->root() + "/lost.trl";
        Tarnwick& second = start(relayFolder.path(), {path});
        QTRY_VERIFY_WITH_TIMEOUT(!second.running(), 10000);
        QCOMPARE(second.exitCode(), 0);
        QVERIFY(!second.output().contains("MESSAGE:"));
        QTest::qWait(300);
        QVERIFY(!display.output().contains(path));
        QVERIFY(display.running());
    }

    void aSecondStartWithoutAPathAsksAndCancelEndsIt() {
        start(programFolder());
        QTRY_VERIFY_WITH_TIMEOUT(mainInstanceListens(), 10000);
        const QByteArray before = settingsStore();
        Tarnwick& second = start(relayFolder.path(), {}, "Cancel");
        QTRY_VERIFY_WITH_TIMEOUT(!second.running(), 10000);
        QCOMPARE(second.exitCode(), 0);
        QCOMPARE(second.output(), questionLine + "\n");
        QCOMPARE(settingsStore(), before);
        QVERIFY(relayPids().isEmpty());
    }

    void aThirdProcessAsksTooAndBecomesAnotherDisplay() {
        start(programFolder());
        QTRY_VERIFY_WITH_TIMEOUT(mainInstanceListens(), 10000);
        Tarnwick& second = start(relayFolder.path(), {}, "Ok");
        QTRY_COMPARE_WITH_TIMEOUT(relayPids().size(), 1, 10000);
        Tarnwick& third = start(relayFolder.path(), {}, "Ok");
        QTRY_COMPARE_WITH_TIMEOUT(relayPids().size(), 2, 10000);
        QVERIFY(second.output().startsWith(questionLine + "\n"));
        QVERIFY(third.output().startsWith(questionLine + "\n"));
        QVERIFY(second.running());
        QVERIFY(third.running());
    }

    void aDisplayWithNoHostStoredConnectsToLocalhost5555_data() {
        QTest::addColumn<QString>("stored");
        QTest::newRow("nothing stored") << QString();
        QTest::newRow("None stored") << QStringLiteral("None");
    }
    void aDisplayWithNoHostStoredConnectsToLocalhost5555() {
        QFETCH(QString, stored);
        QTcpServer relay;
        if (!relay.listen(QHostAddress::LocalHost, 5555))
            QSKIP("Port 5555 on 127.0.0.1 is taken by another program");
        if (!stored.isEmpty()) {
            Registry::set(portSettingsKey, "6", stored);
            Registry::set(portSettingsKey, "7", stored);
        }
        InstanceChannel otherProcess;
        Tarnwick& display = start(relayFolder.path(), {}, "Ok");
        QVERIFY(relay.waitForNewConnection(10000));
        QTRY_VERIFY_WITH_TIMEOUT(display.output().startsWith(questionLine + "\n"), 5000);
        QTRY_COMPARE_WITH_TIMEOUT(relayPids().size(), 1, 5000);
    }

    // A display instance beside the real relay starts it, connects to it without a box, and
    // connects again to a relay that comes back after it went away.
    void aDisplayConnectsToTheRelayItStartsAndToOneThatComesBack() {
        QTemporaryDir folder;
        QVERIFY(copyProgram(folder.path()));
        QVERIFY(QFile::copy(programFolder() + "/oskerby", folder.filePath("oskerby")));
        const quint16 port = freePort();
        Registry::set(portSettingsKey, "6", "127.0.0.1");
        Registry::set(portSettingsKey, "7", QString::number(port));
        InstanceChannel otherProcess;
        Tarnwick& display = start(folder.path(), {}, "Ok");
        QTRY_COMPARE_WITH_TIMEOUT(relaysOnPort(port).size(), 1, 5000);
        const int relay = relaysOnPort(port).constFirst();
        QTRY_COMPARE_WITH_TIMEOUT(connectionsTo(port), 1, 5000);

        ::kill(relay, SIGKILL);
        QTRY_COMPARE_WITH_TIMEOUT(connectionsTo(port), 0, 5000);
        QTest::qWait(2500); // tries that find no relay
        ToolProcess again(QStringLiteral("oskerby"));
        again.start({"--port", QString::number(port)});
        QVERIFY(!again.waitForLine(QStringLiteral("LISTENING ")).isEmpty());
        QVERIFY(!again.waitForLine(QStringLiteral("JOINED 127.0.0.1:"), 5000).isEmpty());
        QVERIFY(display.running());
        QVERIFY(display.output().startsWith(questionLine + "\n"));
        QVERIFY(!display.output().contains("Network Connection"));
    }

    void withoutTheRelayADisplayInstanceEndsInSilence() {
        InstanceChannel otherProcess;
        Tarnwick& display = start(bareFolder.path(), {}, "Ok");
        QTRY_VERIFY_WITH_TIMEOUT(!display.running(), 10000);
        QCOMPARE(display.exitCode(), 0);
        QVERIFY(display.output().startsWith(questionLine + "\n"));
        QVERIFY(!display.output().contains("Tarnwick - Startup"));
    }
};

QTEST_GUILESS_MAIN(TestStartupProcess)
#include "tst_startup_process.moc"
