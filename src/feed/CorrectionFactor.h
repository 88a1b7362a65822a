#pragma once

#include <optional>

// The Correction Factor of a reading: (29.92 / ABP) x sqrt((Temp + 459.7) / 519.7) x
// (ABP / (ABP - VP)), each of the three terms kept as a 32-bit float and multiplied in that
// order. nullopt for a reading on which the arithmetic faults: ABP of 0, ABP equal to VP, a
// temperature below absolute zero, or a term too large for a float.
std::optional<float> correctionFactor(float abp, float temp, float vp);
