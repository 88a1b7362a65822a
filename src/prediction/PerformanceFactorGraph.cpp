#include "prediction/PerformanceFactorGraph.h"

#include "core/NumberText.h"
#include "core/Palette.h"
#include "prediction/ComputeFault.h"
#include "prediction/EtModel.h"
#include "racelog/RaceLog.h"

namespace PerformanceFactorGraph {

namespace {

// The line colours as colour numbers, red in the lowest byte.
constexpr std::array<quint32, 7> PlotColours{
    0xFFFFFF, // white
    0x00FF00, // green
    0x0000FF, // red
    0x00FFFF, // yellow
    0xFF0000, // blue
    0xFFFF00, // cyan
    0xFF00FF, // magenta
};

// The quotient of a step; nothing to divide by is a fault, as it is in the predictions.
double divided(double numerator, double denominator) {
    if (denominator == 0.0)
        throw ComputeFault{};
    return ComputeCheck::checked(numerator / denominator);
}

} // namespace

double slope(double et, double aa, double pf) {
    // The line was once to pivot 500 ft away for runs far from sea level, but the test asks
    // for an AA above 100 and below -100 at once, so it always pivots on the run itself. The
    // graphs teams have tuned their factors on look this way, so it stays.
    const double anchor = (aa > 100.0 && aa < -100.0) ? 500.0 : 0.0;
    const double corrected =
        ComputeCheck::checked(et + EtModel::sensitivity(pf) * ((anchor - aa + 1.0) * et));
    return divided(anchor - aa, ComputeCheck::checked(corrected - et));
}

QList<Run> usableRuns(const RunCells& cells, int lastRow, double pf) {
    QList<Run> runs;
    try {
        for (int row = 1; row <= lastRow; ++row) {
            const std::optional<QString> et = referenceEtText(cells, row);
            const QString aa = cells(row, RunColumn::AA);
            if (!et || !NumberText::isNumeric(aa))
                break;
            Run run{ComputeCheck::converted(*et), ComputeCheck::converted(aa)};
            run.slope = slope(run.et, run.aa, pf);
            runs.append(run);
        }
    } catch (const ComputeFault&) {
        // The graph shows the runs up to this one.
    }
    return runs;
}

QList<Run> usableRuns(const RaceLog& log, double pf) {
    const RunTable& table = log.runs();
    return usableRuns([&table](int row, int column) { return table.cell(row, column); },
                      table.tableRows() - 1, pf);
}

void reslope(QList<Run>& runs, double pf) {
    for (Run& run : runs)
        run.slope = slope(run.et, run.aa, pf);
}

Line lineThrough(const Run& run) {
    const double rise = run.slope * run.et;
    return {{divided(rise + HalfLength, run.slope), divided(rise - HalfLength, run.slope)},
            {run.aa + HalfLength, run.aa - HalfLength}};
}

QColor plotColour(int plot) {
    const int index =
        ((plot - 1) % int(PlotColours.size()) + int(PlotColours.size())) % int(PlotColours.size());
    return Palette::toColor(PlotColours[std::size_t(index)]);
}

} // namespace PerformanceFactorGraph
