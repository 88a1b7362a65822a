#include "common/TestHome.h"
#include "core/Registry.h"
#include "feed/LineSettings.h"
#include "feed/PortDevices.h"
#include "feed/PortSettings.h"

#include <QTest>
#include <memory>

const QString PortSettingsKey = QStringLiteral("SOFTWARE\\Zorvane\\SerialPort");
const QString PortDevicesKey = QStringLiteral("SOFTWARE\\Zorvane\\SerialPort\\Devices");

namespace {

QString stored(int name) {
    return Registry::get(PortSettingsKey, QString::number(name));
}

void store(int name, const QString& value) {
    Registry::set(PortSettingsKey, QString::number(name), value);
}

PortSettings firstRun() {
    return PortSettings{0, 0, 0, 0, 0, 0, "localhost", "5555"};
}

PortSettings sample() {
    PortSettings s;
    s.comPort = 3;
    s.baud = 5;
    s.parity = 2;
    s.dataBits = 4;
    s.stopBits = 1;
    s.flowControl = 3;
    s.host = QStringLiteral("relay.local");
    s.tcpPort = QStringLiteral("6000");
    return s;
}

} // namespace

class TestPortSettings : public QObject {
    Q_OBJECT
    std::unique_ptr<TestHome> home;

private slots:
    void init() { home = std::make_unique<TestHome>(); }
    void cleanup() { home.reset(); }

    // A new installation has no port at 110 baud, no parity, 4 data bits, 1 stop bit and no
    // flow control, and the relay seeded as localhost:5555; all of it is written back.
    void firstRunSeedsTheTree() {
        PortSettings s;
        loadPortSettings(s);
        QVERIFY((s == PortSettings{0, 0, 0, 0, 0, 0, "localhost", "5555"}));
        for (int name = 0; name <= 5; ++name)
            QCOMPARE(stored(name), QStringLiteral("0"));
        QCOMPARE(stored(6), QStringLiteral("localhost"));
        QCOMPARE(stored(7), QStringLiteral("5555"));
    }

    // A missing position is written from what memory holds, not from any default.
    void missingPositionIsWrittenFromMemory() {
        store(0, QStringLiteral("2"));
        PortSettings s;
        s.baud = 6;
        s.flowControl = 2;
        loadPortSettings(s);
        QCOMPARE(s.comPort, qint16(2));
        QCOMPARE(s.baud, qint16(6));
        QCOMPARE(stored(1), QStringLiteral("6"));
        QCOMPARE(stored(5), QStringLiteral("2"));
    }

    void storedValuesAreRead() {
        const QStringList values{"25", "7", "4", "3", "1", "2", "  myhost  ", " 7000 "};
        for (int name = 0; name < values.size(); ++name)
            store(name, values[name]);
        PortSettings s;
        loadPortSettings(s);
        QVERIFY((s == PortSettings{25, 7, 4, 3, 1, 2, "myhost", "7000"}));
    }

    // A position that is no 16-bit number leaves memory as it is and the tree untouched.
    void unreadablePositionKeepsMemory_data() {
        QTest::addColumn<QString>("value");
        QTest::newRow("word") << "abc";
        QTest::newRow("too large") << "40000";
    }
    void unreadablePositionKeepsMemory() {
        QFETCH(QString, value);
        store(1, value);
        PortSettings s;
        s.baud = 5;
        loadPortSettings(s);
        QCOMPARE(s.baud, qint16(5));
        QCOMPARE(stored(1), value);
    }

    // What a first run loads: the baseline a save compares against.
    // A value the load could not read is never replaced by the default it fell back to; a
    // value the user changed since is written, and a value read well is left as it is.
    void aSaveKeepsTheUsersUnreadableTextAndWritesWhatChanged() {
        store(0, QStringLiteral("25"));
        store(1, QStringLiteral("fast"));
        store(2, QStringLiteral("1e9"));
        store(3, QStringLiteral("4"));
        store(6, QStringLiteral("racehost"));
        PortSettings s;
        loadPortSettings(s);
        const PortSettings asLoaded = s;
        QCOMPARE(s.baud, qint16(0));
        QCOMPARE(s.parity, qint16(0));
        QCOMPARE(s.dataBits, qint16(4));
        s.parity = 2;
        s.tcpPort = QStringLiteral("6000");
        savePortSettings(s, asLoaded);
        QCOMPARE(stored(0), QStringLiteral("25"));
        QCOMPARE(stored(1), QStringLiteral("fast"));
        QCOMPARE(stored(2), QStringLiteral("2"));
        QCOMPARE(stored(3), QStringLiteral("4"));
        QCOMPARE(stored(6), QStringLiteral("racehost"));
        QCOMPARE(stored(7), QStringLiteral("6000"));
    }

    void saveThenLoadGivesTheSame() {
        savePortSettings(sample(), firstRun());
        for (int name = 0; name <= 7; ++name)
            QVERIFY(stored(name) != Registry::NoKeyValue);
        QCOMPARE(stored(2), QStringLiteral("2"));
        PortSettings loaded;
        loadPortSettings(loaded);
        QVERIFY(loaded == sample());
    }

    // An empty host or port is saved as it is, reads as missing at the next start and is
    // seeded again.
    void emptyHostAndPortAreSeededAgain() {
        PortSettings s = sample();
        s.host.clear();
        s.tcpPort.clear();
        savePortSettings(s, firstRun());
        QCOMPARE(stored(6), Registry::NoKeyValue);
        PortSettings loaded;
        loadPortSettings(loaded);
        QCOMPARE(loaded.host, QStringLiteral("localhost"));
        QCOMPARE(loaded.tcpPort, QStringLiteral("5555"));
        QCOMPARE(stored(6), QStringLiteral("localhost"));
        QCOMPARE(stored(7), QStringLiteral("5555"));
    }

    void settingsText_data() {
        QTest::addColumn<int>("baud");
        QTest::addColumn<int>("parity");
        QTest::addColumn<int>("dataBits");
        QTest::addColumn<int>("stopBits");
        QTest::addColumn<QString>("text");
        QTest::newRow("restored defaults") << 5 << 0 << 4 << 0 << "9600,N,8,1";
        QTest::newRow("first run") << 0 << 0 << 0 << 0 << "110,N,4,1";
        QTest::newRow("last of each") << 7 << 4 << 3 << 1 << "19200,S,7,2";
        QTest::newRow("odd") << 3 << 1 << 1 << 0 << "1200,O,5,1";
        QTest::newRow("even") << 4 << 2 << 2 << 0 << "2400,E,6,1";
        QTest::newRow("mark") << 6 << 3 << 4 << 0 << "14400,M,8,1";
        QTest::newRow("300 and 600") << 1 << 0 << 4 << 0 << "300,N,8,1";
        QTest::newRow("600") << 2 << 0 << 4 << 0 << "600,N,8,1";
        QTest::newRow("baud past the list") << 8 << 0 << 4 << 0 << ",N,8,1";
        QTest::newRow("negative baud") << -1 << 0 << 4 << 0 << ",N,8,1";
        QTest::newRow("parity past the list") << 5 << 5 << 4 << 0 << "9600,,8,1";
        QTest::newRow("data bits past the list") << 5 << 0 << 5 << 0 << "9600,N,,1";
        QTest::newRow("stop bits past the list") << 5 << 0 << 4 << 2 << "9600,N,8,";
    }
    void settingsText() {
        QFETCH(int, baud);
        QFETCH(int, parity);
        QFETCH(int, dataBits);
        QFETCH(int, stopBits);
        PortSettings s;
        s.baud = qint16(baud);
        s.parity = qint16(parity);
        s.dataBits = qint16(dataBits);
        s.stopBits = qint16(stopBits);
        QTEST(::settingsText(s), "text");
    }

    void lineSettingsAreRead_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("valid");
        QTest::addColumn<int>("baud");
        QTest::addColumn<QChar>("parity");
        QTest::addColumn<int>("dataBits");
        QTest::addColumn<int>("stopBits");
        QTest::newRow("usual") << "9600,N,8,1" << true << 9600 << QChar(u'N') << 8 << 1;
        QTest::newRow("small letters") << "19200,e,7,2" << true << 19200 << QChar(u'E') << 7 << 2;
        QTest::newRow("four data bits") << "110,N,4,1" << true << 110 << QChar(u'N') << 4 << 1;
        QTest::newRow("no baud") << ",N,8,1" << false << 0 << QChar() << 0 << 0;
        QTest::newRow("no parity") << "9600,,8,1" << false << 0 << QChar() << 0 << 0;
        QTest::newRow("unknown parity") << "9600,X,8,1" << false << 0 << QChar() << 0 << 0;
        QTest::newRow("no data bits") << "9600,N,,1" << false << 0 << QChar() << 0 << 0;
        QTest::newRow("nine data bits") << "9600,N,9,1" << false << 0 << QChar() << 0 << 0;
        QTest::newRow("no stop bits") << "9600,N,8," << false << 0 << QChar() << 0 << 0;
        QTest::newRow("three parts") << "9600,N,8" << false << 0 << QChar() << 0 << 0;
    }
    void lineSettingsAreRead() {
        QFETCH(QString, text);
        QFETCH(bool, valid);
        const auto line = parseLineSettings(text);
        QCOMPARE(line.has_value(), valid);
        if (!valid)
            return;
        QTEST(line->baud, "baud");
        QTEST(line->parity, "parity");
        QTEST(line->dataBits, "dataBits");
        QTEST(line->stopBits, "stopBits");
    }

#ifdef Q_OS_WIN
    void comEntryIsTheComPort() {
        QCOMPARE(portDevice(3), QStringLiteral("COM3"));
    }
#else
    // Without a device set, ComN is the N-th built-in port.
    void comEntryWithoutDeviceIsBuiltInPort() {
        QCOMPARE(portDevice(1), QStringLiteral("/dev/ttyS0"));
        QCOMPARE(portDevice(3), QStringLiteral("/dev/ttyS2"));
        QCOMPARE(portDevice(24), QStringLiteral("/dev/ttyS23"));
    }

    void comEntryOpensTheDeviceSetForIt() {
        Registry::set(PortDevicesKey, QStringLiteral("Com3"), QStringLiteral("/dev/ttyACM1"));
        QCOMPARE(portDevice(3), QStringLiteral("/dev/ttyACM1"));
        QCOMPARE(portDevice(4), QStringLiteral("/dev/ttyS3"));

        setPortDevice(4, QStringLiteral(" /dev/ttyUSB0 "));
        QCOMPARE(Registry::get(PortDevicesKey, QStringLiteral("Com4")),
                 QStringLiteral("/dev/ttyUSB0"));
        QCOMPARE(portDevice(4), QStringLiteral("/dev/ttyUSB0"));
    }

    void emptyDeviceGivesTheBuiltInPortBack() {
        setPortDevice(3, QStringLiteral("/dev/ttyUSB0"));
        setPortDevice(3, QStringLiteral("  "));
        QCOMPARE(Registry::get(PortDevicesKey, QStringLiteral("Com3")), Registry::NoKeyValue);
        QCOMPARE(portDevice(3), QStringLiteral("/dev/ttyS2"));
    }
#endif
};

QTEST_GUILESS_MAIN(TestPortSettings)
#include "tst_portsettings.moc"
