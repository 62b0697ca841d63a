#pragma once

// Eigen's packets of two doubles, in plain C: sums are then formed in the order of the
// native modules, on whose last bits ill-conditioned conics depend.
#define SIMDE_NO_NATIVE
#define SIMDE_ENABLE_NATIVE_ALIASES
#include <simde/x86/sse2.h>
