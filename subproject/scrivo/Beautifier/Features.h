#pragma once

#include "Beautifier/Evidence.h"

#include <array>

/// The numbers by which the figures compete.
namespace Scrivo::beautifier {

// Residuals are logarithms of shares of the size with a floor: below it a fit
// is as good as a hand can draw, and better is not more.
#define SCRIVO_FEATURES(F)                                                                   \
    /* any stroke */                                                                         \
    F(LINE_RMS)       /* residual of the straight line */                                    \
    F(LINE_WORST)     /* largest distance from it */                                         \
    F(DETOUR)         /* path length beyond the extent along the line */                     \
    F(DETOUR_SHARE)    /* the same, not its logarithm */\
    F(HOOKS)           /* bends within an eighth of the length at either end */\
    F(KNOT)           /* path length within a small disc about an end */                     \
    F(TURNING)        /* sum of absolute bends, radians */                                   \
    F(BOW)            /* absolute sum of bends */                                            \
    F(TWO_RMS)        /* residual of two, three, four straight pieces */                     \
    F(THREE_RMS)                                                                             \
    F(FOUR_RMS)                                                                              \
    F(LEG_WORST)      /* largest distance from the two pieces */                             \
    F(LEG_ROUND)      /* distance of their corner from the ink */                            \
    F(LEG_RATIO)      /* log of the shorter over the longer leg */                           \
    F(LEG_DETOUR)     /* path length beyond both legs */                                     \
    F(LEG_DETOUR_SHARE)\
    F(LEG_TURNING)    /* bends beyond the one at the corner */                               \
    F(LEG_WINDING)    /* how far the sum of bends misses the one at the corner */            \
    F(OPENING)        /* angle between the legs, radians */                                  \
    F(OPENING_SQUARE)                                                                        \
    F(END_GAP)        /* distance of the ends */                                             \
    /* strokes whose ends meet */                                                            \
    F(GAP)            /* distance of the trimmed ends */                                     \
    F(GAP_SHARE)       /* the same, not its logarithm */\
    F(TRIMMED)        /* share of the length that was trimmed */                             \
    F(TAIL)           /* how far the trimmed ends stray from the loop */                     \
    F(COUNTER_BENDS)  /* bends against the sense of the loop, away from the closure */       \
    F(LOOP_TURNING)   /* absolute bends beyond one full turn */                              \
    F(LOOP_WINDING)   /* how far the signed bends miss one full turn */                      \
    F(LOOP_SHARPEST)   /* largest bend away from the closure */\
    F(POLYGON3_RMS)   /* residual of the best polygon of three to six corners */             \
    F(POLYGON4_RMS)                                                                          \
    F(POLYGON5_RMS)                                                                          \
    F(POLYGON6_RMS)                                                                          \
    F(ELLIPSE_RMS)                                                                           \
    F(ELLIPSE_WORST)                                                                         \
    F(ELLIPSE_RATIO)  /* log of the shorter over the longer radius */                        \
    F(ELLIPSE_GAP)     /* gap over the shorter diameter */\
    F(TRIANGLE_WORST)                                                                        \
    F(TRIANGLE_ROUND)                                                                        \
    F(TRIANGLE_SIDE)  /* log of the shortest over the longest side */                        \
    F(TRIANGLE_ANGLE) /* largest interior angle */                                           \
    F(TRIANGLE_GAP)    /* gap over the shortest side */\
    F(TRIANGLE_WINDING)\
    F(QUADRANGLE_WORST)                                                                      \
    F(QUADRANGLE_ROUND)                                                                      \
    F(QUADRANGLE_SIDE)                                                                       \
    F(QUADRANGLE_ANGLE)                                                                      \
    F(QUADRANGLE_GAP)                                                                        \
    F(QUADRANGLE_WINDING)

enum Feature : int {
#define SCRIVO_FEATURE(name) name,
    SCRIVO_FEATURES(SCRIVO_FEATURE)
#undef SCRIVO_FEATURE
        FEATURE_COUNT
};

using Features = std::array<double, FEATURE_COUNT>;

/// The features of `e`; those of closed strokes are 0 when it is open.
Features featuresOf(const Evidence& e);

/// Name of a feature as above.
const char* featureName(int feature);

}  // namespace Scrivo::beautifier
