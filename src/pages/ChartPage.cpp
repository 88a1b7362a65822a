#include "pages/ChartPage.h"

#include "pages/Viewers.h"

#include <QLocale>

namespace ChartPage {

namespace {

constexpr double Margin = 100;
constexpr double GapBelowHeading = 50;

} // namespace

QString headingDate(const QDate& date) {
    return QLocale(QLocale::English).toString(date, QStringLiteral("dddd - MMMM dd, yyyy"));
}

QString headingTime(const QTime& time) {
    const int hour = time.hour() % 12 == 0 ? 12 : time.hour() % 12;
    return QString::number(hour) + time.toString(QStringLiteral(":mm:ss")) +
           (time.hour() < 12 ? QStringLiteral("am") : QStringLiteral("pm"));
}

PageDocument layout(const QString& label, const Drawing& picture, const QSizeF& pictureSize,
                    const QDateTime& now) {
    PageDocument page = Viewers::newDocument(Viewers::Kind::Pages);
    const QString program = QStringLiteral("Tarnwick");
    page.metadata = {QStringLiteral("Tarnwick - ") + label, program, program, label,
                     QStringLiteral("Tarnwick, Pellamor, Oskerby")};
    page.style().penSize = 0;

    // The date on the left and the time on the right of one line.
    const double right = page.outputRect().right();
    const QRectF heading =
        page.writeText(Margin, Margin, right, PageDocument::Free, headingDate(now.date()));
    page.style().alignment = Qt::AlignRight;
    page.writeText(Margin, Margin, right, PageDocument::Free, headingTime(now.time()));
    page.style().alignment = Qt::AlignLeft;

    page.drawPicture(Margin, heading.bottom() + GapBelowHeading, -pictureSize.width(),
                     -pictureSize.height(), picture);
    return page;
}

} // namespace ChartPage
