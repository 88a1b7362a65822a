#include "ui/charts/ViewWindows.h"

#include "core/OpenViews.h"
#include "ui/charts/LiveViewWindow.h"
#include "ui/charts/StripChartWindow.h"
#include "ui/charts/WeatherDisplayWindow.h"
#include "ui/charts/WindGaugeWindow.h"
#include "ui/charts/WindRoseWindow.h"

#include <QMdiArea>
#include <QMdiSubWindow>

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

LiveViewWindow* show(QMdiArea& area, OpenViews& views, View view) {
    if (auto* open = dynamic_cast<LiveViewWindow*>(views.at(view))) {
        if (auto* frame = qobject_cast<QMdiSubWindow*>(open->parentWidget()))
            area.setActiveSubWindow(frame);
        return open;
    }
    LiveViewWindow* window = makerOf(view)(view, views);
    QMdiSubWindow* frame = area.addSubWindow(window);
    frame->setAttribute(Qt::WA_DeleteOnClose);
    window->joinViews();
    frame->show();
    window->show();
    return window;
}

} // namespace ViewWindows
