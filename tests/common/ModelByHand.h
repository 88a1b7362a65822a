#pragma once

// The elapsed-time model as the tests write it out by hand, apart from the program's own, so
// that what a test expects never comes from the code it tests: a time at one adjusted
// altitude, taken to another, moves by the performance factor's sensitivity for each foot
// (plus one), in proportion to the time.
namespace ModelByHand {

inline double sensitivity(double pf) {
    return 8.5e-6 - pf * 8.5e-7;
}

inline double etAt(double et, double aaFrom, double aaTo, double pf) {
    return et + sensitivity(pf) * ((aaTo - aaFrom + 1.0) * et);
}

// The throttle stop timer that makes the target: both times taken to zero altitude, the
// difference made up at the ratio's seconds per hundredth.
inline double throttleStopFor(double refEt, double refAltitude, double timer, double target,
                              double altitude, double pf, double ratio) {
    const double refAtZero = etAt(refEt, refAltitude, 0, pf);
    const double targetAtZero = etAt(target, altitude, 0, pf);
    return timer - (refAtZero - targetAtZero) * ratio * 100.0;
}

} // namespace ModelByHand
