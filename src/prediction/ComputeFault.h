#pragma once

#include "core/NumberText.h"

#include <QString>
#include <cmath>

// A prediction or run completion checks every value it converts and every step it computes;
// the first one that goes wrong abandons the whole computation, which catches this once and
// tells the user. A text that merely is not a number is not a fault: the caller tests for
// that first and stops quietly.
struct ComputeFault {};

namespace ComputeCheck {

// The value of a cell or field text; a text that does not convert is a fault.
inline double converted(const QString& text) {
    const auto value = NumberText::toDouble(text);
    if (!value)
        throw ComputeFault{};
    return *value;
}

// A computed step: overflow or an invalid operation (infinity, NaN) is a fault.
inline double checked(double value) {
    if (!std::isfinite(value))
        throw ComputeFault{};
    return value;
}

} // namespace ComputeCheck
