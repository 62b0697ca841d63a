#pragma once

/// The form in which distances and lengths become features.
namespace Scrivo::beautifier {

/// Bounds of a share. Below the first a fit is as close as a hand can draw, so
/// smaller residuals count alike.
inline constexpr double MIN_SHARE = 0.003;
inline constexpr double MAX_SHARE = 2.0;

/// Logarithm of `part` / `whole`, the ratio clamped to [`MIN_SHARE`,
/// `MAX_SHARE`]; that of `MIN_SHARE` for 0 / 0.
double share(double part, double whole);

}  // namespace Scrivo::beautifier
