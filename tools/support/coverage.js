'use strict';

const path = require('node:path');

/**
 * Adds a report of gcov to `files`, which maps paths from `sources` to lines. A line that
 * several objects contain is reached when one of them reaches it. Branches that only an
 * exception takes are left out.
 */
function addReport(files, report, build, sources) {
  for (const { file, lines } of report.files) {
    const name = path.relative(
      sources,
      path.resolve(report.current_working_directory ?? build, file),
    );
    if (name.startsWith('..')) continue;
    if (!files.has(name)) files.set(name, new Map());
    const known = files.get(name);
    for (const line of lines) addLine(known, line);
  }
}

function addLine(known, { line_number: number, count, branches }) {
  const own = branches.filter((branch) => !branch.throw).map((branch) => branch.count > 0);
  const before = known.get(number);
  if (!before) {
    known.set(number, { isReached: count > 0, branches: own });
    return;
  }
  before.isReached ||= count > 0;
  // Instances of a template and copies of an inline function branch alike.
  if (own.length > before.branches.length) before.branches.length = own.length;
  own.forEach((isTaken, k) => (before.branches[k] ||= isTaken));
}

/** The sums of some files, and the numbers of lines that are not reached. */
function sharesOf(files) {
  const all = files.flatMap((lines) => [...lines]);
  const branches = all.flatMap(([, line]) => [...line.branches]);
  return {
    lines: { reached: all.filter(([, line]) => line.isReached).length, all: all.length },
    branches: { reached: branches.filter(Boolean).length, all: branches.length },
    missed: all.filter(([, line]) => !line.isReached).map(([number]) => number),
  };
}

module.exports = { addReport, sharesOf };
