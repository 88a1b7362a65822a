#pragma once

#include <QImage>
#include <QString>
#include <functional>

class QWidget;

// Print and PDF Export of a chart or the wind rose: the picture of the chart as it stands.
namespace ChartPrinting {

// Prints the picture at the top left corner of a landscape page at its natural size, on the
// default printer, without a dialog.
void printPicture(const QImage& picture);

// Asks for a file ("PDF <label> Export") and writes a landscape page with the day and time of
// the export and the picture of the chart, its size taken from the chart on the screen. A
// name that does not end in ".pdf" gets it.
void saveAsPdf(const QString& label, QWidget& chart);
// The same with a picture kept by the chart itself, the wind rose's: it is taken once the
// file has been chosen, so a reading that came in meanwhile is on it.
void saveAsPdf(const QString& label, QWidget& chart, const std::function<QImage()>& picture);

// The name proposed for the file: the label and today's date, "Wind Speed 2026-11-25".
QString proposedName(const QString& label);

} // namespace ChartPrinting
