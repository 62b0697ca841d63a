'use strict';

const assert = require('node:assert/strict');
const { test } = require('node:test');
const { mutantsOf } = require('../../../tools/support/mutants.js');

const afters = (source) => mutantsOf(source).map(({ after }) => after);

test('operators, comparisons, signs and numbers change, one at a time', () => {
  assert.deepEqual(afters('return a + b < -c;'), [
    'return a - b < -c;',
    'return a + b <= -c;',
    'return a + b >= -c;',
    'return a + b < c;',
  ]);
  assert.deepEqual(afters('x = std::abs(y) * 0.5F;'), [
    'x = (y) * 0.5F;',
    'x = std::abs(y) / 0.5F;',
    'x = std::abs(y) * 0.55F;',
  ]);
  assert.deepEqual(afters('if (!isOpen(p[2], 1e-9)) {'), [
    'if (isOpen(p[2], 1e-9)) {',
    'if (!isOpen(p[3], 1e-9)) {',
    'if (!isOpen(p[1], 1e-9)) {',
    'if (!isOpen(p[2], 1.1e-9)) {',
  ]);
});

test('comments, text, templates, assertions and the preprocessor stay', () => {
  for (const source of [
    '#include "a/2.h"',
    'f<T>();',
    '/// 1 + 2',
    '/* 1\n2 */',
    'g(\'1\', "2 < 3");',
    'static_assert(A == 3);',
    'void h(const T& x, Vec2D&& y);',
  ]) {
    assert.deepEqual(afters(source), [], source);
  }
});

test('a mutant keeps the rest of its source and knows its line', () => {
  const [mutant] = mutantsOf('// 1\nint a;\n  b = c / d;\n');
  assert.deepEqual(mutant, {
    line: 3,
    before: 'b = c / d;',
    after: 'b = c * d;',
    text: '// 1\nint a;\n  b = c * d;\n',
  });
});
