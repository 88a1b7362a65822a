#include "charts/ViewCaptions.h"

#include "core/NumberText.h"

namespace ViewCaptions {

namespace {

QString number(float value) {
    return NumberText::General(value);
}

QString number(qint32 value) {
    return QString::number(value);
}

QString windSpeed(const WeatherRecord& w) {
    return QStringLiteral("Wind Speed: ") + number(w.WS) + QStringLiteral(" MPH  Gust: ") +
           number(w.WG) + QStringLiteral(" MPH");
}

} // namespace

QString caption(ViewTable::View view, const WeatherRecord& w, float correctionFactor,
                const QString& statusLine) {
    using View = ViewTable::View;
    switch (view) {
    case View::RosePlot:
        return QStringLiteral("Wind Direction: ") + number(w.WD) + QStringLiteral(" deg  ") +
               windSpeed(w);
    case View::WindDirection:
        return QStringLiteral("Wind Direction: ") + number(w.WD) + QStringLiteral(" deg");
    case View::WindSpeed:
        return windSpeed(w);
    case View::Weather:
        return statusLine;
    case View::VaporPressure:
        return QStringLiteral("Vapor Pressure: ") + number(w.VP) + QStringLiteral(" Temp: ") +
               number(w.Temp) + QChar(0xB0) + u'F';
    case View::AADA:
        return QStringLiteral("Adjusted Altitude: ") + number(w.AA) +
               QStringLiteral(" Density Altitude: ") + number(w.DA);
    case View::ABP:
        return QStringLiteral("Absolute Barometric Pressure: ") + number(w.ABP);
    case View::RH:
        return QStringLiteral("Relative Humidity: ") + number(w.RH);
    case View::GR:
        return QStringLiteral("Grains per lb: ") + number(w.GR);
    case View::CF:
        return QStringLiteral("Correction Factor: ") + number(correctionFactor);
    case View::ADR:
        return QStringLiteral("Air Density Ratio: ") + number(w.ADR);
    }
    return {};
}

} // namespace ViewCaptions
