#pragma once

#include <string>
#include <vector>

/// The subcommands of the probe. Each reads standard input, writes standard
/// output and returns an exit code.
namespace probe {

/// What the beautifier sees in strokes and what it answers; `mode` is features,
/// answers or paths.
int beautifier(const std::string& mode);

/// What the template engine sees in strokes on the way to its answer.
int pictures(const std::vector<std::string>& templateFiles);

/// Which outlines, as templates, would lie within reach of strokes.
int reach();

}  // namespace probe
