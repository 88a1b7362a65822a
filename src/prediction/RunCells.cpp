#include "prediction/RunCells.h"

#include "core/NumberText.h"

#include <array>

std::optional<int> farthestMark(const RunCells& cells, int row) {
    static constexpr std::array farthestFirst{RunColumn::Ft1320, RunColumn::Ft1000,
                                              RunColumn::Ft660, RunColumn::Ft330, RunColumn::Ft60};
    for (const int column : farthestFirst) {
        if (NumberText::isNumeric(cells(row, column)))
            return column;
    }
    return std::nullopt;
}

std::optional<QString> referenceEtText(const RunCells& cells, int row) {
    const std::optional<int> column = farthestMark(cells, row);
    if (!column)
        return std::nullopt;
    return cells(row, *column);
}
