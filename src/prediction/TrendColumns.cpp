#include "prediction/TrendColumns.h"

#include "core/NumberText.h"

namespace TrendColumns {

std::vector<float> values(const RunCells& cells, int lastRow, int column) {
    std::vector<float> read;
    for (int row = 1; row <= lastRow; ++row) {
        const std::optional<float> value = NumberText::toSingle(cells(row, column));
        if (!value)
            break;
        read.push_back(*value);
    }
    return read;
}

} // namespace TrendColumns
