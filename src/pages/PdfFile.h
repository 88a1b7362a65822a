#pragma once

#include "pages/PageDocument.h"

#include <QString>

// Writes a document as a PDF file, every page by the one draw routine. The title, author,
// creator, subject and keywords stand in the file's information dictionary and in its XMP
// metadata. The file is whole or not there: it is written beside the target and put in its
// place only when complete, so a failed write leaves an existing file as it was. False when
// the file could not be written.
bool writePdf(const PageDocument& document, const QString& path);

// The same document as PDF bytes.
QByteArray pdfBytes(const PageDocument& document);
