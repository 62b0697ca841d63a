#include "Scrivo/Types.h"

namespace Scrivo {

const std::int32_t LIMIT = 10;
const double RATIO_ANGLE = 0.95;
const double RATIO_LINE = 0.965;
const double ROTATION_THRESHOLD = 0.1;
const double NEAR = 10.0;
const double NUM_POINT = 20.0;

}  // namespace Scrivo
