#include "feed/ReplayLink.h"
#include "feed/SerialLink.h"
#include "feed/SimulatorLink.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

namespace {

QString writeRecording(const QTemporaryDir& dir, const QByteArray& bytes) {
    const QString path = dir.filePath(QStringLiteral("recorded.txt"));
    QFile file(path);
    file.open(QIODevice::WriteOnly);
    file.write(bytes);
    return path;
}

QByteArrayList received(const QSignalSpy& spy) {
    QByteArrayList all;
    for (const QList<QVariant>& call : spy)
        all << call[0].toByteArray();
    return all;
}

} // namespace

class TestPlaybackLinks : public QObject {
    Q_OBJECT

private slots:
    // Each text line goes out as one instrument line with its CR, whatever line ends the
    // file was written with; bytes ahead of the line's space are kept for the framing.
    void replaySendsOneLinePerInterval() {
        QTemporaryDir dir;
        const QString path = writeRecording(
            dir, " 11/22/26 a 29.92\r\nnoise 11/22/26 b 30.01\n\n 11/22/26 c 30.10\n");
        ReplayLink link(path);
        link.setInterval(10);
        QSignalSpy bytes(&link, &ReplayLink::bytesReceived);
        QSignalSpy opened(&link, &ReplayLink::opened);
        QVERIFY(link.open(PortOptions{}));
        QVERIFY(link.isOpen());
        QCOMPARE(opened.count(), 1);
        QCOMPARE(bytes.count(), 0);
        QTRY_COMPARE(bytes.count(), 4);
        QCOMPARE(received(bytes), (QByteArrayList{" 11/22/26 a 29.92\r", "noise 11/22/26 b 30.01\r",
                                                  "\r", " 11/22/26 c 30.10\r"}));
        QTest::qWait(100);
        QCOMPARE(bytes.count(), 4);
        QVERIFY(link.isOpen());
        QVERIFY(link.write("l\r"));
    }

    void replayStopsWhenClosed() {
        QTemporaryDir dir;
        ReplayLink link(writeRecording(dir, QByteArray(" line\n").repeated(50)));
        link.setInterval(10);
        QSignalSpy bytes(&link, &ReplayLink::bytesReceived);
        QSignalSpy closed(&link, &ReplayLink::closed);
        QVERIFY(link.open(PortOptions{}));
        QTRY_VERIFY(bytes.count() >= 1);
        link.close();
        QCOMPARE(closed.count(), 1);
        const qsizetype sent = bytes.count();
        QTest::qWait(100);
        QCOMPARE(bytes.count(), sent);
        QVERIFY(!link.isOpen());
        QVERIFY(!link.write("l\r"));
    }

    void replayOfMissingFileDoesNotOpen() {
        QTemporaryDir dir;
        ReplayLink link(dir.filePath(QStringLiteral("missing.txt")));
        QVERIFY(!link.open(PortOptions{}));
        QVERIFY(!link.isOpen());
    }

    // The poll is answered with one line, from the event loop rather than inside the write.
    void simulatorAnswersThePoll() {
        SimulatorLink link;
        link.setInterval(600000);
        QSignalSpy bytes(&link, &SimulatorLink::bytesReceived);
        QVERIFY(link.open(PortOptions{}));
        QVERIFY(link.write("l\r"));
        QCOMPARE(bytes.count(), 0);
        QTRY_COMPARE(bytes.count(), 1);
        const QByteArray line = bytes[0][0].toByteArray();
        QVERIFY(line.startsWith(' '));
        QVERIFY(line.endsWith('\r'));
        QCOMPARE(line.count('\r'), 1);
        QTest::qWait(50);
        QCOMPARE(bytes.count(), 1);
    }

    void simulatorSendsEveryInterval() {
        SimulatorLink link;
        link.setInterval(10);
        QSignalSpy bytes(&link, &SimulatorLink::bytesReceived);
        QVERIFY(link.open(PortOptions{}));
        QTRY_VERIFY(bytes.count() >= 3);
        link.close();
        const qsizetype sent = bytes.count();
        QTest::qWait(50);
        QCOMPARE(bytes.count(), sent);
    }

    // Pages are kept as sent, after the "f", even when they come in pieces; other commands
    // are not for the instrument.
    void simulatorKeepsThePages() {
        SimulatorLink link;
        link.setInterval(600000);
        QSignalSpy bytes(&link, &SimulatorLink::bytesReceived);
        QVERIFY(link.open(PortOptions{}));
        QVERIFY(link.write("fRace Log# 1 ET 8.123\r"));
        QVERIFY(link.write("f hello"));
        QVERIFY(link.write(" there\r\nx\r"));
        QCOMPARE(link.pages(), (QByteArrayList{"Race Log# 1 ET 8.123", " hello there"}));
        QTest::qWait(50);
        QCOMPARE(bytes.count(), 0);
    }

    void closedSimulatorTakesNothing() {
        SimulatorLink link;
        QVERIFY(!link.isOpen());
        QVERIFY(!link.write("fpage\r"));
        QVERIFY(link.pages().isEmpty());
    }

    void commEventOfEachPortError_data() {
        QTest::addColumn<int>("error");
        QTest::addColumn<int>("event");
        QTest::newRow("write") << int(QSerialPort::WriteError) << 1010;
        QTest::newRow("unsupported") << int(QSerialPort::UnsupportedOperationError) << 1011;
        QTest::newRow("device lost") << int(QSerialPort::ResourceError) << 0;
        QTest::newRow("read") << int(QSerialPort::ReadError) << 0;
        QTest::newRow("unknown") << int(QSerialPort::UnknownError) << 0;
        QTest::newRow("none") << int(QSerialPort::NoError) << -1;
        QTest::newRow("timeout") << int(QSerialPort::TimeoutError) << -1;
        QTest::newRow("not open") << int(QSerialPort::NotOpenError) << -1;
    }
    void commEventOfEachPortError() {
        QFETCH(int, error);
        QTEST(commEventFor(QSerialPort::SerialPortError(error)), "event");
    }
};

QTEST_GUILESS_MAIN(TestPlaybackLinks)
#include "tst_playbacklinks.moc"
