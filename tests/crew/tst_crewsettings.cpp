// The crew view's settings: off until the team turns it on, every network on port 8080, and a
// code made once and kept.
#include "common/TestHome.h"
#include "core/Registry.h"
#include "crew/CrewSettings.h"

#include <QRegularExpression>
#include <QTest>

class TestCrewSettings : public QObject {
    Q_OBJECT

private slots:
    void nothingStoredGivesTheDefaults() {
        TestHome home;
        QVERIFY(!CrewSettings::enabled());
        QCOMPARE(CrewSettings::address(), QStringLiteral("0.0.0.0"));
        QCOMPARE(CrewSettings::port(), quint16(8080));
    }

    void storedValuesAreRead() {
        TestHome home;
        Registry::set(SettingKeys::CrewEnabled, QStringLiteral("1"));
        Registry::set(SettingKeys::CrewAddress, QStringLiteral("192.168.4.1"));
        Registry::set(SettingKeys::CrewPort, QStringLiteral("8123"));
        QVERIFY(CrewSettings::enabled());
        QCOMPARE(CrewSettings::address(), QStringLiteral("192.168.4.1"));
        QCOMPARE(CrewSettings::port(), quint16(8123));
    }

    void aPortOutOfRangeIsTheDefault() {
        TestHome home;
        for (const char* text : {"0", "65536", "http", "-1"}) {
            Registry::set(SettingKeys::CrewPort, QLatin1String(text));
            QCOMPARE(CrewSettings::port(), quint16(8080));
        }
    }

    void theCodeIsMadeOnceAndKept() {
        TestHome home;
        QCOMPARE(Registry::get(SettingKeys::CrewCode), Registry::NoKeyValue);
        const QString code = CrewSettings::code();
        QVERIFY(QRegularExpression(QStringLiteral("^[0-9]{6}$")).match(code).hasMatch());
        QCOMPARE(Registry::get(SettingKeys::CrewCode), code);
        QCOMPARE(CrewSettings::code(), code);
    }

    void aKeptCodeIsNotReplaced() {
        TestHome home;
        Registry::set(SettingKeys::CrewCode, QStringLiteral("004217"));
        QCOMPARE(CrewSettings::code(), QStringLiteral("004217"));
    }

    // Codes from many fresh homes are not all the same: they are drawn, not fixed.
    void codesAreDrawnAtRandom() {
        QSet<QString> codes;
        for (int i = 0; i < 5; ++i) {
            TestHome home;
            codes.insert(CrewSettings::code());
        }
        QVERIFY(codes.size() > 1);
    }
};

QTEST_GUILESS_MAIN(TestCrewSettings)
#include "tst_crewsettings.moc"
