#pragma once

#include "pages/PageDocument.h"

class QPainter;

// The one routine that paints a page, for the screen, the printer and PDF alike: the page
// fills `target`, in the painter's device units, and keeps its proportions only as far as
// `target` does.
void drawPage(QPainter& painter, const PageDocument& document, int page, const QRectF& target);
