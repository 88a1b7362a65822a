#include "racelog/RunClipboard.h"

namespace RunClipboard {

void copy(const RunTable& table, int row, Cells& clipboard) {
    for (int column = FirstColumn; column <= LastColumn; ++column)
        clipboard[column] = table.TextMatrix(row, column);
}

void cut(RunTable& table, int row, Cells& clipboard) {
    for (int column = FirstColumn; column <= LastColumn; ++column) {
        clipboard[column] = table.TextMatrix(row, column);
        table.setTextMatrix(row, column, QString());
    }
}

void paste(RunTable& table, int row, const Cells& clipboard) {
    for (int column = FirstColumn; column <= LastColumn; ++column)
        table.setTextMatrix(row, column, clipboard[column]);
}

} // namespace RunClipboard
