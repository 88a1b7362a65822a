#pragma once

#include "racelog/RaceLog.h"
#include "racelog/RaceLogData.h"

#include <array>
#include <cstddef>

// The text fields of a race log in one table: for each field, where the log keeps its text,
// its caption in the side panel, which also names a step of typing in it ("Edit Performance
// Factor"), and the objectName of the control that shows it there. The log and the panel both
// read it, so a field is added in one place.
namespace LogFieldTable {

struct Row {
    RaceLog::Field field;
    QString RaceLogFields::*member;
    const char* caption;
    const char* controlName;
};

// The track offset is the last of the fields.
inline constexpr std::size_t FieldCount = std::size_t(RaceLog::Field::TrackOffset) + 1;

inline constexpr std::array<Row, FieldCount> Rows{{
    {RaceLog::Field::Date, &RaceLogFields::date, "Date", "txtDate"},
    {RaceLog::Field::RaceTrack, &RaceLogFields::raceTrack, "Race Track", "cboRaceTrack"},
    {RaceLog::Field::PF, &RaceLogFields::pf, "Performance Factor", "txtPF"},
    {RaceLog::Field::TSR, &RaceLogFields::tsr, "Throttle Stop Ratio", "txtTSR"},
    {RaceLog::Field::PageIdentifier, &RaceLogFields::pageIdentifier, "Page Identifier",
     "txtPageIdentifier"},
    {RaceLog::Field::CarNumber, &RaceLogFields::carNumber, "Car Number", "txtCarNumber"},
    {RaceLog::Field::Notes, &RaceLogFields::notes, "Notes", "txtNotes"},
    {RaceLog::Field::TargetET, &RaceLogFields::targetET, "Target ET", "txtTargetET"},
    {RaceLog::Field::AA, &RaceLogFields::aa, "AA", "txtAA"},
    {RaceLog::Field::VP, &RaceLogFields::vp, "VP", "txtVP"},
    {RaceLog::Field::TrackOffset, &RaceLogFields::trackOffset, "Track Offset", "txtTrackOffset"},
}};

// Each row stands at its field's place, so a field finds its row by index; a row left out
// leaves an empty row behind and fails here.
constexpr bool rowsInFieldOrder() {
    for (std::size_t i = 0; i < Rows.size(); ++i) {
        if (Rows[i].field != RaceLog::Field(i) || !Rows[i].member || !Rows[i].caption ||
            !Rows[i].controlName)
            return false;
    }
    return true;
}
static_assert(rowsInFieldOrder(), "LogFieldTable::Rows must hold every field once, in order");

constexpr const Row& row(RaceLog::Field field) {
    return Rows[std::size_t(field)];
}

} // namespace LogFieldTable
