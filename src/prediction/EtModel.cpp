#include "prediction/EtModel.h"

namespace EtModel {

double sensitivity(double performanceFactor) {
    return 8.5e-6 - performanceFactor * 8.5e-7;
}

double etAtAltitude(double et, double aaFrom, double aaTo, double sensitivity) {
    return et + sensitivity * ((aaTo - aaFrom + 1.0) * et);
}

} // namespace EtModel
