#pragma once

// The elapsed-time model every prediction, run completion and graph of the program uses:
// a time scales linearly with adjusted altitude, by a slope the performance factor tunes.
namespace EtModel {

// Fraction of a time gained or lost per foot of adjusted altitude. A factor of 10 makes it
// zero (the car ignores the air); above 10 the correction turns round.
double sensitivity(double performanceFactor);

// A time made at one adjusted altitude, taken to another. The "+ 1.0" is part of the model:
// two runs at the same altitude still differ by sensitivity x time.
double etAtAltitude(double et, double aaFrom, double aaTo, double sensitivity);

} // namespace EtModel
