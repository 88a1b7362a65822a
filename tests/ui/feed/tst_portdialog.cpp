#include "common/PtyPair.h"
#include "common/TestHome.h"
#include "common/TestRelay.h"
#include "core/Registry.h"
#include "core/SettingKeys.h"
#include "feed/FeedWatchdog.h"
#include "feed/InstrumentConnection.h"
#include "feed/PortDevices.h"
#include "ui/feed/PortDialog.h"

#include <QComboBox>
#include <QDeadlineTimer>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>
#include <memory>

const QString PortSettingsKey = QStringLiteral("SOFTWARE\\Zorvane\\SerialPort");

namespace {

const PortSettings Usual{3, 5, 0, 4, 0, 0, "None", "None"};

QStringList entries(const QComboBox* box) {
    QStringList all;
    for (int i = 0; i < box->count(); ++i)
        all << box->itemText(i);
    return all;
}

// The dialog as the user sees it, reached by the names of its controls.
class Dialog {
public:
    explicit Dialog(InstrumentConnection& connection) : form(connection, watchdog) {}
    QComboBox* list(const char* name) { return form.findChild<QComboBox*>(name); }
    QPushButton* button(const char* name) { return form.findChild<QPushButton*>(name); }
    QLineEdit* device() { return form.findChild<QLineEdit*>("txtDevice"); }
    // The positions of the five line lists: baud, parity, data bits, stop bits, flow control.
    QList<int> lineLists() {
        return {list("cboBitsPerSecond")->currentIndex(), list("cboParity")->currentIndex(),
                list("cboDataBits")->currentIndex(), list("cboStopBits")->currentIndex(),
                list("cboFlowControl")->currentIndex()};
    }
    bool applyEnabled() { return button("cmdApply")->isEnabled(); }
    bool restoreEnabled() { return button("cmdRestoreDefaults")->isEnabled(); }
    QLineEdit* noWeather() { return form.findChild<QLineEdit*>("txtNoWeather"); }
    FeedWatchdog watchdog;
    PortDialog form;
};

} // namespace

class TestPortDialog : public QObject {
    Q_OBJECT
    std::unique_ptr<TestHome> home;

    // Connects the link to a relay the way the dialog's Apply does.
    void connectTo(Relay& relay, InstrumentConnection& connection) {
        connection.applyLink(QStringLiteral("127.0.0.1"), relay.port());
        QVERIFY(relay.waitForClient());
        QTRY_VERIFY(connection.ipPort().isOpen());
    }

private slots:
    void init() { home = std::make_unique<TestHome>(); }
    void cleanup() { home.reset(); }

    void showsTheControlsAndTheirEntries() {
        InstrumentConnection connection;
        Dialog dialog(connection);
        QCOMPARE(dialog.form.objectName(), QStringLiteral("frmProperties"));
        QCOMPARE(dialog.form.windowTitle(), QStringLiteral("Port Settings"));
        QStringList groups;
        for (const QGroupBox* group : dialog.form.findChildren<QGroupBox*>())
            groups << group->title();
        QCOMPARE(groups, (QStringList{"Com Port or TCP/IP", "Network Interface", "Old Weather"}));

        QStringList comPorts{"None"};
        for (int n = 1; n <= 24; ++n)
            comPorts << QStringLiteral("Com%1").arg(n);
        comPorts << "TCP/IP";
        QCOMPARE(entries(dialog.list("cboComPort")), comPorts);
        QCOMPARE(entries(dialog.list("cboBitsPerSecond")),
                 (QStringList{"110", "300", "600", "1200", "2400", "9600", "14400", "19200"}));
        QCOMPARE(entries(dialog.list("cboDataBits")), (QStringList{"4", "5", "6", "7", "8"}));
        QCOMPARE(entries(dialog.list("cboParity")),
                 (QStringList{"None", "Odd", "Even", "Mark", "Space"}));
        QCOMPARE(entries(dialog.list("cboStopBits")), (QStringList{"1", "2"}));
        QCOMPARE(entries(dialog.list("cboFlowControl")),
                 (QStringList{"None", "Xon / Xoff", "RTS", "RTS / Xon / Xoff"}));
        QCOMPARE(entries(dialog.list("cboHost")), (QStringList{"None", "localhost"}));
        QCOMPARE(entries(dialog.list("cboPort")), (QStringList{"None", "5555"}));
        QVERIFY(dialog.list("cboHost")->isEditable());
        QVERIFY(dialog.list("cboPort")->isEditable());
        QVERIFY(!dialog.list("cboComPort")->isEditable());
        for (const char* name : {"cmdOK", "cmdCancel", "cmdApply", "cmdRestoreDefaults"})
            QVERIFY2(dialog.button(name), name);
    }

    void opensCentredOnTheScreen() {
        InstrumentConnection connection;
        Dialog dialog(connection);
        const QPoint offset =
            dialog.form.geometry().center() - dialog.form.screen()->geometry().center();
        QVERIFY2(offset.manhattanLength() <= 2, qPrintable(QString::number(offset.x())));
    }

    void showsTheSettingsInMemory() {
        InstrumentConnection connection;
        connection.portSettings = PortSettings{7, 6, 2, 3, 1, 3, "relay.local", "6000"};
        Dialog dialog(connection);
        QCOMPARE(dialog.list("cboComPort")->currentIndex(), 7);
        QCOMPARE(dialog.lineLists(), (QList<int>{6, 2, 3, 1, 3}));
        QCOMPARE(dialog.list("cboHost")->currentText(), QStringLiteral("relay.local"));
        QCOMPARE(dialog.list("cboPort")->currentText(), QStringLiteral("6000"));
        QVERIFY(!dialog.applyEnabled());
        QVERIFY(!dialog.restoreEnabled());
    }

    void lineListChangeEnablesApplyAndRestore_data() {
        QTest::addColumn<QByteArray>("name");
        for (const char* name :
             {"cboBitsPerSecond", "cboDataBits", "cboParity", "cboStopBits", "cboFlowControl"})
            QTest::newRow(name) << QByteArray(name);
    }
    void lineListChangeEnablesApplyAndRestore() {
        QFETCH(QByteArray, name);
        InstrumentConnection connection;
        Dialog dialog(connection);
        dialog.list(name.constData())->setCurrentIndex(1);
        QVERIFY(dialog.applyEnabled());
        QVERIFY(dialog.restoreEnabled());
    }

    void comPortChangeEnablesApplyOnly() {
        InstrumentConnection connection;
        Dialog dialog(connection);
        dialog.list("cboComPort")->setCurrentIndex(4);
        QVERIFY(dialog.applyEnabled());
        QVERIFY(!dialog.restoreEnabled());
    }

    // TCP/IP offers the usual relay in the boxes left empty, and leaves the others alone.
    void tcpIpFillsEmptyHostAndPort() {
        InstrumentConnection connection;
        connection.portSettings.host = QStringLiteral("relay.local");
        connection.portSettings.tcpPort = QString();
        Dialog dialog(connection);
        dialog.list("cboComPort")->setCurrentIndex(TcpIpComPort);
        QCOMPARE(dialog.list("cboHost")->currentText(), QStringLiteral("relay.local"));
        QCOMPARE(dialog.list("cboPort")->currentText(), QStringLiteral("5555"));

        dialog.list("cboComPort")->setCurrentIndex(0);
        dialog.list("cboHost")->setEditText(QString());
        dialog.list("cboComPort")->setCurrentIndex(TcpIpComPort);
        QCOMPARE(dialog.list("cboHost")->currentText(), QStringLiteral("localhost"));
        QCOMPARE(dialog.list("cboPort")->currentText(), QStringLiteral("5555"));
    }

    // A changed address drops the relay at once, before anything is applied.
    void hostOrPortChangeDropsTheRelay_data() {
        QTest::addColumn<QByteArray>("name");
        QTest::newRow("host") << QByteArray("cboHost");
        QTest::newRow("port") << QByteArray("cboPort");
    }
    void hostOrPortChangeDropsTheRelay() {
        QFETCH(QByteArray, name);
        Relay relay;
        InstrumentConnection connection;
        connectTo(relay, connection);
        Dialog dialog(connection);
        dialog.form.show();
        QVERIFY(connection.ipPort().isOpen());
        QTest::keyClick(dialog.list(name.constData())->lineEdit(), Qt::Key_X);
        QVERIFY(!connection.ipPort().isOpen());
        QVERIFY(dialog.applyEnabled());
        QVERIFY(dialog.restoreEnabled());
        QTRY_COMPARE(relay.client->state(), QAbstractSocket::UnconnectedState);
    }

    void restoreDefaultsSetsTheUsableSettings() {
        InstrumentConnection connection;
        connection.portSettings = PortSettings{7, 0, 4, 0, 1, 3, "relay.local", "6000"};
        Dialog dialog(connection);
        dialog.list("cboParity")->setCurrentIndex(2);
        dialog.button("cmdRestoreDefaults")->click();
        QCOMPARE(dialog.lineLists(), (QList<int>{5, 0, 4, 0, 0}));
        QCOMPARE(dialog.list("cboHost")->currentText(), QStringLiteral("None"));
        QCOMPARE(dialog.list("cboPort")->currentText(), QStringLiteral("None"));
        QCOMPARE(dialog.list("cboComPort")->currentIndex(), 7);
        QVERIFY(!dialog.restoreEnabled());
        QVERIFY(dialog.applyEnabled());
    }

    void restoreDefaultsThenCancelChangesNothing() {
        InstrumentConnection connection;
        const PortSettings before{7, 0, 4, 0, 1, 3, "relay.local", "6000"};
        connection.portSettings = before;
        Dialog dialog(connection);
        dialog.list("cboComPort")->setCurrentIndex(2);
        dialog.list("cboParity")->setCurrentIndex(2);
        dialog.button("cmdRestoreDefaults")->click();
        dialog.button("cmdCancel")->click();
        QCOMPARE(dialog.form.result(), int(QDialog::Rejected));
        QVERIFY(connection.portSettings == before);
    }

    // Apply takes the dialog into memory, opens the chosen port, connects the relay, and
    // greys itself; the dialog stays open.
    void applyStoresAndAppliesTheLink() {
        PtyPair pty;
        QVERIFY(pty.isReady());
        setPortDevice(3, pty.portEnd());
        Relay relay;
        InstrumentConnection connection;
        QSignalSpy warnings(&connection, &InstrumentConnection::warning);
        Dialog dialog(connection);
        dialog.form.show();
        dialog.list("cboComPort")->setCurrentIndex(3);
        dialog.list("cboParity")->setCurrentIndex(1);
        dialog.button("cmdRestoreDefaults")->click();
        dialog.list("cboStopBits")->setCurrentIndex(1);
        dialog.list("cboHost")->setEditText(QStringLiteral(" 127.0.0.1 "));
        dialog.list("cboPort")->setEditText(relay.port());
        dialog.button("cmdApply")->click();

        QVERIFY(connection.portSettings ==
                (PortSettings{3, 5, 0, 4, 1, 0, "127.0.0.1", relay.port()}));
        QVERIFY(connection.serialPort().isOpen());
        QVERIFY(relay.waitForClient());
        QTRY_VERIFY(connection.ipPort().isOpen());
        QVERIFY(!dialog.applyEnabled());
        QVERIFY(dialog.form.isVisible());
        QCOMPARE(warnings.count(), 0);
    }

    void okAppliesAndCloses() {
        Relay relay;
        InstrumentConnection connection;
        Dialog dialog(connection);
        dialog.form.show();
        dialog.list("cboComPort")->setCurrentIndex(TcpIpComPort);
        dialog.list("cboPort")->setEditText(relay.port());
        dialog.button("cmdOK")->click();
        QCOMPARE(dialog.form.result(), int(QDialog::Accepted));
        QVERIFY(!dialog.form.isVisible());
        QCOMPARE(connection.portSettings.comPort, TcpIpComPort);
        QCOMPARE(connection.portSettings.host, QStringLiteral("localhost"));
        QVERIFY(!connection.serialPort().isOpen());
        QVERIFY(relay.waitForClient());
    }

    // The emptied host is skipped when the dialog is stored, but the link takes it as it is:
    // the relay is dropped, an empty host is saved, and the next start seeds localhost.
    void emptiedHostWithOkDropsTheRelay() {
        Relay relay;
        InstrumentConnection connection;
        connectTo(relay, connection);
        Dialog dialog(connection);
        dialog.list("cboHost")->setEditText(QString());
        dialog.button("cmdOK")->click();
        QCOMPARE(connection.portSettings.host, QString());
        QVERIFY(!connection.ipPort().isOpen());
        QVERIFY(relay.noNewClient());

        PortSettings asLoaded;
        asLoaded.host = QStringLiteral("localhost");
        savePortSettings(connection.portSettings, asLoaded);
        QCOMPARE(Registry::get(PortSettingsKey, QStringLiteral("6")), Registry::NoKeyValue);
        PortSettings next;
        loadPortSettings(next);
        QCOMPARE(next.host, QStringLiteral("localhost"));
    }

    // The link warns; the main window shows the box.
    void applyFailureIsWarned() {
        setPortDevice(3, home->root() + QStringLiteral("/no-such-tty"));
        InstrumentConnection connection;
        QSignalSpy warnings(&connection, &InstrumentConnection::warning);
        connection.portSettings = Usual;
        Dialog dialog(connection);
        dialog.list("cboStopBits")->setCurrentIndex(1);
        dialog.button("cmdApply")->click();
        QCOMPARE(warnings.count(), 1);
        const auto warning = warnings[0][0].value<Dialogs::Message>();
        QCOMPARE(warning.text, QStringLiteral("Error applying settings"));
        QCOMPARE(warning.icon, Dialogs::Icon::Critical);
        QVERIFY(!dialog.applyEnabled());
    }

#ifndef Q_OS_WIN
    // Where COM ports have other names the user sets the device of each entry; it is kept
    // only by Apply or OK.
    void deviceOfTheChosenEntry() {
        InstrumentConnection connection;
        connection.portSettings = Usual;
        setPortDevice(4, QStringLiteral("/dev/ttyACM0"));
        Dialog dialog(connection);
        QCOMPARE(dialog.device()->text(), QStringLiteral("/dev/ttyS2"));
        QVERIFY(dialog.device()->isEnabled());
        dialog.list("cboComPort")->setCurrentIndex(4);
        QCOMPARE(dialog.device()->text(), QStringLiteral("/dev/ttyACM0"));
        dialog.list("cboComPort")->setCurrentIndex(0);
        QCOMPARE(dialog.device()->text(), QString());
        QVERIFY(!dialog.device()->isEnabled());
        dialog.list("cboComPort")->setCurrentIndex(TcpIpComPort);
        QVERIFY(!dialog.device()->isEnabled());
    }

    // The wait before the old-weather warning is used at once and kept for the next start.
    void theWarningWaitIsAppliedAndKept() {
        InstrumentConnection connection;
        connection.portSettings = Usual;
        Dialog dialog(connection);
        QCOMPARE(dialog.noWeather()->text(), QStringLiteral("10"));

        dialog.noWeather()->selectAll();
        QTest::keyClicks(dialog.noWeather(), QStringLiteral("25"));
        QVERIFY(dialog.applyEnabled());
        dialog.button("cmdApply")->click();
        QCOMPARE(dialog.watchdog.threshold(), 25);
        QCOMPARE(Registry::get(SettingKeys::NoWeatherSeconds), QStringLiteral("25"));
        QCOMPARE(FeedWatchdog::loadThreshold(), 25);
        QVERIFY(!dialog.applyEnabled());

        // No wait at all would warn between every two lines: the default stands instead.
        dialog.noWeather()->selectAll();
        QTest::keyClicks(dialog.noWeather(), QStringLiteral("1"));
        dialog.button("cmdOK")->click();
        QCOMPARE(dialog.watchdog.threshold(), 10);
        QCOMPARE(dialog.noWeather()->text(), QStringLiteral("10"));
        QCOMPARE(Registry::get(SettingKeys::NoWeatherSeconds), QStringLiteral("10"));

        // Restore Defaults puts back the usual wait with the line settings.
        Dialog again(connection);
        again.noWeather()->setText(QStringLiteral("40"));
        again.list("cboParity")->setCurrentIndex(2);
        again.button("cmdRestoreDefaults")->click();
        QCOMPARE(again.noWeather()->text(), QStringLiteral("10"));
    }

    void deviceIsStoredByApplyOnly() {
        InstrumentConnection connection;
        connection.portSettings = Usual;
        connection.portSettings.comPort = 0;
        {
            Dialog dialog(connection);
            dialog.list("cboComPort")->setCurrentIndex(3);
            dialog.button("cmdApply")->setEnabled(false);
            dialog.device()->selectAll();
            QTest::keyClicks(dialog.device(), QStringLiteral("/dev/ttyUSB0"));
            QVERIFY(dialog.applyEnabled());
            dialog.list("cboComPort")->setCurrentIndex(5);
            dialog.list("cboComPort")->setCurrentIndex(3);
            QCOMPARE(dialog.device()->text(), QStringLiteral("/dev/ttyUSB0"));
            dialog.button("cmdCancel")->click();
        }
        QCOMPARE(portDevice(3), QStringLiteral("/dev/ttyS2"));

        Dialog dialog(connection);
        dialog.list("cboComPort")->setCurrentIndex(3);
        dialog.device()->selectAll();
        QTest::keyClicks(dialog.device(), QStringLiteral("/dev/ttyUSB0"));
        dialog.list("cboComPort")->setCurrentIndex(0);
        dialog.button("cmdApply")->click();
        QCOMPARE(portDevice(3), QStringLiteral("/dev/ttyUSB0"));
    }
#endif
};

QTEST_MAIN(TestPortDialog)
#include "tst_portdialog.moc"
