#include "prediction/ThrottleStopPoints.h"

#include "core/NumberText.h"
#include "prediction/EtModel.h"

#include <algorithm>
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
    const std::optional<double> pf = NumberText::toDouble(performanceFactor);
    if (!pf || !NumberText::isNumeric(targetEt))
        return std::nullopt;
    const double sensitivity = EtModel::sensitivity(*pf);
    Lanes lanes;
    for (int row = 1; row <= lastRow; ++row) {
        const std::optional<QString> etText = referenceEtText(cells, row);
        if (!etText)
            return std::nullopt;
        const std::optional<double> aa = NumberText::toDouble(cells(row, RunColumn::AA));
        const std::optional<double> timer = NumberText::toDouble(cells(row, RunColumn::Timer2));
        if (!aa || !timer)
            return std::nullopt;
        const Point point{correctedEt(*NumberText::toDouble(*etText), *aa, sensitivity), *timer};
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

std::optional<LineFit> fitLine(const std::vector<Point>& points) {
    if (points.size() < 2)
        return std::nullopt;
    // Sums about the means keep the arithmetic exact enough for times that differ in the
    // third decimal.
    double meanX = 0;
    double meanY = 0;
    for (const Point& p : points) {
        meanX += p.x;
        meanY += p.y;
    }
    const double n = double(points.size());
    meanX /= n;
    meanY /= n;
    double sxx = 0;
    double sxy = 0;
    for (const Point& p : points) {
        sxx += (p.x - meanX) * (p.x - meanX);
        sxy += (p.x - meanX) * (p.y - meanY);
    }
    if (!(sxx > 0))
        return std::nullopt;

    LineFit fit;
    fit.slope = sxy / sxx;
    fit.intercept = meanY - fit.slope * meanX;
    const auto [first, last] = std::minmax_element(
        points.begin(), points.end(), [](const Point& a, const Point& b) { return a.x < b.x; });
    fit.firstX = first->x;
    fit.lastX = last->x;
    double squares = 0;
    for (const Point& p : points)
        squares += (p.y - fit.at(p.x)) * (p.y - fit.at(p.x));
    fit.rms = std::sqrt(squares / n);
    return fit;
}

QString captionWithRatio(const QString& caption, float ratio) {
    return caption.left(CaptionLength) + QStringLiteral(": ") +
           NumberText::format(std::fabs(ratio), QStringLiteral("0.000000"));
}

std::optional<QString> ratioInCaption(const QString& caption) {
    const QString text = caption.mid(CaptionLength + 1).trimmed();
    if (!NumberText::isNumeric(text))
        return std::nullopt;
    return text;
}

} // namespace ThrottleStopPoints
