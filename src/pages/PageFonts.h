#pragma once

#include "pages/PageDocument.h"

#include <QFont>

// The fonts pages are set in. The layouts name the fonts of the team's Windows machines;
// each is mapped to an installed family of the same widths, so a page breaks its lines and
// pages alike on every machine.
namespace PageFonts {

// Maps "Tahoma", "Arial" and "Arial Narrow" to their stand-ins. Once is enough; again does
// no harm.
void install();

// The font of a style, its size in points.
QFont font(const PageDocument::Style& style);

} // namespace PageFonts
