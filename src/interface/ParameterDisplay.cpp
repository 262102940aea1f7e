#include "interface/ParameterDisplay.h"

namespace qor {

void showParameter(QORLimiterViewBase& base, std::int64_t address, float value) {
    switch (address) {
    case 0:
        base.valueAttack = value;
        break;
    case 1:
        base.valueRelease = value;
        break;
    case 2:
        base.valueThreshold = value;
        break;
    case 3:
        base.valueRatio = value;
        break;
    case 4:
        base.valueGain = value;
        break;
    case 5:
        base.valueMix = value;
        break;
    case 7:
        base.isBypassSelected = value == 1.0F;
        break;
    case 8:
        base.isAuditioSelected = value == 1.0F;
        break;
    default: // the mode, the filter edges and the final limiter have no place on the panel
        break;
    }
}

} // namespace qor
