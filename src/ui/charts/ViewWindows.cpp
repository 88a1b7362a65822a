#include "ui/charts/ViewWindows.h"

#include "ui/charts/LiveViewWindow.h"
#include "ui/charts/StripChartWindow.h"
#include "ui/charts/WeatherDisplayWindow.h"
#include "ui/charts/WindGaugeWindow.h"
#include "ui/charts/WindRoseWindow.h"
#include "ui/shell/SingleWindows.h"

namespace ViewWindows {

namespace {

using View = ViewTable::View;
using Maker = LiveViewWindow* (*)(View view, OpenViews& views);

// The window of each view; every view not named here is a strip chart.
Maker makerOf(View view) {
    switch (view) {
    case View::RosePlot:
        return WindRoseWindow::make;
    case View::WindDirection:
        return WindGaugeWindow::make;
    case View::Weather:
        return WeatherDisplayWindow::make;
    case View::WindSpeed:
    case View::VaporPressure:
    case View::AADA:
    case View::ABP:
    case View::RH:
    case View::GR:
    case View::CF:
    case View::ADR:
        break;
    }
    return StripChartWindow::make;
}

} // namespace

void show(QMdiArea& area, OpenViews& views, View view) {
    SingleWindows::show(area, ViewTable::entry(view).objectName.toString(), [&] {
        LiveViewWindow* window = makerOf(view)(view, views);
        window->joinViews();
        return window;
    });
}

} // namespace ViewWindows
