#pragma once

#include <string>
#include <vector>

/// The subcommands of the probe. Each reads standard input, writes standard
/// output and returns an exit code.
namespace probe {

/// Features and answers of the beautifier; `mode` is features, answers, paths, plain
/// or kinds.
int beautifier(const std::string& mode);

/// Intermediate results of the template engine.
int pictures(const std::vector<std::string>& templateFiles);

/// Which outlines, used as templates, would match the strokes.
int reach();

}  // namespace probe
