#include "Beautifier/figures/Verdict.h"

#include <cmath>

namespace Scrivo::beautifier {

double Verdict::probability() const {
    return 1.0 / (1.0 + std::exp(-logit));
}

}  // namespace Scrivo::beautifier
