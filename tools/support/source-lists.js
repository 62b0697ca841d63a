'use strict';

const path = require('node:path').posix;

/** The words of a CMake file, without quotes, parentheses and comments. */
const words = (text) => new Set(text.replace(/#.*$/gm, '').split(/[\s()";]+/));

const quotedIncludes = (text) =>
  [...text.matchAll(/^\s*#\s*include\s+"([^"]+)"/gm)].map((m) => m[1]);

/**
 * C++ files that nothing builds: sources that no CMake file names, and headers that are
 * neither named nor included by another source. A file counts as named if a CMake file in
 * one of its folders contains its path from there. `sources` and `makefiles` map paths from
 * the root to contents.
 */
function unbuiltFiles(sources, makefiles) {
  const lists = [...makefiles].map(([name, text]) => [path.dirname(name), words(text)]);
  const isListed = (file) =>
    lists.some(([folder, named]) => named.has(path.relative(folder, file)));
  const includes = [...sources].map(([file, text]) => [file, quotedIncludes(text)]);
  const isIncluded = (header) =>
    includes.some(
      ([file, names]) => file !== header && names.some((name) => `/${header}`.endsWith(`/${name}`)),
    );
  return [...sources.keys()].filter(
    (file) => !isListed(file) && !(file.endsWith('.h') && isIncluded(file)),
  );
}

module.exports = { unbuiltFiles };
