#include "prediction/AirOutlook.h"

#include "core/NumberText.h"

#include <QLocale>
#include <cmath>

namespace AirOutlook {

namespace {

constexpr double MsecsPerHour = 3600.0 * 1000.0;

QString feet(double aa) {
    return QLocale(QLocale::English).toString(shownFeet(aa));
}

} // namespace

std::optional<Forecast> forecast(const QList<Sample>& samples, qint64 now) {
    if (samples.size() < 2 || samples.back().at - samples.front().at < FewestMinutes * 60 * 1000)
        return std::nullopt;
    // Hours before now, centred on their mean so the sums keep their digits.
    double meanHours = 0;
    double meanAa = 0;
    for (const Sample& sample : samples) {
        meanHours += double(sample.at - now) / MsecsPerHour;
        meanAa += sample.aa;
    }
    meanHours /= double(samples.size());
    meanAa /= double(samples.size());
    double sxy = 0;
    double sxx = 0;
    for (const Sample& sample : samples) {
        const double dx = double(sample.at - now) / MsecsPerHour - meanHours;
        sxy += dx * (sample.aa - meanAa);
        sxx += dx * dx;
    }
    Forecast ahead;
    ahead.feetPerHour = sxy / sxx;
    for (std::size_t i = 0; i < HorizonMinutes.size(); ++i)
        ahead.aa[i] = meanAa + ahead.feetPerHour * (HorizonMinutes[i] / 60.0 - meanHours);
    return ahead;
}

QString line(const std::optional<Forecast>& forecast, const Ets& ets) {
    if (!forecast)
        return QStringLiteral("Outlook: not enough weather");
    QStringList horizons;
    for (std::size_t i = 0; i < HorizonMinutes.size(); ++i) {
        // The first horizon names what its numbers are; the others follow its lead.
        QString text =
            i == 0 ? QStringLiteral("In %1 min: AA %2 ft") : QStringLiteral("%1 min: %2");
        text = text.arg(HorizonMinutes[i]).arg(feet(forecast->aa[i]));
        if (ets[i])
            text +=
                QStringLiteral(" \u2192 ") + NumberText::format(*ets[i], QStringLiteral("0.0000"));
        horizons << text;
    }
    QString outlook = horizons.join(QStringLiteral(" \u00b7 "));
    if (std::fabs(forecast->feetPerHour) > FastFeetPerHour)
        outlook += QStringLiteral(" (air changing fast: %1%2 ft/h)")
                       .arg(forecast->feetPerHour > 0 ? QStringLiteral("+") : QString())
                       .arg(qRound(forecast->feetPerHour));
    return outlook;
}

int shownFeet(double aa) {
    return qRound(aa);
}

} // namespace AirOutlook
