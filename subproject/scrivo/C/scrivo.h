/**
 * @file
 * Both engines for C, and for languages that call C.
 *
 * Points are fractions of the drawing area, y downwards; `width` and `height` are the
 * area's size in any unit, usually CSS pixels. Options and figures are in that unit.
 *
 * No function throws. Those that return a `scrivo_status` leave their results as they
 * were when it is not `SCRIVO_OK`. Strings are UTF-8. Everything may be called from
 * several threads; a beautifier or an answer may be shared until it is freed.
 */
#ifndef SCRIVO_C_SCRIVO_H
#define SCRIVO_C_SCRIVO_H

/* C has neither the headers nor the declarations that clang-tidy wants instead. */
/* NOLINTBEGIN(modernize-deprecated-headers, modernize-use-using) */

#include <stddef.h>
#include <stdint.h>

/** Version of this header; `scrivo_version` has that of the library. */
/** @{ */
#define SCRIVO_VERSION_MAJOR 0
#define SCRIVO_VERSION_MINOR 1
#define SCRIVO_VERSION_PATCH 0
#define SCRIVO_VERSION "0.1.0"
/** @} */

/** Marks what the shared library exports. Windows programs define `SCRIVO_SHARED`. */
#if defined(_WIN32) && defined(SCRIVO_EXPORTS)
#define SCRIVO_API __declspec(dllexport)
#elif defined(_WIN32) && defined(SCRIVO_SHARED)
#define SCRIVO_API __declspec(dllimport)
#elif defined(__GNUC__)
#define SCRIVO_API __attribute__((visibility("default")))
#else
#define SCRIVO_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/** Why a call failed. */
enum {
    SCRIVO_OK = 0,
    SCRIVO_INVALID_ARGUMENT = 1, /**< the message names it */
    SCRIVO_OUT_OF_MEMORY = 2,
    SCRIVO_NO_TEMPLATES = 3, /**< a file is missing, not readable or without an outline */
    SCRIVO_FAILURE = 4       /**< a fault of the library */
};
/** One of the codes above. */
typedef int32_t scrivo_status;

/** A sample of a stroke. */
typedef struct scrivo_point {
    double x;     /**< fraction of the width, to the right */
    double y;     /**< fraction of the height, downwards */
    double force; /**< pen pressure from 0 to 1; 0 when unknown */
} scrivo_point;

/** A stroke as the caller keeps it. */
typedef struct scrivo_stroke {
    const scrivo_point* points; /**< may be null when there are none */
    size_t count;               /**< of the points */
} scrivo_stroke;

/** The figure codes of both engines: `type` of an answer. */
enum {
    SCRIVO_TYPE_NONE = 0,    /**< the stroke as drawn */
    SCRIVO_TYPE_DOT = 1,     /**< 64 points */
    SCRIVO_TYPE_LINE = 2,    /**< 21 points */
    SCRIVO_TYPE_ANGLE = 4,   /**< 42 points */
    SCRIVO_TYPE_POLYGON = 6, /**< 21 points an edge */
    SCRIVO_TYPE_ELLIPSE = 7  /**< 85 points */
};

/** The families of the beautifier. */
enum {
    SCRIVO_NO_FAMILY = -1,
    SCRIVO_DOT = 0,
    SCRIVO_LINE = 1,
    SCRIVO_ANGLE = 2,
    SCRIVO_TRIANGLE = 3,   /**< kinds: general, equilateral, isosceles, right */
    SCRIVO_QUADRANGLE = 4, /**< kinds: general, square, rectangle, rhombus, parallelogram,
                                trapezoid, kite */
    SCRIVO_ELLIPSE = 5     /**< kinds: ellipse, circle */
};

/** Why a stroke stays as drawn. */
enum {
    SCRIVO_RECOGNISED = 0, /**< it does not */
    SCRIVO_INVALID = 1,    /**< no points, or sizes that make no sense, such as pixels
                                instead of fractions */
    SCRIVO_TOO_SMALL = 2,  /**< below `min_size` */
    SCRIVO_NOT_WANTED = 3, /**< the family is not among `families` */
    SCRIVO_NOT_SURE = 4,   /**< it resembles a figure, but not enough */
    SCRIVO_NO_FIGURE = 5   /**< it resembles none */
};

/** Bits of `anchors`. */
enum { SCRIVO_ANCHOR_CENTRE = 1, SCRIVO_ANCHOR_END = 2, SCRIVO_ANCHOR_CORNER = 4 };

/** The options of a beautifier; `scrivo_options_init` fills in the defaults. */
typedef struct scrivo_options {
    size_t size;                 /**< of this structure, in bytes */
    uint32_t families;           /**< bit `1 << SCRIVO_LINE` for lines, and so on; default: all */
    uint32_t anchors;            /**< what the ends of lines snap to; default: all */
    double min_size;             /**< smaller strokes stay ink; default: 0 */
    double tap_size;             /**< larger marks are not dots; default: 4 */
    double sensitivity;          /**< from 0 to 1; default: 0.5 */
    uint8_t horizontal_vertical; /**< nearly level figures become level; default: 1 */
    uint8_t regular_figures;     /**< nearly regular figures become regular; default: 1 */
    uint8_t nearby_strokes;      /**< the ends of lines snap to other strokes; default: 1 */
    uint8_t inside_area;         /**< figures are moved into the area; default: 1 */
} scrivo_options;

/** Another family that the stroke may have been meant as. */
typedef struct scrivo_alternative {
    int32_t family;     /**< the other family */
    double probability; /**< from 0 to 1 */
} scrivo_alternative;

/** What an answer holds. Answers of the template engine have `path` and `type` only. */
typedef struct scrivo_result {
    size_t size;                            /**< of this structure, in bytes; set by the caller */
    const scrivo_point* path;               /**< the outline, or the stroke as drawn */
    size_t path_count;                      /**< points of `path` */
    int32_t type;                           /**< figure code */
    int32_t reason;                         /**< why there is no figure */
    double confidence;                      /**< probability that the answer is right */
    int32_t family;                         /**< `SCRIVO_NO_FAMILY` without a figure */
    int32_t kind;                           /**< within the family; 0 without kinds */
    scrivo_point points[4];                 /**< in units: the centre of a dot or an ellipse, the
                                                 ends of a line, from, vertex and to of an angle,
                                                 corners */
    size_t point_count;                     /**< of `points` */
    double opening;                         /**< of an angle, radians */
    double radius_x;                        /**< of an ellipse, along its first axis, units */
    double radius_y;                        /**< along its second axis, units */
    double rotation;                        /**< of the first axis, radians */
    const scrivo_alternative* alternatives; /**< likeliest first */
    size_t alternative_count;               /**< of `alternatives` */
} scrivo_result;

/** Options, checked. */
typedef struct scrivo_beautifier scrivo_beautifier;
/** The answer to one stroke. */
typedef struct scrivo_answer scrivo_answer;

/** Version of the library: "major.minor.patch". */
SCRIVO_API const char* scrivo_version(void);

/** Message of the last call of this thread that failed; never null. */
SCRIVO_API const char* scrivo_error(void);

/**
 * Loads template files for `scrivo_optimize`, into the process; once, before the first
 * stroke. A file is identified by the name that its path contains: `rectangle.template`,
 * `triangle.template`, `isosceles_triangle.template` or `ellipse.template`; another name
 * is an error. Loads nothing when one of the files has no outline.
 */
SCRIVO_API scrivo_status scrivo_load_templates(const char* const* paths, size_t count);

/**
 * Recognises a stroke with the template engine. Free the answer. Any number is accepted: points
 * in pixels, or an area of nearly no width, give a figure that is as large or NaN.
 */
SCRIVO_API scrivo_status scrivo_optimize(scrivo_stroke stroke, double width, double height,
                                         const scrivo_stroke* others, size_t other_count,
                                         scrivo_answer** answer);

/** Writes the defaults; `size` is `sizeof(scrivo_options)` as the caller knows it. */
SCRIVO_API void scrivo_options_init(scrivo_options* options, size_t size);

/** Makes a beautifier; null for the default options. Free it. */
SCRIVO_API scrivo_status scrivo_beautifier_create(const scrivo_options* options,
                                                  scrivo_beautifier** beautifier);

/** Recognises a stroke; lines may snap to the other ones. Free the answer. */
SCRIVO_API scrivo_status scrivo_beautify(const scrivo_beautifier* beautifier, scrivo_stroke stroke,
                                         double width, double height, const scrivo_stroke* others,
                                         size_t other_count, scrivo_answer** answer);

/** Fills in `result`, whose `size` the caller has set. Its pointers are valid until the
 * answer is freed. */
SCRIVO_API scrivo_status scrivo_answer_read(const scrivo_answer* answer, scrivo_result* result);

/** Frees a beautifier; null is ignored. */
SCRIVO_API void scrivo_beautifier_free(scrivo_beautifier* beautifier);
/** Frees an answer; null is ignored. */
SCRIVO_API void scrivo_answer_free(scrivo_answer* answer);

#ifdef __cplusplus
}
#endif

/* NOLINTEND(modernize-deprecated-headers, modernize-use-using) */

#endif
