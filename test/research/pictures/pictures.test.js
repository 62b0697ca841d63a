'use strict';

const assert = require('node:assert/strict');
const fs = require('node:fs');
const path = require('node:path');
const { test } = require('node:test');

const { drawPictures } = require('../../../research/pictures/index.js');
const { root } = require('../../support/native.js');

test('the pictures of the documents are those that the engines give', () => {
  for (const [name, picture] of Object.entries(drawPictures())) {
    const committed = fs.readFileSync(path.join(root, 'docs', 'images', name), 'utf8');
    assert.ok(picture === committed, `docs/images/${name} is out of date: npm run gallery`);
  }
});
