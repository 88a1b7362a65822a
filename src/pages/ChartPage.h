#pragma once

#include "pages/Drawing.h"
#include "pages/PageDocument.h"

#include <QDateTime>
#include <QString>

// The page a chart or the wind rose is saved on as PDF: a landscape page that names the chart
// in its metadata, with a heading of the day and the time of the export and the chart's
// drawing below it.
namespace ChartPage {

// The drawing is placed at the size given in tenths of a millimetre.
PageDocument layout(const QString& label, const Drawing& picture, const QSizeF& pictureSize,
                    const QDateTime& now);

// "Wednesday - November 25, 2026" and "2:35:07pm", the two ends of the heading.
QString headingDate(const QDate& date);
QString headingTime(const QTime& time);

} // namespace ChartPage
