#include "pages/PdfFile.h"

#include "pages/PagePainter.h"

#include <QBuffer>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QRegularExpression>
#include <QSaveFile>

namespace {

// Fine enough that a printed line of text is placed as on paper.
constexpr int Resolution = 1200;

QString xmlEscaped(const QString& text) {
    return text.toHtmlEscaped();
}

// Qt writes the title and creator into the information dictionary, and the rest only where
// it is given as XMP: the whole set goes there too, for readers that look at XMP alone.
QByteArray xmpMetadata(const PageDocument::Metadata& data) {
    const QString packet =
        QStringLiteral(
            "<?xpacket begin='' id='W5M0MpCehiHzreSzNTczkc9d'?>"
            "<x:xmpmeta xmlns:x='adobe:ns:meta/'>"
            "<rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#'>"
            "<rdf:Description rdf:about='' xmlns:dc='http://purl.org/dc/elements/1.1/' "
            "xmlns:pdf='http://ns.adobe.com/pdf/1.3/' xmlns:xmp='http://ns.adobe.com/xap/1.0/'>"
            "<dc:title><rdf:Alt><rdf:li xml:lang='x-default'>%1</rdf:li></rdf:Alt></dc:title>"
            "<dc:creator><rdf:Seq><rdf:li>%2</rdf:li></rdf:Seq></dc:creator>"
            "<dc:description><rdf:Alt><rdf:li xml:lang='x-default'>%3</rdf:li></rdf:Alt>"
            "</dc:description>"
            "<pdf:Keywords>%4</pdf:Keywords>"
            "<xmp:CreatorTool>%5</xmp:CreatorTool>"
            "</rdf:Description></rdf:RDF></x:xmpmeta><?xpacket end='w'?>")
            .arg(xmlEscaped(data.title), xmlEscaped(data.author), xmlEscaped(data.subject),
                 xmlEscaped(data.keywords), xmlEscaped(data.creator));
    return packet.toUtf8();
}

// A PDF text string that holds any character: UTF-16 with its byte order mark, in hex.
QByteArray pdfText(const QString& text) {
    QByteArray hex = "<FEFF";
    for (const QChar c : text)
        hex += QByteArray::number(c.unicode(), 16).rightJustified(4, '0').toUpper();
    return hex + '>';
}

// Adds a complete information dictionary to the file as an update at its end, the way a PDF
// is amended: a new object, a cross-reference section for it alone, and a trailer that names
// it and the section before. The file stays as Qt wrote it otherwise.
QByteArray withInformation(QByteArray pdf, const PageDocument::Metadata& data) {
    static const QRegularExpression sizePattern(QStringLiteral("/Size\\s+(\\d+)"));
    static const QRegularExpression rootPattern(QStringLiteral("/Root\\s+(\\d+\\s+\\d+\\s+R)"));
    static const QRegularExpression startPattern(QStringLiteral("startxref\\s+(\\d+)"));
    const QString trailer = QString::fromLatin1(pdf.mid(pdf.lastIndexOf("trailer")));
    const auto size = sizePattern.match(trailer);
    const auto root = rootPattern.match(trailer);
    const auto start = startPattern.match(trailer);
    if (!size.hasMatch() || !root.hasMatch() || !start.hasMatch())
        return pdf;

    const QByteArray number = size.captured(1).toLatin1();
    if (!pdf.endsWith('\n'))
        pdf += '\n';
    const qsizetype objectAt = pdf.size();
    pdf += number + " 0 obj\n<<\n/Title " + pdfText(data.title) + "\n/Author " +
           pdfText(data.author) + "\n/Creator " + pdfText(data.creator) + "\n/Subject " +
           pdfText(data.subject) + "\n/Keywords " + pdfText(data.keywords) + "\n/Producer " +
           pdfText(data.creator) + "\n>>\nendobj\n";
    const qsizetype xrefAt = pdf.size();
    pdf += "xref\n" + number + " 1\n" + QByteArray::number(objectAt).rightJustified(10, '0') +
           " 00000 n\r\n";
    pdf += "trailer\n<<\n/Size " + QByteArray::number(number.toLongLong() + 1) + "\n/Root " +
           root.captured(1).toLatin1() + "\n/Info " + number + " 0 R\n/Prev " +
           start.captured(1).toLatin1() + "\n>>\nstartxref\n" + QByteArray::number(xrefAt) +
           "\n%%EOF\n";
    return pdf;
}

} // namespace

QByteArray pdfBytes(const PageDocument& document) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer(&buffer);
        const QSizeF size = document.pageSize();
        writer.setPageSize(QPageSize(size / 10, QPageSize::Millimeter));
        writer.setPageMargins(QMarginsF());
        writer.setResolution(Resolution);
        writer.setTitle(document.metadata.title);
        writer.setCreator(document.metadata.creator);
        writer.setDocumentXmpMetadata(xmpMetadata(document.metadata));
        QPainter painter(&writer);
        for (int page = 0; page < document.pageCount(); ++page) {
            if (page > 0)
                writer.newPage();
            drawPage(painter, document, page, QRectF(0, 0, writer.width(), writer.height()));
        }
    }
    return withInformation(buffer.data(), document.metadata);
}

bool writePdf(const PageDocument& document, const QString& path) {
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    const QByteArray bytes = pdfBytes(document);
    return file.write(bytes) == bytes.size() && file.commit();
}
