'use strict';

const path = require('node:path').posix;

const withoutComments = (text) => text.replace(/#.*$/gm, '');

/** The words of a CMake file, quotes and parentheses taken off. */
const words = (text) => new Set(withoutComments(text).split(/[\s()";]+/));

/**
 * C++ files that no CMakeLists.txt names. A file counts as named when the
 * CMakeLists.txt of one of its folders holds its path from there.
 * `files` are paths from the root, `makefiles` maps such paths to contents.
 */
function unlistedSources(files, makefiles) {
  const lists = [...makefiles].map(([name, text]) => [path.dirname(name), words(text)]);
  const isListed = (file) =>
    lists.some(([folder, named]) => named.has(path.relative(folder, file)));
  return files.filter((file) => !isListed(file));
}

module.exports = { unlistedSources };
