#include "prediction/ThrottleStopPoints.h"

#include "core/NumberText.h"
#include "prediction/EtModel.h"

#include <cmath>

namespace ThrottleStopPoints {

namespace {

constexpr int LaneColumn = 3;
constexpr qsizetype CaptionLength = 19;

} // namespace

double correctedEt(double et, double adjustedAltitude, double sensitivity) {
    return EtModel::etAtAltitude(et, adjustedAltitude, 0.0, sensitivity);
}

std::optional<Lanes> collect(const RunCells& cells, int lastRow, const QString& performanceFactor,
                             const QString& targetEt) {
    const std::optional<double> pf = NumberText::ToDouble(performanceFactor);
    if (!pf || !NumberText::IsNumeric(targetEt))
        return std::nullopt;
    const double sensitivity = EtModel::sensitivity(*pf);
    Lanes lanes;
    for (int row = 1; row <= lastRow; ++row) {
        const std::optional<QString> etText = referenceEtText(cells, row);
        if (!etText)
            return std::nullopt;
        const std::optional<double> aa = NumberText::ToDouble(cells(row, RunColumn::AA));
        const std::optional<double> timer = NumberText::ToDouble(cells(row, RunColumn::Timer2));
        if (!aa || !timer)
            return std::nullopt;
        const Point point{correctedEt(*NumberText::ToDouble(*etText), *aa, sensitivity), *timer};
        if (cells(row, LaneColumn) == QLatin1String("Right"))
            lanes.right.push_back(point);
        else
            lanes.left.push_back(point);
    }
    return lanes;
}

std::optional<float> ratio(float x1, float y1, float x2, float y2) {
    if (y1 == y2)
        return std::nullopt;
    const float slope = float(((double(y1) - y2) / (double(x1) - x2)) * 0.01);
    if (!std::isfinite(slope))
        return std::nullopt;
    return slope;
}

QString captionWithRatio(const QString& caption, float ratio) {
    return caption.left(CaptionLength) + QStringLiteral(": ") +
           NumberText::Format(std::fabs(ratio), QStringLiteral("0.000000"));
}

std::optional<QString> ratioInCaption(const QString& caption) {
    const QString text = caption.mid(CaptionLength + 1).trimmed();
    if (!NumberText::IsNumeric(text))
        return std::nullopt;
    return text;
}

} // namespace ThrottleStopPoints
