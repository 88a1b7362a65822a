#include "exchange/CsvRecords.h"

namespace {

constexpr QChar Quote = u'"';
constexpr QChar Comma = u',';
constexpr QChar CR = u'\r';
constexpr QChar LF = u'\n';

} // namespace

QStringList CsvRecords::next() {
    QStringList fields;
    if (atEnd())
        return fields;
    bool endOfRecord = false;
    while (!endOfRecord)
        fields.append(field(endOfRecord));
    return fields;
}

// Reads one field and the separator after it; endOfRecord tells whether that separator was a
// line end or the end of the text rather than a comma. Runs of plain characters are copied in
// one piece, since a long event's log holds hundreds of thousands of fields.
QString CsvRecords::field(bool& endOfRecord) {
    const qsizetype size = text.size();
    QString value;
    if (position < size && text[position] == Quote) {
        ++position;
        while (true) {
            const qsizetype quote = text.indexOf(Quote, position);
            if (quote < 0) {
                // A quote left open runs to the end of the text.
                value += text.sliced(position);
                position = size;
                break;
            }
            value += text.sliced(position, quote - position);
            position = quote + 1;
            if (position < size && text[position] == Quote) {
                value += Quote;
                ++position;
                continue;
            }
            break;
        }
        // Whatever follows the closing quote up to the separator is kept as it stands, since
        // a field is opaque text to this reader.
    }
    const qsizetype start = position;
    while (position < size) {
        const QChar c = text[position];
        if (c == Comma || c == CR || c == LF)
            break;
        ++position;
    }
    value += text.sliced(start, position - start);
    if (position >= size) {
        endOfRecord = true;
        return value;
    }
    const QChar separator = text[position++];
    if (separator == CR && position < size && text[position] == LF)
        ++position;
    endOfRecord = separator != Comma;
    return value;
}
