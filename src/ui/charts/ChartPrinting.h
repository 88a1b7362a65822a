#pragma once

#include "pages/Drawing.h"

#include <QString>
#include <functional>

class QCustomPlot;
class QWidget;

// Print and PDF Export of a chart or the wind rose: the chart drawn anew for the printer or
// the page, at its resolution, as it stands.
namespace ChartPrinting {

// A chart of the chart control as it stands, drawn at its size on the screen. Every line is
// drawn at least a pixel of the chart wide, so a fine printer draws no hairlines, and no text
// comes from a picture kept for the screen.
Drawing drawingOf(QCustomPlot& chart);

// Prints the drawing at the top left corner of a landscape page at its size on the screen, on
// the default printer, without a dialog.
void print(const Drawing& drawing);

// Asks for a file ("PDF <label> Export") and writes a landscape page with the day and time of
// the export and the drawing of the chart, its size taken from the chart on the screen. The
// drawing is made once the file has been chosen, so a reading that came in meanwhile is on it.
// A name that does not end in ".pdf" gets it.
void saveAsPdf(const QString& label, QWidget& chart, const std::function<Drawing()>& drawing);
// The same for a chart of the chart control.
void saveAsPdf(const QString& label, QCustomPlot& chart);

// The name proposed for the file: the label and today's date, "Wind Speed 2026-11-25".
QString proposedName(const QString& label);

} // namespace ChartPrinting
