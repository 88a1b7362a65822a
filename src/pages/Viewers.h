#pragma once

#include "pages/PageDocument.h"

#include <QDate>
#include <QRectF>
#include <QSizeF>
#include <QStringView>
#include <array>

// The two windows that show printed pages: the viewer of race log pages and the report
// viewer. They are one design; this table holds what differs between them, and each
// document they show starts from its row.
namespace Viewers {

enum class Kind { Pages, Report };

struct Viewer {
    Kind kind;
    QStringView objectName;
    QStringView caption;
    QStringView branch; // names the key of its placement
    QStringView title;
    QStringView subject; // also the caption of the preview
    bool landscape;
    QSizeF pageSize;   // tenths of a millimetre, upright; empty for the standard size
    QRectF outputRect; // tenths of a millimetre, on the upright page
    QStringView font;  // the font the document opens with; empty for none
    QStringView pdfEnding;
};

const Viewer& viewer(Kind kind);

// The standard page: letter where the system measures in inches, A4 elsewhere.
QSizeF standardPageSize();

// A new empty document as the viewer opens it: page, output rectangle, metadata and font. A
// page on its side turns its output rectangle with it.
PageDocument newDocument(Kind kind);

// The name the PDF dialog proposes: the date as "2007-03-09", then the viewer's ending.
QString proposedPdfName(Kind kind, const QDate& today);

// Whether a chosen name is written: only one whose last three characters are exactly "pdf".
bool isPdfName(const QString& path);

} // namespace Viewers
