#include "prediction/RunCells.h"

#include "core/NumberText.h"

#include <array>

std::optional<QString> referenceEtText(const RunCells& cells, int row) {
    static constexpr std::array farthestFirst{RunColumn::Ft1320, RunColumn::Ft1000,
                                              RunColumn::Ft660, RunColumn::Ft330, RunColumn::Ft60};
    for (const int column : farthestFirst) {
        const QString text = cells(row, column);
        if (NumberText::IsNumeric(text))
            return text;
    }
    return std::nullopt;
}
