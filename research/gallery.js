'use strict';

const fs = require('node:fs');
const path = require('node:path');
const { main } = require('../tools/support/run.js');
const { drawPictures } = require('./pictures/index.js');

/** Writes the pictures of docs/images: the same bytes at every run. */

const OUTPUT = path.join(__dirname, '..', 'docs', 'images');

main(async () => {
  fs.mkdirSync(OUTPUT, { recursive: true });
  for (const [name, picture] of Object.entries(drawPictures())) {
    fs.writeFileSync(path.join(OUTPUT, name), picture);
  }
  return 0;
});
