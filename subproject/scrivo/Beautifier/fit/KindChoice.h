#pragma once

#include "Beautifier/fit/ConstrainedFit.h"

#include <cstdint>
#include <optional>
#include <span>

/// Chooses the form of polygon that a stroke was most likely meant as.
///
/// The cost of a form is the drawing error that it implies, plus a cost of its
/// degrees of freedom, plus the cost of placing it. People draw the lengths of edges
/// less accurately than their directions, so the two errors have tolerances of their
/// own: a form with equal edges is compared with a wider form without that
/// constraint. A form is placed level, at the cost of the lean that was drawn, or as
/// it was drawn, at a fixed charge; either costs by how far it moves a corner. The
/// cheapest form, placed at the least cost, wins.
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
    double move;         ///< tolerance of corners moving, share of the ink's longer side
    double lean;         ///< tolerance of the lean of what is placed level, radians
    double leaning;      ///< charge for not being placed level
    double maxLean;      ///< largest lean of what is placed level, radians
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
/// fastest when the candidates are in ascending order of freedom. Without
/// `isLevelled` it is placed as drawn, which does not change the choice of the form.
/// Corners that lie level with or above each other share that coordinate exactly.
/// Corners are NaN when there is no such polygon.
KindChoice chooseKind(const PolygonInk& ink, std::span<const Candidate> candidates,
                      const FormCosts& costs, FormSet allowed, bool isLevelled);

/// How a form may be placed.
struct Placement {
    PolygonFit fit;
    double move = 0.0;  ///< largest distance of a corner from that of the free fit
    double lean = 0.0;  ///< that was drawn, radians
};

struct Placements {
    Placement asDrawn;
    std::optional<Placement> level;  ///< unless the lean is larger than `maxLean`
};

/// `fit` is that of the candidate from its first edge `first`; that of free edges
/// without a candidate.
Placements placementsOf(const PolygonInk& ink, const Candidate* candidate, int first,
                        const PolygonFit& fit, double maxLean);

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
