#include "Beautifier/fit/Share.h"

#include <algorithm>
#include <cmath>

namespace Scrivo::beautifier {

double share(double part, double whole) {
    // The order of arguments makes MIN_SHARE of 0 / 0.
    return std::log(std::min(std::max(MIN_SHARE, part / whole), MAX_SHARE));
}

}  // namespace Scrivo::beautifier
