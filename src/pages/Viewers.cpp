#include "pages/Viewers.h"

#include "core/DateText.h"

#include <QLocale>

namespace Viewers {

namespace {

// clang-format off
const std::array<Viewer, 2> Table{{
    {Kind::Pages, u"frmVPE", u"Viewer", u"View", u"Tarnwick - Viewer", u"Tarnwick", true, {},
     QRectF(QPointF(100, 100), QPointF(1900, 2600)), u"Tahoma", u".pdf"},
    {Kind::Report, u"frmReportViewer", u"Report Viewer", u"Report", u"Tarnwick - Report",
     u"Tarnwick Report", false, QSizeF(2159, 2794), QRectF(QPointF(100, 100), QPointF(2060, 2694)),
     u"", u" Report.pdf"},
}};
// clang-format on

QRectF turned(const QRectF& rect) {
    return QRectF(rect.top(), rect.left(), rect.height(), rect.width());
}

} // namespace

const Viewer& viewer(Kind kind) {
    return Table[int(kind)];
}

QSizeF standardPageSize() {
    return QLocale::system().measurementSystem() == QLocale::ImperialUSSystem ? QSizeF(2159, 2794)
                                                                              : QSizeF(2100, 2970);
}

PageDocument newDocument(Kind kind) {
    const Viewer& row = viewer(kind);
    const QSizeF upright = row.pageSize.isEmpty() ? standardPageSize() : row.pageSize;
    PageDocument document(row.landscape ? upright.transposed() : upright,
                          row.landscape ? turned(row.outputRect) : row.outputRect);
    const QString program = QStringLiteral("Tarnwick");
    document.metadata = {row.title.toString(), program, program, row.subject.toString(),
                         QStringLiteral("Tarnwick, Pellamor, Oskerby")};
    if (!row.font.isEmpty()) {
        document.style().fontFamily = row.font.toString();
        document.style().fontSize = 10;
    }
    return document;
}

QString proposedPdfName(Kind kind, const QDate& today) {
    return DateText::fileStamp(today) + viewer(kind).pdfEnding.toString();
}

bool isPdfName(const QString& path) {
    return path.endsWith(QStringLiteral("pdf"), Qt::CaseSensitive);
}

} // namespace Viewers
