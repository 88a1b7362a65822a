#include "common/OtherInstance.h"
#include "common/TestHome.h"
#include "core/InstanceChannel.h"

#include <QSignalSpy>
#include <QTest>

#include <memory>

using OtherInstance::Process;

class TestInstance : public QObject {
    Q_OBJECT
private slots:
    void aloneNoOtherProcessRuns() {
        TestHome home;
        InstanceChannel channel;
        QVERIFY(!channel.anotherProcessRunning());
    }

    void anotherProcessIsSeenWhileItRuns() {
        TestHome home;
        InstanceChannel channel;
        Process other({OtherInstance::holdDisplay});
        QVERIFY(other.holding());
        QVERIFY(channel.anotherProcessRunning());
        other.kill();
        // Killed, it left its lock behind; that doesn't count.
        QVERIFY(!channel.anotherProcessRunning());
    }

    void aProcessThatNeverListensStillCounts() {
        TestHome home;
        auto first = std::make_unique<InstanceChannel>();
        InstanceChannel second;
        QVERIFY(second.anotherProcessRunning());
        QVERIFY(first->anotherProcessRunning());
        first.reset();
        QVERIFY(!second.anotherProcessRunning());
    }

    void otherSettingsFoldersAreOtherPrograms() {
        auto homeA = std::make_unique<TestHome>();
        Process mainA({OtherInstance::holdMain});
        QVERIFY(mainA.holding());
        homeA.reset();

        TestHome homeB;
        InstanceChannel channelB;
        QVERIFY(!channelB.anotherProcessRunning());
        QVERIFY(!InstanceChannel::handOver(QStringLiteral("/races/other.trl")));
        QVERIFY(!mainA.received().contains("RECEIVED"));
    }

    void theMainInstanceReceivesAHandedPath_data() {
        QTest::addColumn<QString>("path");
        QTest::newRow("plain") << QStringLiteral("/home/crew/Races/Bristol 2026.trl");
        QTest::newRow("words with blanks")
            << QStringLiteral("C:\\Race Logs\\Car 12 - Super Gas.trl");
        QTest::newRow("beyond ASCII") << QStringLiteral("/logs/Zürich – Läufe ✓.trl");
        QTest::newRow("long") << QStringLiteral("/x/") + QString(5000, u'a') + ".trl";
    }
    void theMainInstanceReceivesAHandedPath() {
        QFETCH(QString, path);
        TestHome home;
        Process mainInstance({OtherInstance::holdMain});
        QVERIFY(mainInstance.holding());
        InstanceChannel later;
        QVERIFY(later.anotherProcessRunning());
        QVERIFY(InstanceChannel::handOver(path));
        QTRY_VERIFY_WITH_TIMEOUT(mainInstance.received().contains("RECEIVED: " + path + "\n"),
                                 5000);
    }

    void theMainInstanceSignalsTheReceivedPath() {
        TestHome home;
        InstanceChannel mainInstance;
        QVERIFY(mainInstance.listen());
        QSignalSpy received(&mainInstance, &InstanceChannel::pathReceived);
        // A later start waits for the main instance, so it has to be another process.
        Process later({OtherInstance::handOver, QStringLiteral("/races/Car 7.trl")});
        QTRY_COMPARE_WITH_TIMEOUT(received.count(), 1, 5000);
        QCOMPARE(received.at(0).at(0).toString(), QStringLiteral("/races/Car 7.trl"));
        QTRY_COMPARE_WITH_TIMEOUT(later.state(), QProcess::NotRunning, 5000);
        QCOMPARE(later.exitCode(), 0);
    }

    void withNobodyListeningThePathIsLost() {
        TestHome home;
        Process displayInstance({OtherInstance::holdDisplay});
        QVERIFY(displayInstance.holding());
        InstanceChannel later;
        QVERIFY(later.anotherProcessRunning());
        QVERIFY(!InstanceChannel::handOver(QStringLiteral("/races/lost.trl")));
    }

    void afterStopListeningPathsAreLost() {
        TestHome home;
        InstanceChannel mainInstance;
        QVERIFY(mainInstance.listen());
        mainInstance.stopListening();
        QSignalSpy received(&mainInstance, &InstanceChannel::pathReceived);
        Process later({OtherInstance::handOver, QStringLiteral("/races/late.trl")});
        QTRY_COMPARE_WITH_TIMEOUT(later.state(), QProcess::NotRunning, 5000);
        QCOMPARE(later.exitCode(), 1);
        QCOMPARE(received.count(), 0);
    }

    // A display instance asks this before it serves the crew's phones itself.
    void onlyARunningMainInstanceIsFoundListening() {
        TestHome home;
        QVERIFY(!InstanceChannel::mainInstanceListening());
        Process display({OtherInstance::holdDisplay});
        QVERIFY(display.holding());
        QVERIFY(!InstanceChannel::mainInstanceListening());
        Process mainInstance({OtherInstance::holdMain});
        QVERIFY(mainInstance.holding());
        QVERIFY(InstanceChannel::mainInstanceListening());
        mainInstance.kill();
        QVERIFY(!InstanceChannel::mainInstanceListening());
    }

    void aCrashedMainInstanceLeavesNoObstacle() {
        TestHome home;
        Process crashed({OtherInstance::holdMain});
        QVERIFY(crashed.holding());
        crashed.kill();
        InstanceChannel next;
        QVERIFY(!next.anotherProcessRunning());
        QVERIFY(next.listen());
        QSignalSpy received(&next, &InstanceChannel::pathReceived);
        Process later({OtherInstance::handOver, QStringLiteral("/races/after.trl")});
        QTRY_COMPARE_WITH_TIMEOUT(received.count(), 1, 5000);
    }
};

int main(int argc, char** argv) {
    if (const auto exitCode = OtherInstance::PlayRole(argc, argv))
        return *exitCode;
    QCoreApplication app(argc, argv);
    TestInstance test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_instance.moc"
