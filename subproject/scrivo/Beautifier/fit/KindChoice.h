#pragma once

#include "Beautifier/fit/ConstrainedFit.h"

#include <cstdint>
#include <span>

/// Chooses the form of polygon that a stroke was most likely meant as.
///
/// The cost of a form is the drawing error that it implies, plus a cost of its
/// degrees of freedom, plus a charge when it is neither level nor upright. People
/// draw the lengths of edges less accurately than their directions, so the two
/// errors have tolerances of their own: a form with equal edges is compared with
/// a wider form without that constraint. The cheapest form wins.
namespace Scrivo::beautifier {

/// A form to choose from.
struct Candidate {
    int id;       ///< its value in the enumeration of forms
    int widerId;  ///< of the wider form; its own where there is none, one that is not in the
                  ///< list for free edges
    int firsts;   ///< how many of the edges can be the first one
    PolygonForm form;
    double freedom;  ///< cost of its degrees of freedom
};

/// What the forms of a family have in common. The values were learnt from
/// people's strokes, see docs/beautifier.md.
struct FormCosts {
    double edges;        ///< tolerance of `FormErrors::edges`
    double directions;   ///< tolerance of `FormErrors::directions`
    double lean;         ///< largest charge for leaning
    double halfLean;     ///< lean that is charged half of it, radians
    int freeId;          ///< of the polygon of free edges
    double freeFreedom;  ///< cost of its degrees of freedom
};

struct KindChoice {
    int id = 0;  ///< of the form
    PolygonFit fit;
};

/// A bit for the id of each form.
using FormSet = std::uint32_t;
inline constexpr FormSet ALL_FORMS = ~FormSet{0};

constexpr FormSet formBit(int id) {
    return FormSet{1} << static_cast<unsigned>(id);
}

/// The cheapest of the `candidates` and the free polygon whose bit is in `allowed`;
/// fastest when the candidates are in ascending order of freedom. Corners are NaN
/// when there is no such polygon.
KindChoice chooseKind(const PolygonInk& ink, std::span<const Candidate> candidates,
                      const FormCosts& costs, FormSet allowed = ALL_FORMS);

/// Drawing errors that a fit implies.
struct FormErrors {
    double edges = 0.0;       ///< root mean square logarithm of edges over those of the wider form
    double directions = 0.0;  ///< root mean square distance of the ink from the wider form, beyond
                              ///< that from the free fit, share of the size
};

FormErrors errorsOf(const PolygonInk& ink, const PolygonFit& fit, const PolygonFit& wider,
                    const PolygonFit& free);

/// The best fit of the form that is wider than `candidate`; `fit` where there is none.
PolygonFit widerFit(const PolygonInk& ink, std::span<const Candidate> candidates,
                    const Candidate& candidate, const PolygonFit& fit);

}  // namespace Scrivo::beautifier
