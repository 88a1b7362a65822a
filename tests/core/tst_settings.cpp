#include "common/TestHome.h"
#include "core/Registry.h"
#include "core/Settings.h"

#include <QFile>
#include <QSettings>
#include <QTest>

using namespace Registry;

namespace {

const QString mainKey = QStringLiteral("SOFTWARE\\Zorvane\\Main\\ScreenSettings");
const QString defaultsKey = QStringLiteral("SOFTWARE\\Zorvane\\Main\\Defaults\\");

} // namespace

class TestSettings : public QObject {
    Q_OBJECT
private slots:
    void emptyValueReadsLikeAnAbsentOne() {
        TestHome home;
        set(defaultsKey, "CarNumber", "");
        QCOMPARE(get(defaultsKey, "CarNumber"), NoKeyValue);
        QCOMPARE(get(defaultsKey, "NeverWritten"), NoKeyValue);
        QCOMPARE(get("SOFTWARE\\Zorvane\\NoSuchKey\\", "PF"), NoKeyValue);
    }

    void valueComesBackWhole() {
        TestHome home;
        set(defaultsKey, "CarNumber", "A 1234, \"x\"");
        QCOMPARE(get(defaultsKey, "CarNumber"), QString("A 1234, \"x\""));
    }

    void noHiveReadsTheSentinelAndWritesNothing() {
        TestHome home;
        setKeyValue(NoHive, defaultsKey, "PF", "3");
        QCOMPARE(keyValue(NoHive, defaultsKey, "PF"), NoKeyValue);
        QCOMPARE(get(defaultsKey, "PF"), NoKeyValue);
    }

    void scaleIsKeptBetweenAQuarterAndFour_data() {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<double>("scale");
        QTest::newRow("too large") << "9" << 4.0;
        QTest::newRow("too small") << "0.1" << 0.25;
        QTest::newRow("not a number") << "abc" << 1.0;
        QTest::newRow("in range") << "1.5" << 1.5;
        QTest::newRow("upper bound") << "4" << 4.0;
        QTest::newRow("lower bound") << "0.25" << 0.25;
    }
    void scaleIsKeptBetweenAQuarterAndFour() {
        QFETCH(QString, stored);
        QFETCH(double, scale);
        TestHome home;
        set(mainKey, "Scale", stored);
        QCOMPARE(Settings::loadScale(), scale);
    }

    void scaleIsOneWhenNoneIsStored() {
        TestHome home;
        QCOMPARE(Settings::loadScale(), 1.0);
    }

    void scaleIsSavedAsGeneralNumberText() {
        TestHome home;
        Settings::saveScale(1.25);
        QCOMPARE(get(mainKey, "Scale"), QString("1.25"));
        QCOMPARE(Settings::loadScale(), 1.25);
    }

    void deletingAValueAnswersZeroThenTheSentinel() {
        TestHome home;
        set(defaultsKey, "PF", "3");
        QCOMPARE(deleteKeyValue(HKEY_CURRENT_USER, defaultsKey, "PF"), QString("0"));
        QCOMPARE(get(defaultsKey, "PF"), NoKeyValue);
        QCOMPARE(deleteKeyValue(HKEY_CURRENT_USER, defaultsKey, "PF"), NoKeyValue);
        QCOMPARE(deleteKeyValue(NoHive, defaultsKey, "PF"), NoKeyValue);
    }

    void deletingASubkeyRemovesItsValues() {
        TestHome home;
        set(defaultsKey + "Super Gas", "PF", "3");
        set(defaultsKey + "Stock", "PF", "4");
        QVERIFY(deleteKey(HKEY_CURRENT_USER, defaultsKey, "Super Gas"));
        QCOMPARE(get(defaultsKey + "Super Gas", "PF"), NoKeyValue);
        QCOMPARE(get(defaultsKey + "Stock", "PF"), QString("4"));
        QVERIFY(!deleteKey(HKEY_CURRENT_USER, defaultsKey, "Super Gas"));
    }

    void deletingAKeyWithoutAHiveFails() {
        TestHome home;
        set(defaultsKey + "Stock", "PF", "4");
        QVERIFY(!deleteKey(NoHive, defaultsKey, "Stock"));
        QCOMPARE(get(defaultsKey + "Stock", "PF"), QString("4"));
    }

    void subkeysAndValuesAreListed() {
        TestHome home;
        set(defaultsKey, "PF", "3");
        set(defaultsKey, "TSR", "1.2");
        set(defaultsKey + "Stock", "PF", "4");
        set(defaultsKey + "Super Gas", "PF", "5");
        QStringList subKeys;
        QVERIFY(enumSubKeys(HKEY_CURRENT_USER, defaultsKey, subKeys));
        QCOMPARE(subKeys, QStringList({"Stock", "Super Gas"}));
        QStringList values;
        QVERIFY(enumValues(HKEY_CURRENT_USER, defaultsKey, values));
        values.sort();
        QCOMPARE(values, QStringList({"PF", "TSR"}));
    }

    // The store's own key separators and its escape character are names like any other.
    void namesWithSeparatorsRoundTrip_data() {
        QTest::addColumn<QString>("name");
        QTest::newRow("slash") << "Route 66 / North";
        QTest::newRow("backslash") << "C:\\Tracks";
        QTest::newRow("percent") << "50%";
        QTest::newRow("an escape typed") << "A%2FB%5c%25";
        QTest::newRow("all") << "/\\%/";
    }
    void namesWithSeparatorsRoundTrip() {
        QFETCH(QString, name);
        TestHome home;
        const QString tracksKey = QStringLiteral("SOFTWARE\\Zorvane\\Main\\Tracks\\");
        set(tracksKey, name, "value");
        set(defaultsKey + keyName(name), "PF", "4");
        QCOMPARE(get(tracksKey, name), QStringLiteral("value"));
        QCOMPARE(get(defaultsKey + keyName(name), "PF"), QStringLiteral("4"));
        QStringList values;
        QVERIFY(enumValues(HKEY_CURRENT_USER, tracksKey, values));
        QCOMPARE(values, QStringList{name});
        QStringList subKeys;
        QVERIFY(enumSubKeys(HKEY_CURRENT_USER, defaultsKey, subKeys));
        QCOMPARE(subKeys, QStringList{name});
        QCOMPARE(deleteKeyValue(HKEY_CURRENT_USER, tracksKey, name), QStringLiteral("0"));
        QCOMPARE(get(tracksKey, name), NoKeyValue);
        QVERIFY(deleteKey(HKEY_CURRENT_USER, defaultsKey, name));
        QVERIFY(!enumSubKeys(HKEY_CURRENT_USER, defaultsKey, subKeys));
    }

    void anUnopenableKeyLeavesTheListUntouched() {
        TestHome home;
        QStringList names{"kept"};
        QVERIFY(!enumSubKeys(HKEY_CURRENT_USER, "SOFTWARE\\Zorvane\\Missing\\", names));
        QVERIFY(!enumValues(HKEY_CURRENT_USER, "SOFTWARE\\Zorvane\\Missing\\", names));
        QVERIFY(!enumValues(NoHive, defaultsKey, names));
        QCOMPARE(names, QStringList{"kept"});
    }

    void nothingIsWrittenUntilAValueIs() {
        TestHome home;
        QCOMPARE(get(defaultsKey, "PF"), NoKeyValue);
        QVERIFY(!QFile::exists(storeFilePath()));
        set(defaultsKey, "PF", "3");
        QVERIFY(QFile::exists(storeFilePath()));
    }

    // A write is in the file when the call returns, for another instance and after a crash.
    void aWriteReachesTheFileAtOnce() {
        TestHome home;
        const auto stored = [] {
            QFile file(storeFilePath());
            return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        };
        set(defaultsKey, "PF", "3.25");
        QVERIFY(stored().contains("PF=3.25"));
        QCOMPARE(deleteKeyValue(HKEY_CURRENT_USER, defaultsKey, "PF"), QStringLiteral("0"));
        QVERIFY(!stored().contains("PF="));
    }

    // The tree is kept in memory and the file watched: a change made outside the program, by
    // another instance or by hand, is what a read gives once the program has heard of it.
    void aChangeFromOutsideIsReadOnceHeardOf() {
        TestHome home;
        set(defaultsKey, "PF", "3");
        QCOMPARE(get(defaultsKey, "PF"), QStringLiteral("3"));
        QSettings other(storeFilePath(), QSettings::IniFormat);
        other.setValue("SOFTWARE/Zorvane/Main/Defaults/PF", "4.5");
        other.setValue("SOFTWARE/Zorvane/Main/Defaults/TSR", "1.1");
        other.sync();
        QTRY_COMPARE(get(defaultsKey, "PF"), QStringLiteral("4.5"));
        QCOMPARE(get(defaultsKey, "TSR"), QStringLiteral("1.1"));

        // Rewritten in place rather than replaced.
        QFile file(storeFilePath());
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write("[SOFTWARE]\nZorvane\\Main\\Defaults\\PF=7\n");
        file.close();
        QTRY_COMPARE(get(defaultsKey, "PF"), QStringLiteral("7"));
        QCOMPARE(get(defaultsKey, "TSR"), NoKeyValue);
    }

    // Between two changes a read looks at no file: until the watch reports the change, the
    // tree in memory answers.
    void aReadBetweenChangesLooksAtNoFile() {
        TestHome home;
        set(defaultsKey, "PF", "3");
        QCOMPARE(get(defaultsKey, "PF"), QStringLiteral("3"));
        QFile file(storeFilePath());
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write("[SOFTWARE]\nZorvane\\Main\\Defaults\\PF=4.5\n");
        file.close();
        QCOMPARE(get(defaultsKey, "PF"), QStringLiteral("3"));
        QTRY_COMPARE(get(defaultsKey, "PF"), QStringLiteral("4.5"));
    }

    // A change here does not undo what another instance wrote since this one last read.
    void aWriteKeepsWhatAnotherInstanceWrote() {
        TestHome home;
        set(defaultsKey, "PF", "3");
        QSettings other(storeFilePath(), QSettings::IniFormat);
        other.setValue("SOFTWARE/Zorvane/Main/Defaults/TSR", "1.1");
        other.sync();
        set(defaultsKey, "CarNumber", "7X");
        QSettings reader(storeFilePath(), QSettings::IniFormat);
        QCOMPARE(reader.value("SOFTWARE/Zorvane/Main/Defaults/TSR").toString(),
                 QStringLiteral("1.1"));
        QCOMPARE(reader.value("SOFTWARE/Zorvane/Main/Defaults/CarNumber").toString(),
                 QStringLiteral("7X"));
    }
};

QTEST_GUILESS_MAIN(TestSettings)
#include "tst_settings.moc"
