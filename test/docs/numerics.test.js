'use strict';

const assert = require('node:assert/strict');
const fs = require('node:fs');
const path = require('node:path');
const { test } = require('node:test');

const { root } = require('../support/native.js');

const filesIn = (folder) =>
  fs
    .readdirSync(path.join(root, folder), { recursive: true, withFileTypes: true })
    .filter((entry) => /\.(cpp|h)$/.test(entry.name))
    .map((entry) => fs.readFileSync(path.join(entry.parentPath ?? entry.path, entry.name), 'utf8'));

const matches = (texts, pattern) =>
  texts.flatMap((text) => [...text.matchAll(pattern)].map((match) => match.slice(1).join('.')));

test('every numerical decision names a test that exists', () => {
  const tests = new Set(matches(filesIn('test'), /^TEST(?:_F)?\((\w+), (\w+)\)/gm));
  const page = fs.readFileSync(path.join(root, 'docs/numerics.md'), 'utf8');
  const named = matches([page], /`([A-Z]\w+)\.([A-Z]\w+)`/g);
  const pinned = matches(filesIn('subproject'), /Pinned by[\s/]+([\w.]+\w)/g);
  assert.ok(named.length > 40 && pinned.length > 0, 'names are found at all');
  assert.deepEqual(
    [...named, ...pinned].filter((name) => !tests.has(name)),
    [],
  );
});
