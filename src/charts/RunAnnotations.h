#pragma once

#include "core/ViewTable.h"

#include <QList>
#include <QString>
#include <functional>
#include <optional>

class RunTable;

// The marks that put the runs of a race log on the open strip charts: on each chart a
// caption with the run's number and the log's page identifier, at the run's time and at the
// value of the chart's quantity in the run's weather.
namespace RunAnnotations {

struct Mark {
    ViewTable::View view;
    QString plot; // the quantity of the chart the mark belongs to
    float x;      // the run's time, in the unit of the chart's time axis
    float y;      // in the unit of the quantity
    QString text; // "3 Blue Car"
};

struct Marks {
    QList<Mark> marks; // in the order they are put on the charts
    // A value could not be worked out: the marks before it stand, the rest are not made.
    bool failed = false;
};

// The marks of the runs, run by run, for the charts isOpen admits. The first run without a
// readable time ends the list; a run without a value for one quantity goes without its mark
// on that chart alone.
Marks marks(const RunTable& runs, const QString& pageIdentifier,
            const std::function<bool(ViewTable::View)>& isOpen);

// The time of a run cell on the charts' time axis: the fraction of the day, plus the whole
// days since 12/30/1899 when the cell holds a date too. nullopt for a text that names no
// moment.
std::optional<float> runTime(const QString& cell);

} // namespace RunAnnotations
