#pragma once

#include "core/WeatherRecord.h"

#include <QList>
#include <QString>
#include <QStringView>
#include <array>

// The eleven live views of the weather as data: each with its window name, its caption until
// the first reading, the branch of its placement in the settings, the command that shows it,
// and what it takes from a replayed weather log. The feed, the replay, "Clear Views", the
// view commands and the window placement all read this table.
namespace ViewTable {

// In the order in which a reading reaches the open views.
enum class View {
    RosePlot,
    WindDirection,
    WindSpeed,
    Weather,
    VaporPressure,
    AADA,
    ABP,
    RH,
    GR,
    CF,
    ADR,
};
constexpr int Count = 11;

// What a replayed row gives a view: its values in the order of the view's series. The
// correction factor is worked out by the replay for every row.
using Samples = QList<float> (*)(const WeatherRecord& row, float correctionFactor);

struct Entry {
    View view;
    QStringView objectName;
    QStringView caption;
    QStringView branch;  // names the key that holds its placement
    QStringView command; // the tool that shows it
    // 1 and up: the place of the view when a replayed row is handed out; 0, it shows only the
    // present and takes no part.
    int replayRank;
    Samples samples; // nullptr where replayRank is 0
    // 1 and up: the place of the view when "Clear Views" clears the charts; 0, nothing to clear.
    int clearRank;
};

extern const std::array<Entry, Count> Views;

inline const Entry& entry(View view) {
    return Views[std::size_t(view)];
}
// Where the settings keep the view's window placement.
QString placementKey(View view);
// The view a command shows; nullptr for any other command.
const Entry* findByCommand(QStringView command);

// The views in the order of a reading, of a replayed row, and of "Clear Views".
QList<View> readingOrder();
QList<View> replayOrder();
QList<View> clearOrder();

} // namespace ViewTable
