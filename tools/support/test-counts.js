'use strict';

// The totals that test runners print, as { passed, failed, skipped }. Output that
// ends before the totals counts as no tests.

/** Totals of a JUnit file of ctest. */
function countJunit(xml) {
  const attribute = (name) =>
    Number(new RegExp(`<testsuite[^>]*\\s${name}="(\\d+)"`).exec(xml)?.[1]);
  const tests = attribute('tests') || 0;
  const failed = attribute('failures') || 0;
  const skipped = (attribute('skipped') || 0) + (attribute('disabled') || 0);
  return { passed: tests - failed - skipped, failed, skipped };
}

/** Totals that close a TAP stream of Node's test runner. */
function countTap(tap) {
  const total = (name) => Number(new RegExp(`^# ${name} (\\d+)$`, 'm').exec(tap)?.[1] ?? 0);
  const skipped = total('skipped') + total('todo');
  return { passed: total('pass'), failed: total('fail') + total('cancelled'), skipped };
}

function countBun(output) {
  const total = (name) => Number(new RegExp(`^ *(\\d+) ${name}`, 'm').exec(output)?.[1] ?? 0);
  return { passed: total('pass'), failed: total('fail'), skipped: total('skip') };
}

/** Deno's sums count groups as well; a group's name comes before and after its tests. */
function countDeno(output) {
  const lines = (pattern) => output.match(pattern)?.length ?? 0;
  const groups = lines(/ \.\.\.$/gm);
  const failed = lines(/ \.\.\. FAILED /gm);
  const passed = Math.max(lines(/ \.\.\. (ok|FAILED) \(/gm) - groups - failed, 0);
  return { passed, failed, skipped: lines(/ \.\.\. ignored /gm) };
}

module.exports = { countBun, countDeno, countJunit, countTap };
