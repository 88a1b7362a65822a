#include "common/TestHome.h"
#include "core/Registry.h"
#include "core/SettingKeys.h"
#include "core/ViewTable.h"

#include <QSet>
#include <QTest>

using Kind = SettingKey::Kind;

class TestSettingKeys : public QObject {
    Q_OBJECT
private slots:
    // The tree the program keeps, written out here on its own: a row moved, renamed or lost
    // in the table shows as a difference.
    void theTableHoldsTheWholeTree() {
        const QList<QPair<QString, QString>> expected{
            {"SOFTWARE\\Zorvane\\", "WeatherLog"},
            {"SOFTWARE\\Zorvane\\Main\\ScreenSettings", "Background"},
            {"SOFTWARE\\Zorvane\\Main\\ScreenSettings", "Scale"},
            {"SOFTWARE\\Zorvane\\Main\\Defaults\\", "PagerFrequency"},
            {"SOFTWARE\\Zorvane\\Main\\Defaults\\", "NoWeatherSeconds"},
            {"SOFTWARE\\Zorvane\\Main\\Defaults\\", "DeltaVP"},
            {"SOFTWARE\\Zorvane\\Main\\Defaults\\", ""},
            {"SOFTWARE\\Zorvane\\Main\\Defaults\\", "PF"},
            {"SOFTWARE\\Zorvane\\Main\\Defaults\\", "TSR"},
            {"SOFTWARE\\Zorvane\\Main\\Defaults\\", "CarNumber"},
            {"SOFTWARE\\Zorvane\\Main\\Defaults\\", "TargetET"},
            {"SOFTWARE\\Zorvane\\Main\\Tracks\\", ""},
            {"SOFTWARE\\Zorvane\\RaceLog\\Path", "0"},
            {"SOFTWARE\\Zorvane\\SerialPort", ""},
            {"SOFTWARE\\Zorvane\\SerialPort\\Devices", ""},
            {"SOFTWARE\\Zorvane\\LogColumns\\", ""},
            {"SOFTWARE\\Zorvane\\Templates\\", "MasterTemplate"},
            {"SOFTWARE\\Zorvane\\Racepak\\", "Folder"},
            {"SOFTWARE\\iCardRX\\LogFile\\", "LogFile"},
            {"SOFTWARE\\Zorvane\\iCard\\LogFile", "LogFile"},
            {"SOFTWARE\\Zorvane\\%1\\ScreenSettings", ""},
            {"SOFTWARE\\Zorvane\\CrewView", "Enabled"},
            {"SOFTWARE\\Zorvane\\CrewView", "Address"},
            {"SOFTWARE\\Zorvane\\CrewView", "Port"},
            {"SOFTWARE\\Zorvane\\CrewView", "Code"},
        };
        QList<QPair<QString, QString>> rows;
        for (const SettingKey* key : SettingKeys::All)
            rows.append({key->keyPath(), key->valueName()});
        QCOMPARE(rows, expected);
    }

    void everyRowSaysWhatItHolds() {
        QSet<QString> seen;
        for (const SettingKey* key : SettingKeys::All) {
            const QString row = key->keyPath() + u'|' + key->valueName();
            QVERIFY2(!seen.contains(row), qPrintable(row));
            seen.insert(row);
            QVERIFY2(!key->meaning.isEmpty(), qPrintable(row));
            // A key of the user's names has no value name of its own, and a value has one.
            const bool named = key->kind == Kind::Names || key->kind == Kind::Subkeys ||
                               key->kind == Kind::Placement;
            QCOMPARE(key->value.isEmpty(), named);
        }
    }

    void defaultsAreWhatTheProgramStartsFrom() {
        QCOMPARE(SettingKeys::Scale.fallback, u"1");
        QCOMPARE(SettingKeys::PagerFrequency.fallback, u"75");
        QCOMPARE(SettingKeys::NoWeatherSeconds.fallback, u"10");
        QCOMPARE(SettingKeys::NoWeatherSeconds.kind, Kind::Number);
        QCOMPARE(SettingKeys::DeltaVP.fallback, u"0");
        QCOMPARE(SettingKeys::MasterTemplate.fallback, u"Bramholdtrack.xlsx");
        QCOMPARE(SettingKeys::DefaultPF.kind, Kind::Number);
        QCOMPARE(SettingKeys::DefaultCarNumber.kind, Kind::Text);
        QCOMPARE(SettingKeys::DeltaVP.kind, Kind::Flag);
    }

    void aWindowsPlacementKeyIsNamedForItsBranch() {
        QCOMPARE(SettingKeys::placementPath(u"RaceLog"),
                 QStringLiteral("SOFTWARE\\Zorvane\\RaceLog\\ScreenSettings"));
        QCOMPARE(ViewTable::placementKey(ViewTable::View::RosePlot),
                 QStringLiteral("SOFTWARE\\Zorvane\\WindDirectionSpeed\\ScreenSettings"));
    }

    // A row reads and writes the same value as its path and name do.
    void aRowReachesItsValue() {
        TestHome home;
        Registry::set(SettingKeys::DeltaVP, QStringLiteral("1"));
        QCOMPARE(Registry::get("SOFTWARE\\Zorvane\\Main\\Defaults\\", "DeltaVP"),
                 QStringLiteral("1"));
        Registry::set("SOFTWARE\\Zorvane\\Main\\Tracks\\", "Bristol", "0");
        QCOMPARE(Registry::get(SettingKeys::Tracks, QStringLiteral("Bristol")),
                 QStringLiteral("0"));
        QCOMPARE(Registry::get(SettingKeys::ReceiverLogFile), Registry::NoKeyValue);
    }
};

QTEST_GUILESS_MAIN(TestSettingKeys)
#include "tst_settingkeys.moc"
