#pragma once

#include "Beautifier/Evidence.h"

#include <array>

/// The numbers by which the figures compete.
namespace Scrivo::beautifier {

// Distances and lengths are logarithms of shares of the size, with a floor:
// below it a fit is as good as a hand can draw, and better is not more.
#define SCRIVO_FEATURES(F)                                                       \
    /* any stroke */                                                             \
    F(LINE_RMS)   /* residual of the straight line */                            \
    F(LINE_WORST) /* largest distance from it */                                 \
    F(DETOUR)     /* path length beyond the extent along it */                   \
    F(TURNING)    /* sum of absolute bends, radians */                           \
    F(BOW)        /* absolute sum of bends, radians */                           \
    F(KNOT)       /* log of the path within a disc about an end */               \
    F(TWO_RMS)    /* residuals of two, three, four straight pieces */            \
    F(THREE_RMS)                                                                 \
    F(FOUR_RMS)                                                                  \
    F(TWO_OVER_ONE) /* residual of two pieces over that of one */                \
    F(LEG_WORST)    /* largest distance from the two pieces */                   \
    F(LEG_RATIO)    /* shorter over longer leg */                                \
    F(LEG_DETOUR)   /* path length beyond both legs */                           \
    F(LEG_TURNING)  /* bends beyond the one between the legs, radians */         \
    F(OPENING)      /* angle between the legs, radians */                        \
    F(ROUGHNESS)    /* log of the path of the ink over that of its average */    \
    F(RETRACED)     /* share of the path that went back over the rest */         \
    F(OVERLAP)      /* share of the path that ran on over its start */           \
    F(HOOK)         /* longest flick cut at an end, over the longer side */      \
    F(THREE_OVER_TWO) /* log of the residual of three pieces over that of two */ \
    F(VERTEX_INK)     /* distance of the ink from where the legs meet */         \
    F(VERTEX_BEND)    /* share of the bend between the legs near the vertex */   \
    F(LEG_FAR)        /* share of the ink away from the legs */                  \
    /* strokes whose ends meet */                                                \
    F(GAP)           /* distance of the trimmed ends */                          \
    F(TRIMMED)       /* share of the path that was trimmed */                    \
    F(TAIL)          /* how far the trimmed ends stray from the loop */          \
    F(LONG_TAIL)     /* the same, as far as no mere overshoot explains it */     \
    F(COUNTER_BENDS) /* bends against the sense of the loop, radians */          \
    F(SHARPEST_BEND) /* largest bend away from the closure, radians */           \
    F(POLYGON3_RMS)  /* residuals of polygons of three to six corners */         \
    F(POLYGON4_RMS)                                                              \
    F(POLYGON5_RMS)                                                              \
    F(POLYGON6_RMS)                                                              \
    F(FOUR_OVER_THREE)  /* residual of four corners over that of three */        \
    F(ELLIPSE_RMS)      /* residual of the ellipse */                            \
    F(ELLIPSE_WORST)    /* largest distance from it */                           \
    F(ELLIPSE_GAP)      /* gap over its shorter diameter */                      \
    F(ELLIPSE_LENGTH)   /* log of the path over its circumference */             \
    F(ELLIPSE_FAR)      /* share of the ink away from it */                      \
    F(ELLIPSE_ALONG)    /* root mean square angle of the ink with it, radians */ \
    F(ELLIPSE_OVER_FOUR) /* log of its residual over that of four corners */     \
    F(ELLIPSE_OVER_SIX)                                                          \
    F(CLOSURE_BEND)     /* bend where the ends meet, radians */                  \
    F(TRIANGLE_WORST)   /* largest distance from the polygon of three corners */ \
    F(TRIANGLE_SIDE)    /* its shortest over its longest side */                 \
    F(TRIANGLE_ANGLE)   /* its largest interior angle, radians */                \
    F(TRIANGLE_GAP)     /* gap over its shortest side */                         \
    F(TRIANGLE_CORNER)  /* largest distance of the ink from a corner */          \
    F(TRIANGLE_BEND)    /* least share of a corner's bend near the corner */     \
    F(TRIANGLE_LENGTH)  /* log of the path over the perimeter */                 \
    F(TRIANGLE_FAR)     /* share of the ink away from it */                      \
    F(QUADRANGLE_WORST) /* the same for four corners */                          \
    F(QUADRANGLE_SIDE)                                                           \
    F(QUADRANGLE_ANGLE)                                                          \
    F(QUADRANGLE_GAP)                                                            \
    F(QUADRANGLE_CORNER)                                                         \
    F(QUADRANGLE_BEND)                                                           \
    F(QUADRANGLE_LENGTH)                                                         \
    F(QUADRANGLE_FAR)                                                            \
    F(QUADRANGLE_WINDING) /* how far its corners miss one full turn, radians */

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
