import assert from 'node:assert/strict';
import { test } from 'node:test';
import native from '../../lib/native.js';
import { figureLabel, percent } from '../../surface/public/js/labels.mjs';

test('figures are labelled by their kind, then by their family', () => {
  assert.equal(figureLabel({ kind: 'circle' }), 'Circle');
  assert.equal(figureLabel({ kind: 'quadrangle', subtype: 'square' }), 'Square');
  assert.equal(figureLabel({ kind: 'quadrangle', subtype: 'general' }), 'Quadrangle');
  assert.equal(figureLabel({ kind: 'triangle', subtype: 'right' }), 'Right triangle');
  assert.equal(figureLabel({ kind: 'triangle', subtype: 'right-isosceles' }), 'Right isosceles triangle'); // prettier-ignore
});

test('every figure of the beautifier has a label of its own', () => {
  const { figures } = native.loadNative('beautifier');
  const labels = figures
    .filter((figure) => figure !== null)
    .flatMap(({ kind, subtypes }) =>
      subtypes.length > 0
        ? subtypes.map((subtype) => figureLabel({ kind, subtype }))
        : [figureLabel({ kind })],
    );
  assert.ok(labels.length >= figures.length);
  assert.equal(new Set(labels).size, labels.length, labels.join(', '));
  for (const label of labels) assert.match(label, /^[A-Z][a-z ]+$/);
});

test('confidence is never rounded up to certainty', () => {
  assert.deepEqual([0.9996, 0.985, 0.5].map(percent), ['99 %', '98 %', '50 %']);
});
