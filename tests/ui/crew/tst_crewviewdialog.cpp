// The Crew View dialog as the user works it: on and off, the address, the port and a new code
// take effect at once; the QR code a phone scans, read back by zbarimg, is the page's address;
// a port in use is said in the dialog.
#include "common/TestHome.h"
#include "core/Registry.h"
#include "core/SettingKeys.h"
#include "crew/CrewClient.h"
#include "crew/CrewView.h"
#include "feed/WeatherStation.h"
#include "ui/crew/CrewViewDialog.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QRadioButton>
#include <QStandardPaths>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QTest>

namespace {

quint16 freePort() {
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost, 0);
    return probe.serverPort();
}

// What a phone's camera reads off the dialog: the QR code's picture decoded by zbarimg.
QString scanned(const QLabel* qrCode) {
    const QString zbarimg = QStandardPaths::findExecutable(QStringLiteral("zbarimg"));
    if (zbarimg.isEmpty() || qrCode->pixmap().isNull())
        return {};
    QTemporaryDir folder;
    const QString picture = folder.filePath(QStringLiteral("qr.png"));
    qrCode->pixmap().save(picture);
    QProcess reader;
    reader.start(zbarimg, {QStringLiteral("--raw"), QStringLiteral("-q"), picture});
    reader.waitForFinished(10000);
    return QString::fromUtf8(reader.readAllStandardOutput()).trimmed();
}

// The dialog on a crew view of its own, reached by the names of its controls.
struct Dialog {
    // Shown, as the user has it, so that the clicks land.
    Dialog() : crew(station), form(crew) { form.show(); }
    template <typename Control> Control* find(const char* name) {
        Control* control = form.findChild<Control*>(QString::fromLatin1(name));
        Q_ASSERT(control);
        return control;
    }
    QString state() { return find<QLabel>("lblState")->text(); }
    QString pageAddress() { return find<QLabel>("lblPageAddress")->text(); }
    QString qrCode() { return scanned(find<QLabel>("lblQRCode")); }
    void typePort(quint16 port) {
        QLineEdit* field = find<QLineEdit>("txtPort");
        field->selectAll();
        QTest::keyClicks(field, QString::number(port));
        QTest::keyClick(field, Qt::Key_Return);
    }
    void chooseAddress(const QString& caption) {
        QComboBox* list = find<QComboBox>("cboAddress");
        const int index = list->findText(caption);
        QVERIFY(index >= 0);
        list->setCurrentIndex(index);
        emit list->activated(index);
    }

    WeatherStation station;
    CrewView crew;
    CrewViewDialog form;
};

} // namespace

class TestCrewViewDialog : public QObject {
    Q_OBJECT
    std::unique_ptr<TestHome> home;

private slots:
    void initTestCase() {
        QVERIFY2(!QStandardPaths::findExecutable(QStringLiteral("zbarimg")).isEmpty(),
                 "zbarimg (zbar-tools) reads the QR code back");
    }

    void init() {
        home = std::make_unique<TestHome>();
        Registry::set(SettingKeys::CrewCode, QStringLiteral("604218"));
    }
    void cleanup() { home.reset(); }

    void theDialogShowsTheSettingsAndTheOfferedAddresses() {
        Dialog dialog;
        QCOMPARE(dialog.form.objectName(), QStringLiteral("frmCrewView"));
        QCOMPARE(dialog.form.windowTitle(), QStringLiteral("Crew View"));
        QVERIFY(dialog.find<QRadioButton>("optOff")->isChecked());
        QVERIFY(!dialog.find<QRadioButton>("optOn")->isChecked());
        QComboBox* addresses = dialog.find<QComboBox>("cboAddress");
        QCOMPARE(addresses->itemText(0), QStringLiteral("All networks"));
        QCOMPARE(addresses->itemData(0).toString(), QStringLiteral("0.0.0.0"));
        QCOMPARE(addresses->itemText(1), QStringLiteral("This computer only"));
        QCOMPARE(addresses->itemData(1).toString(), QStringLiteral("127.0.0.1"));
        QCOMPARE(addresses->currentIndex(), 0);
        QCOMPARE(dialog.find<QLineEdit>("txtPort")->text(), QStringLiteral("8080"));
        QCOMPARE(dialog.find<QLineEdit>("txtCode")->text(), QStringLiteral("604218"));
        QCOMPARE(dialog.state(), QStringLiteral("The crew view is off."));
        // Off, nothing is offered to a phone.
        QCOMPARE(dialog.pageAddress(), QString());
        QVERIFY(dialog.find<QLabel>("lblQRCode")->pixmap().isNull());
    }

    void onServesAtOnceAndTheQrCodeIsThePagesAddress() {
        Dialog dialog;
        const quint16 port = freePort();
        dialog.chooseAddress(QStringLiteral("This computer only"));
        dialog.typePort(port);
        QTest::mouseClick(dialog.find<QRadioButton>("optOn"), Qt::LeftButton);
        QCOMPARE(dialog.crew.state(), CrewView::State::Serving);
        const QString expected = QStringLiteral("http://127.0.0.1:%1/?code=604218").arg(port);
        QCOMPARE(dialog.pageAddress(), expected);
        QCOMPARE(dialog.qrCode(), expected);
        QCOMPARE(crewGet(port, QStringLiteral("/?code=604218")).status, 200);

        QTest::mouseClick(dialog.find<QRadioButton>("optOff"), Qt::LeftButton);
        QCOMPARE(dialog.crew.state(), CrewView::State::Off);
        QCOMPARE(crewGet(port, QStringLiteral("/?code=604218")).status, 0);
        QCOMPARE(Registry::get(SettingKeys::CrewEnabled), QStringLiteral("0"));
    }

    // With every network the code carries an address a phone on the trailer's network reaches.
    void withEveryNetworkTheQrCodeCarriesTheComputersNetworkAddress() {
        Registry::set(SettingKeys::CrewPort, QString::number(freePort()));
        Dialog dialog;
        QTest::mouseClick(dialog.find<QRadioButton>("optOn"), Qt::LeftButton);
        QCOMPARE(dialog.crew.state(), CrewView::State::Serving);
        const QString address = dialog.qrCode();
        QCOMPARE(address, dialog.pageAddress());
        QVERIFY(address.startsWith(u"http://"));
        QVERIFY(address.endsWith(QStringLiteral(":%1/?code=604218").arg(dialog.crew.port())));
        const QHostAddress host(QUrl(address).host());
        QCOMPARE(host.protocol(), QAbstractSocket::IPv4Protocol);
        QVERIFY(host != QHostAddress(QStringLiteral("0.0.0.0")));
        // The computer reaches its own network address too.
        QCOMPARE(crewGet(dialog.crew.port(), QStringLiteral("/?code=604218")).status, 200);
    }

    void aPortInUseIsSaidInTheDialog() {
        QTcpServer other;
        QVERIFY(other.listen(QHostAddress::LocalHost, 0));
        Dialog dialog;
        dialog.chooseAddress(QStringLiteral("This computer only"));
        QTest::mouseClick(dialog.find<QRadioButton>("optOn"), Qt::LeftButton);
        dialog.typePort(other.serverPort());
        QCOMPARE(dialog.state(),
                 QStringLiteral("Crew view: port %1 is in use").arg(other.serverPort()));
        QVERIFY(dialog.find<QRadioButton>("optOn")->isChecked());
        QCOMPARE(dialog.pageAddress(), QString());
        QVERIFY(dialog.find<QLabel>("lblQRCode")->pixmap().isNull());

        const quint16 port = freePort();
        dialog.typePort(port);
        QCOMPARE(dialog.crew.state(), CrewView::State::Serving);
        QCOMPARE(Registry::get(SettingKeys::CrewPort), QString::number(port));
    }

    void newCodeShowsAndServesTheNewCode() {
        Registry::set(SettingKeys::CrewAddress, QStringLiteral("127.0.0.1"));
        Registry::set(SettingKeys::CrewPort, QString::number(freePort()));
        Dialog dialog;
        QTest::mouseClick(dialog.find<QRadioButton>("optOn"), Qt::LeftButton);
        QString code;
        // One new code in a million is the old one again; a second try settles it.
        for (int attempt = 0; attempt < 2 && (code.isEmpty() || code == u"604218"); ++attempt) {
            QTest::mouseClick(dialog.find<QPushButton>("cmdNewCode"), Qt::LeftButton);
            code = dialog.find<QLineEdit>("txtCode")->text();
        }
        QVERIFY(code != u"604218");
        QCOMPARE(Registry::get(SettingKeys::CrewCode), code);
        const QString expected =
            QStringLiteral("http://127.0.0.1:%1/?code=%2").arg(dialog.crew.port()).arg(code);
        QCOMPARE(dialog.pageAddress(), expected);
        QCOMPARE(dialog.qrCode(), expected);
        QCOMPARE(crewGet(dialog.crew.port(), QStringLiteral("/?code=604218")).status, 403);
    }

    // A kept address of a network that has gone still shows, with its problem.
    void anAddressNoLongerHereShowsWithItsProblem() {
        Registry::set(SettingKeys::CrewEnabled, QStringLiteral("1"));
        Registry::set(SettingKeys::CrewAddress, QStringLiteral("192.0.2.1"));
        Dialog dialog;
        dialog.crew.start();
        QComboBox* addresses = dialog.find<QComboBox>("cboAddress");
        QCOMPARE(addresses->currentData().toString(), QStringLiteral("192.0.2.1"));
        QCOMPARE(dialog.state(),
                 QStringLiteral("Crew view: address 192.0.2.1 is not on this computer"));
        dialog.chooseAddress(QStringLiteral("This computer only"));
        dialog.typePort(freePort());
        QCOMPARE(dialog.crew.state(), CrewView::State::Serving);
    }

    void closeClosesTheDialogAndTheCrewViewRunsOn() {
        Registry::set(SettingKeys::CrewAddress, QStringLiteral("127.0.0.1"));
        Registry::set(SettingKeys::CrewPort, QString::number(freePort()));
        Dialog dialog;
        QTest::mouseClick(dialog.find<QRadioButton>("optOn"), Qt::LeftButton);
        QTest::mouseClick(dialog.find<QPushButton>("cmdClose"), Qt::LeftButton);
        QVERIFY(!dialog.form.isVisible());
        QCOMPARE(dialog.form.result(), int(QDialog::Accepted));
        QCOMPARE(crewGet(dialog.crew.port(), QStringLiteral("/?code=604218")).status, 200);
    }
};

QTEST_MAIN(TestCrewViewDialog)
#include "tst_crewviewdialog.moc"
