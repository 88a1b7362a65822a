#pragma once

#include <QList>
#include <QStringView>
#include <array>

// The 34 columns of the run table and everything the program knows of each: its header, the
// field of the race log file it is stored in, how a loaded value is shown, the settings
// value, menu item and check box by which it is hidden or shown, and how its cells are typed. Every
// part of the program that names a column takes it from here, so the numbers never disagree.
//
// Two oddities are deliberate and must stay: "Timer 2" is column 14 and "Timer 1" column 15,
// and column 18 has the header "T. Temp" but is "Track Temp" in the menu and the settings.
namespace ColumnTable {

// How a value read from the file is written into its cell.
enum class LoadForm {
    None,              // the run number column: not on file
    TimeOfDay,         // "hh:mmam/pm"
    RunDate,           // "MM/DD/YY"
    AsStored,          // the text as it is on file
    Pattern,           // the number through the digit pattern, also when it is 0
    PatternUnlessZero, // the number through the digit pattern; a 0 leaves the cell as it was
    General,           // the shortest text of the 32-bit value, also when it is 0
};

// How the user types a cell of the column, which picks the editor that opens on it.
enum class Entry {
    NotTyped, // the run number
    Time,     // a time of day, put right on leaving
    Date,     // a date, put right on leaving
    Lane,     // "Left" or "Right", picked from a list
    Number,   // a signed number, emptied on leaving when it is none
};

struct Column {
    int number;
    QStringView caption; // header cell of row 0
    QStringView meaning;
    QStringView logField; // field of the Log table; empty for the run number
    LoadForm loadForm;
    QStringView pattern; // for Pattern and PatternUnlessZero
    // Value name in the log columns setting, empty for the columns that are always
    // shown. It is also the caption of the column's check box in the column dialogue.
    QStringView visibilityValue;
    QStringView menuItem; // objectName of the "Show Column" menu item
    QStringView menuText;
    QStringView checkBox; // objectName of the check box in the column dialogue
    QStringView checkBoxToolTip;
    Entry entry;

    bool shownOnlyIfNotZero() const { return loadForm == LoadForm::PatternUnlessZero; }
    bool canBeHidden() const { return !visibilityValue.isEmpty(); }
};

constexpr int Count = 34;
constexpr int HideableCount = 31;

// All columns, by number: Columns[n].number == n.
extern const std::array<Column, Count> Columns;

// The hideable columns in the order of the "Show Column" submenu, which groups the timing
// marks and puts "Dial-In" and "Track Temp" before them.
extern const std::array<int, HideableCount> ShowColumnMenuOrder;

// Every column number, 0 to 33: what a view that hides no column shows.
QList<int> everyColumn();

// The column that a Log field is read into and written from, found without regard to case
// ("LANE", "dialin", "Timer1"); -1 when no column has that field.
int columnOfLogField(QStringView fieldName);

} // namespace ColumnTable
