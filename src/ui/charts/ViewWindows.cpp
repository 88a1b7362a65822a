#include "ui/charts/ViewWindows.h"

#include "core/OpenViews.h"
#include "ui/charts/LiveViewWindow.h"
#include "ui/charts/StripChartWindow.h"
#include "ui/charts/WeatherDisplayWindow.h"
#include "ui/charts/WindGaugeWindow.h"
#include "ui/charts/WindRoseWindow.h"

#include <QMdiArea>
#include <QMdiSubWindow>
#include <array>

namespace ViewWindows {

namespace {

using View = ViewTable::View;
using Maker = LiveViewWindow* (*)(View view, OpenViews& views);

// The window of each view, in the order of the view table; nullptr where none is built yet.
const std::array<Maker, ViewTable::Count> Makers{{
    WindRoseWindow::make,       // RosePlot
    WindGaugeWindow::make,      // WindDirection
    StripChartWindow::make,     // WindSpeed
    WeatherDisplayWindow::make, // Weather
    StripChartWindow::make,     // VaporPressure
    StripChartWindow::make,     // AADA
    StripChartWindow::make,     // ABP
    StripChartWindow::make,     // RH
    StripChartWindow::make,     // GR
    StripChartWindow::make,     // CF
    StripChartWindow::make,     // ADR
}};

} // namespace

bool canShow(View view) {
    return Makers[std::size_t(view)] != nullptr;
}

LiveViewWindow* show(QMdiArea& area, OpenViews& views, View view) {
    if (auto* open = dynamic_cast<LiveViewWindow*>(views.at(view))) {
        if (auto* frame = qobject_cast<QMdiSubWindow*>(open->parentWidget()))
            area.setActiveSubWindow(frame);
        return open;
    }
    if (!canShow(view))
        return nullptr;
    LiveViewWindow* window = Makers[std::size_t(view)](view, views);
    QMdiSubWindow* frame = area.addSubWindow(window);
    frame->setAttribute(Qt::WA_DeleteOnClose);
    window->joinViews();
    frame->show();
    window->show();
    return window;
}

} // namespace ViewWindows
