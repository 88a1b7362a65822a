// Any bytes as a spreadsheet template: the reader of the archive and its parts must refuse or
// read them without fault. A template that reads takes cells of text and number, and the
// workbook it gives reads again as a template with the same opening sheet and takes further
// cells.
#include "exchange/Workbook.h"

#include <QCoreApplication>
#include <cstdlib>

namespace {

void require(bool condition) {
    if (!condition)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    static QCoreApplication application(*argc, *argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    // The whole input is the template, so the seeds are real workbooks; where the cells go
    // follows from its bytes.
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    std::optional<Workbook> book = Workbook::fromTemplate(bytes);
    if (!book)
        return 0;
    const int row = int(size % 1100000);
    const int column = size ? int(data[size / 2]) * 67 : 0;
    book->setText(row, column, QString::fromLatin1(bytes.left(32)));
    book->setNumber(row + 1, column, double(size) / 7);
    book->setText(1, 1, QStringLiteral(" a label "));
    book->clear(2, 2);
    const std::optional<QByteArray> written = book->bytes();
    if (!written)
        return 0;
    std::optional<Workbook> again = Workbook::fromTemplate(*written);
    require(again.has_value());
    require(again->sheetPath() == book->sheetPath());
    again->setNumber(3, 3, 1.5);
    require(again->bytes().has_value());
    return 0;
}
