#pragma once

/// Scales distances and lengths for use as features.
namespace Scrivo::beautifier {

/// Bounds of a share. People cannot draw more accurately than the first, so smaller
/// residuals count alike.
inline constexpr double MIN_SHARE = 0.003;
inline constexpr double MAX_SHARE = 2.0;

/// Logarithm of `part` / `whole`, the ratio clamped to [`MIN_SHARE`,
/// `MAX_SHARE`]; that of `MIN_SHARE` for 0 / 0.
double share(double part, double whole);

}  // namespace Scrivo::beautifier
