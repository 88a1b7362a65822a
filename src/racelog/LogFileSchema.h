#pragma once

#include "racelog/RaceLogData.h"

#include <QString>
#include <QStringView>
#include <array>
#include <span>

// The race log file: one SQLite database holding the table Properties (one row: the log) and
// the table Log (one row per run). Columns, their order, types and sizes are fixed here; the
// writer and the reader both follow these lists.
namespace LogFileSchema {

// Marks a SQLite file this program wrote as a race log ("TRL1"). A file is known as a race log
// by its tables and columns; the mark only tells other tools what the file is.
constexpr quint32 ApplicationId = 0x54524C31;

enum class FieldType {
    Integer,     // INTEGER
    Single,      // REAL, holding a value rounded to a 32-bit float
    Date,        // TEXT, "HH:MM:SS" for a time, "YYYY-MM-DD" for a date
    VarWChar,    // TEXT of at most `size` characters, cut by the writer
    LongVarWChar // TEXT of any length
};

struct Field {
    QStringView name;
    FieldType type;
    int size = 0; // VarWChar only
};

// Both tables have their primary key, named PrimaryKey, on this column.
inline constexpr QStringView KeyField = u"GeneralID";

extern const std::array<Field, 25> PropertiesFields;
extern const std::array<Field, 36> LogFields;

// The car number is kept in Version, a field of 10 characters, but only 5 are written.
constexpr int CarNumberLength = 5;

// The text of the log that a Properties field holds; nullptr for GeneralID, RefRun and the
// weather fields, which the log does not keep there (they are written as 0).
QString RaceLogData::*propertySource(QStringView field);

// The table Extras holds what the log keeps beyond the two tables of old, a row of text per
// value, by name; readers that know only the two tables pass it by. A file without it, or
// without a row, leaves the value at the log's default.
struct Extra {
    QStringView name;
    QString RaceLogData::*source;
};
inline const std::array<Extra, 1> Extras{{
    {u"TrackOffset", &RaceLogData::trackOffset},
}};
inline constexpr QStringView ExtrasTableSql =
    u"CREATE TABLE IF NOT EXISTS \"Extras\" (\"Name\" TEXT PRIMARY KEY, \"Value\" TEXT)";

// "CREATE TABLE ..." with the columns in order and the key constraint.
QString createTableSql(QStringView table, std::span<const Field> fields);

// The list of names for a SELECT or INSERT: "Time", "Date", ...
QString fieldList(std::span<const Field> fields);

} // namespace LogFileSchema
