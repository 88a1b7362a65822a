#include "charts/RunAnnotations.h"

#include "core/NumberText.h"
#include "feed/CorrectionFactor.h"
#include "racelog/RunCellText.h"
#include "racelog/RunTable.h"

#include <array>

namespace RunAnnotations {

namespace {

using View = ViewTable::View;

constexpr int TimeColumn = 1;
constexpr int VPColumn = 21;
constexpr int ABPColumn = 22;
constexpr int TempColumn = 23;
// The correction factor is no column of its own; it is worked out from three.
constexpr int Computed = -1;

struct Target {
    View view;
    QStringView plot;
    int column;
};

// The order in which a run's marks are made. The temperature and density altitude lines
// take no marks.
constexpr std::array<Target, 8> Targets{{
    {View::WindSpeed, u"WS", 31},
    {View::ABP, u"ABP", ABPColumn},
    {View::RH, u"RH", 24},
    {View::ADR, u"ADR", 28},
    {View::CF, u"CF", Computed},
    {View::GR, u"GR", 26},
    {View::VaporPressure, u"VP", VPColumn},
    {View::AADA, u"AA", 19},
}};

// What a run gives a chart: no value, a value, or a value that cannot be worked out.
struct Value {
    enum { None, Some, Fault } kind;
    float y = 0;
};

Value cellValue(const RunTable& runs, int row, int column) {
    const QString text = runs.cell(row, column);
    if (!NumberText::isNumeric(text))
        return {Value::None};
    // A number too large for the chart's precision is a fault, not a missing value.
    const std::optional<float> single = NumberText::toSingle(text);
    return single ? Value{Value::Some, *single} : Value{Value::Fault};
}

Value correctionFactor(const RunTable& runs, int row) {
    const Value vp = cellValue(runs, row, VPColumn);
    const Value abp = cellValue(runs, row, ABPColumn);
    const Value temp = cellValue(runs, row, TempColumn);
    for (const Value& part : {vp, abp, temp}) {
        if (part.kind == Value::None)
            return {Value::None};
    }
    for (const Value& part : {vp, abp, temp}) {
        if (part.kind == Value::Fault)
            return {Value::Fault};
    }
    const std::optional<float> factor = ::correctionFactor(abp.y, temp.y, vp.y);
    return factor ? Value{Value::Some, *factor} : Value{Value::Fault};
}

} // namespace

std::optional<float> runTime(const QString& cell) {
    const std::optional<QDateTime> moment = RunCellText::Moment(cell);
    if (!moment)
        return std::nullopt;
    const double days = double(QDate(1899, 12, 30).daysTo(moment->date()));
    const double partOfDay = moment->time().msecsSinceStartOfDay() / 86400000.0;
    // Before day zero the whole days count back while the time of day still counts forward,
    // as the calendar the run cells come from writes such moments.
    return float(days < 0 ? days - partOfDay : days + partOfDay);
}

Marks marks(const RunTable& runs, const QString& pageIdentifier,
            const std::function<bool(ViewTable::View)>& isOpen) {
    Marks result;
    for (int row = 1; row < runs.tableRows(); ++row) {
        const std::optional<float> x = runTime(runs.cell(row, TimeColumn));
        if (!x)
            return result;
        const QString text = QString::number(row) + u' ' + pageIdentifier;
        for (const Target& target : Targets) {
            if (!isOpen(target.view))
                continue;
            const Value value = target.column == Computed ? correctionFactor(runs, row)
                                                          : cellValue(runs, row, target.column);
            if (value.kind == Value::Fault) {
                result.failed = true;
                return result;
            }
            if (value.kind == Value::Some)
                result.marks << Mark{target.view, target.plot.toString(), *x, value.y, text};
        }
    }
    return result;
}

} // namespace RunAnnotations
