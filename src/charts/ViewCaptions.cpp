#include "charts/ViewCaptions.h"

#include "feed/WeatherQuantities.h"

namespace ViewCaptions {

namespace {

QString windSpeed(const WeatherRecord& w) {
    return QStringLiteral("Wind Speed: ") + valueText(w.WS) + QStringLiteral(" MPH  Gust: ") +
           valueText(w.WG) + QStringLiteral(" MPH");
}

} // namespace

QString caption(ViewTable::View view, const WeatherRecord& w, float correctionFactor,
                const QString& statusLine) {
    using View = ViewTable::View;
    switch (view) {
    case View::RosePlot:
        return QStringLiteral("Wind Direction: ") + valueText(w.WD) + QStringLiteral(" deg  ") +
               windSpeed(w);
    case View::WindDirection:
        return QStringLiteral("Wind Direction: ") + valueText(w.WD) + QStringLiteral(" deg");
    case View::WindSpeed:
        return windSpeed(w);
    case View::Weather:
        return statusLine;
    case View::VaporPressure:
        return QStringLiteral("Vapor Pressure: ") + valueText(w.VP) + QStringLiteral(" Temp: ") +
               valueText(w.Temp) + QChar(0xB0) + u'F';
    case View::AADA:
        return QStringLiteral("Adjusted Altitude: ") + valueText(w.AA) +
               QStringLiteral(" Density Altitude: ") + valueText(w.DA);
    case View::ABP:
        return QStringLiteral("Absolute Barometric Pressure: ") + valueText(w.ABP);
    case View::RH:
        return QStringLiteral("Relative Humidity: ") + valueText(w.RH);
    case View::GR:
        return QStringLiteral("Grains per lb: ") + valueText(w.GR);
    case View::CF:
        return QStringLiteral("Correction Factor: ") + valueText(correctionFactor);
    case View::ADR:
        return QStringLiteral("Air Density Ratio: ") + valueText(w.ADR);
    }
    return {};
}

} // namespace ViewCaptions
