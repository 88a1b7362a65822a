#include "CrLineReader.h"
#include "InstrumentLineShape.h"
#include "ToolProcess.h"

#include "common/TestHome.h"

#include <QFileInfo>
#include <QSerialPort>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTest>

namespace {

// The simulator on a pseudo-terminal, and the terminal end opened as a serial port, the way
// Tarnwick opens the instrument's port.
struct SimulatorOnPty {
    QTemporaryDir folder;
    QString linkPath = folder.filePath(QStringLiteral("pellamor"));
    ToolProcess simulator{QStringLiteral("pellamor-sim")};
    QSerialPort port;
    CrLineReader reader{port};

    bool start(QStringList arguments) {
        simulator.start(arguments << QStringLiteral("--pty") << linkPath);
        if (simulator.waitForLine(QStringLiteral("READY ")) != QStringLiteral("READY ") + linkPath)
            return false;
        port.setPortName(linkPath);
        return port.open(QIODevice::ReadWrite);
    }

    void send(const QByteArray& bytes) {
        port.write(bytes);
        port.waitForBytesWritten(1000);
    }
};

} // namespace

class TestPellamorSim : public QObject {
    Q_OBJECT
private slots:
    void linesOverThePseudoTerminalHaveTheInstrumentsShape() {
        SimulatorOnPty sim;
        QVERIFY(sim.start({"--interval", "0.1"}));
        QVERIFY(sim.reader.waitForLines(3));
        for (const QByteArray& line : std::as_const(sim.reader.lines))
            QVERIFY2(hasInstrumentShape(line), line.constData());
    }

    // With an hour between timed lines, a line that comes now is the answer to the poll.
    void pollBringsALineAtOnce() {
        SimulatorOnPty sim;
        QVERIFY(sim.start({"--interval", "3600"}));
        sim.send("l\r");
        QCOMPARE(sim.simulator.waitForLine("POLL"), QStringLiteral("POLL"));
        QVERIFY(sim.reader.waitForLines(1));
        QVERIFY(hasInstrumentShape(sim.reader.lines.first()));
        sim.send("l\r");
        QCOMPARE(sim.simulator.waitForLine("POLL"), QStringLiteral("POLL"));
        QVERIFY(sim.reader.waitForLines(2));
    }

    // Each page is sent in the given pieces, a moment apart.
    void pagesArePrintedWithEverythingAfterTheF_data() {
        QTest::addColumn<QByteArrayList>("pieces");
        QTest::addColumn<QString>("printed");
        QTest::newRow("page") << QByteArrayList{"fRed> ET: 9.5041\r"}
                              << QStringLiteral("PAGE: Red> ET: 9.5041");
        QTest::newRow("custom message keeps its blank")
            << QByteArrayList{"f hello\r"} << QStringLiteral("PAGE:  hello");
        QTest::newRow("line feed after the CR")
            << QByteArrayList{"f02:35pm \r\n"} << QStringLiteral("PAGE: 02:35pm ");
        QTest::newRow("sent in pieces") << QByteArrayList{"f Drennick", " & Aldous", " Racing\r"}
                                        << QStringLiteral("PAGE:  Drennick & Aldous Racing");
    }
    void pagesArePrintedWithEverythingAfterTheF() {
        QFETCH(QByteArrayList, pieces);
        QFETCH(QString, printed);
        SimulatorOnPty sim;
        QVERIFY(sim.start({"--interval", "3600"}));
        for (const QByteArray& piece : std::as_const(pieces)) {
            sim.send(piece);
            QTest::qWait(50);
        }
        QCOMPARE(sim.simulator.waitForLine("PAGE:"), printed);
    }

    void sameSeedAndStartRepeatTheRun() {
        const QStringList arguments = {"--seed",     "7",   "--start", "2026-06-01T14:00:00",
                                       "--interval", "0.05"};
        SimulatorOnPty first, second;
        QVERIFY(first.start(arguments));
        QVERIFY(second.start(arguments));
        QVERIFY(first.reader.waitForLines(5));
        QVERIFY(second.reader.waitForLines(5));
        QCOMPARE(second.reader.lines.mid(0, 5), first.reader.lines.mid(0, 5));
        QVERIFY(first.reader.lines.first().startsWith(" 06/01/2026 14:00:00 "));

        SimulatorOnPty other;
        QVERIFY(
            other.start({"--seed", "8", "--start", "2026-06-01T14:00:00", "--interval", "0.05"}));
        QVERIFY(other.reader.waitForLines(5));
        QVERIFY(other.reader.lines.mid(0, 5) != first.reader.lines.mid(0, 5));
    }

    void faultsSpoilSomeLines() {
        SimulatorOnPty sim;
        QVERIFY(sim.start({"--faults", "--seed", "3", "--interval", "0.01"}));
        QVERIFY(sim.reader.waitForLines(100));
        const auto spoiled =
            std::count_if(sim.reader.lines.begin(), sim.reader.lines.end(),
                          [](const QByteArray& line) { return !hasInstrumentShape(line); });
        QVERIFY(spoiled > 0);
        QVERIFY(spoiled < sim.reader.lines.size());
    }

    void terminateEndsCleanlyAndRemovesTheLink() {
        SimulatorOnPty sim;
        QVERIFY(sim.start({}));
        QVERIFY(QFileInfo(sim.linkPath).isSymLink());
        sim.port.close();
        sim.simulator.process.terminate();
        QVERIFY(sim.simulator.process.waitForFinished(10000));
        QCOMPARE(sim.simulator.process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(sim.simulator.process.exitCode(), 0);
        QVERIFY(!QFileInfo(sim.linkPath).isSymLink());
        QVERIFY(!QFileInfo::exists(sim.linkPath));
    }

    void aFileInTheWayIsNotReplaced() {
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("notes.txt"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("keep me");
        file.close();
        ToolProcess simulator(QStringLiteral("pellamor-sim"));
        simulator.start({"--pty", path});
        QVERIFY(simulator.process.waitForFinished(10000));
        QVERIFY(simulator.process.exitCode() != 0);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), QByteArray("keep me"));
    }

    // The simulator as one client of the relay, a display as another: lines go one way,
    // polls and pages the other.
    void throughTheRelay() {
        ToolProcess relay(QStringLiteral("oskerby"));
        relay.start({"--port", "0"});
        const QString listening = relay.waitForLine("LISTENING ");
        QVERIFY(!listening.isEmpty());
        const QString port = listening.section(u' ', 1);

        ToolProcess simulator(QStringLiteral("pellamor-sim"));
        simulator.start({"--tcp", "127.0.0.1:" + port, "--interval", "0.1"});
        QCOMPARE(simulator.waitForLine("READY "), "READY 127.0.0.1:" + port);

        QTcpSocket display;
        CrLineReader reader(display);
        display.connectToHost(QStringLiteral("127.0.0.1"), port.toUShort());
        QVERIFY(display.waitForConnected(10000));
        QVERIFY(reader.waitForLines(3));
        QVERIFY(hasInstrumentShape(reader.lines.last()));

        display.write("l\rfBlue> ET: 10.012\r");
        QCOMPARE(simulator.waitForLine("POLL"), QStringLiteral("POLL"));
        QCOMPARE(simulator.waitForLine("PAGE:"), QStringLiteral("PAGE: Blue> ET: 10.012"));

        simulator.process.terminate();
        QVERIFY(simulator.process.waitForFinished(10000));
        QCOMPARE(simulator.process.exitCode(), 0);
    }

    // Without the relay the simulator has nobody to talk to, and says so in its status.
    void endsWhenTheRelayGoesAway() {
        ToolProcess relay(QStringLiteral("oskerby"));
        relay.start({"--port", "0"});
        const QString port = relay.waitForLine("LISTENING ").section(u' ', 1);
        QVERIFY(!port.isEmpty());
        ToolProcess simulator(QStringLiteral("pellamor-sim"));
        simulator.start({"--tcp", "127.0.0.1:" + port});
        QVERIFY(!simulator.waitForLine("READY ").isEmpty());

        relay.process.terminate();
        QVERIFY(relay.process.waitForFinished(10000));
        QVERIFY(simulator.process.waitForFinished(10000));
        QCOMPARE(simulator.process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(simulator.process.exitCode(), 1);
    }

    void refusesToStartWithoutALink() {
        ToolProcess simulator(QStringLiteral("pellamor-sim"));
        simulator.start({"--interval", "1"});
        QVERIFY(simulator.process.waitForFinished(10000));
        QVERIFY(simulator.process.exitCode() != 0);
    }
};

QTEST_GUILESS_MAIN(TestPellamorSim)
#include "tst_pellamorsim.moc"
