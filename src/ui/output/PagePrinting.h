#pragma once

#include "pages/PageDocument.h"
#include "pages/Viewers.h"

// Pages on paper and in a PDF file, as the viewers and the race log window give them.
namespace PagePrinting {

// Prints every page after the print dialog; nothing when the user cancels it.
void printPages(const PageDocument& document);

// Asks for a PDF file, proposing today's date with the viewer's ending, and writes the pages
// to it. A name whose last three characters are not exactly "pdf" writes nothing; neither a
// cancelled dialog nor a failed write says anything.
void savePagesAsPdf(const PageDocument& document, Viewers::Kind kind);

} // namespace PagePrinting
