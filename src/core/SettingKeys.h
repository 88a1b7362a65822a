#pragma once

#include <QString>
#include <QStringView>
#include <array>

// Every place in the settings tree that the program reads or writes, in one table: the key's
// path, the value's name, what the value holds, and what stands when nothing usable is
// stored. Code reaches a setting through its row here and never spells a path of its own.
struct SettingKey {
    enum class Kind {
        Text,      // any text
        Number,    // a number as its general text
        Flag,      // "1" on, "0" off
        Colour,    // a colour as a number
        Path,      // a file or folder
        Names,     // one value for each name the user gave (tracks, columns, port values)
        Subkeys,   // one subkey for each name the user gave (race log types)
        Placement, // WindowState, Width, Height, Top and Left of one window
    };

    QStringView path;
    QStringView value; // empty for Names, Subkeys and Placement
    Kind kind;
    QStringView fallback; // what stands when nothing usable is stored; empty for nothing
    QStringView meaning;

    QString keyPath() const { return path.toString(); }
    QString valueName() const { return value.toString(); }
};

namespace SettingKeys {

using Kind = SettingKey::Kind;

// clang-format off
inline constexpr SettingKey WeatherLog{u"SOFTWARE\\Zorvane\\", u"WeatherLog", Kind::Path, u"",
    u"the weather log written last; nothing reads it back"};
inline constexpr SettingKey Background{u"SOFTWARE\\Zorvane\\Main\\ScreenSettings", u"Background",
    Kind::Colour, u"", u"the main window's background; none keeps the window's own colour"};
inline constexpr SettingKey Scale{u"SOFTWARE\\Zorvane\\Main\\ScreenSettings", u"Scale", Kind::Number,
    u"1", u"the zoom of reports and views"};
inline constexpr SettingKey PagerFrequency{u"SOFTWARE\\Zorvane\\Main\\Defaults\\", u"PagerFrequency",
    Kind::Number, u"75", u"send timer ticks between two pages, 0 to 135"};
inline constexpr SettingKey NoWeatherSeconds{u"SOFTWARE\\Zorvane\\Main\\Defaults\\",
    u"NoWeatherSeconds", Kind::Number, u"10",
    u"seconds without a weather record before the feed counts as stale, at least 2"};
inline constexpr SettingKey DeltaVP{u"SOFTWARE\\Zorvane\\Main\\Defaults\\", u"DeltaVP", Kind::Flag,
    u"0", u"predictions report the change of vapor pressure"};
inline constexpr SettingKey RaceLogTypes{u"SOFTWARE\\Zorvane\\Main\\Defaults\\", u"", Kind::Subkeys,
    u"", u"one subkey for each race log type, holding that type's defaults"};
// The defaults of a new race log, in the general key above and in each type's subkey.
inline constexpr SettingKey DefaultPF{u"SOFTWARE\\Zorvane\\Main\\Defaults\\", u"PF", Kind::Number,
    u"", u"performance factor of a new race log"};
inline constexpr SettingKey DefaultTSR{u"SOFTWARE\\Zorvane\\Main\\Defaults\\", u"TSR", Kind::Number,
    u"", u"throttle stop ratio of a new race log"};
inline constexpr SettingKey DefaultCarNumber{u"SOFTWARE\\Zorvane\\Main\\Defaults\\", u"CarNumber",
    Kind::Text, u"", u"car number of a new race log"};
inline constexpr SettingKey DefaultTargetET{u"SOFTWARE\\Zorvane\\Main\\Defaults\\", u"TargetET",
    Kind::Number, u"", u"target ET of a new race log"};
inline constexpr SettingKey Tracks{u"SOFTWARE\\Zorvane\\Main\\Tracks\\", u"", Kind::Names, u"",
    u"one value for each race track, named for the track; the data is always \"0\""};
inline constexpr SettingKey FileDialogFolder{u"SOFTWARE\\Zorvane\\RaceLog\\Path", u"0", Kind::Path,
    u"", u"the folder file dialogs used last, shared by all of them"};
inline constexpr SettingKey PortSettings{u"SOFTWARE\\Zorvane\\SerialPort", u"", Kind::Names, u"",
    u"\"0\" to \"7\": the port settings as list positions, then relay host and port"};
inline constexpr SettingKey PortDevices{u"SOFTWARE\\Zorvane\\SerialPort\\Devices", u"", Kind::Names,
    u"", u"the device each \"ComN\" entry of the port list opens"};
inline constexpr SettingKey LogColumns{u"SOFTWARE\\Zorvane\\LogColumns\\", u"", Kind::Names, u"",
    u"one value for each column caption: \"1\" shown, \"0\" not"};
inline constexpr SettingKey MasterTemplate{u"SOFTWARE\\Zorvane\\Templates\\", u"MasterTemplate",
    Kind::Path, u"Bramholdtrack.xlsx", u"the spreadsheet template, by default in the program's folder"};
inline constexpr SettingKey RacepakFolder{u"SOFTWARE\\Zorvane\\Racepak\\", u"Folder", Kind::Path, u"",
    u"the folder of the Racepak hand-over file; none puts it in the standard place"};
inline constexpr SettingKey ReceiverLogFile{u"SOFTWARE\\iCardRX\\LogFile\\", u"LogFile", Kind::Path,
    u"", u"the time-slip receiver's log file; read, never written"};
// Where the receiver's software isn't installed on this PC, the user names its log file here.
inline constexpr SettingKey TimeSlipLogFile{u"SOFTWARE\\Zorvane\\iCard\\LogFile", u"LogFile",
    Kind::Path, u"", u"the time-slip receiver's log file when the receiver's own setting is absent"};
// %1 is the window's branch: "RaceLog", "WindDirection", ...
inline constexpr SettingKey WindowPlacement{u"SOFTWARE\\Zorvane\\%1\\ScreenSettings", u"",
    Kind::Placement, u"", u"where a window stood when it was closed"};
inline constexpr SettingKey CrewEnabled{u"SOFTWARE\\Zorvane\\CrewView", u"Enabled", Kind::Flag, u"0",
    u"the main instance serves the crew view to phones on the trailer's network"};
inline constexpr SettingKey CrewAddress{u"SOFTWARE\\Zorvane\\CrewView", u"Address", Kind::Text,
    u"0.0.0.0", u"the address the crew view listens on; 0.0.0.0 is every network of this PC"};
inline constexpr SettingKey CrewPort{u"SOFTWARE\\Zorvane\\CrewView", u"Port", Kind::Number, u"8080",
    u"the TCP port of the crew view"};
inline constexpr SettingKey CrewCode{u"SOFTWARE\\Zorvane\\CrewView", u"Code", Kind::Text, u"",
    u"the six digits a phone needs to see the crew view; made at random when first read"};
// clang-format on

inline constexpr std::array<const SettingKey*, 25> All{
    &WeatherLog,       &Background,       &Scale,           &PagerFrequency,
    &NoWeatherSeconds, &DeltaVP,          &RaceLogTypes,    &DefaultPF,
    &DefaultTSR,       &DefaultCarNumber, &DefaultTargetET, &Tracks,
    &FileDialogFolder, &PortSettings,     &PortDevices,     &LogColumns,
    &MasterTemplate,   &RacepakFolder,    &ReceiverLogFile, &TimeSlipLogFile,
    &WindowPlacement,  &CrewEnabled,      &CrewAddress,     &CrewPort,
    &CrewCode};

// The key that holds a window's placement, for its branch.
QString placementPath(QStringView branch);

} // namespace SettingKeys
