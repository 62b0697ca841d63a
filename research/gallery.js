'use strict';

const fs = require('node:fs');
const path = require('node:path');
const { Resvg } = require('@resvg/resvg-js');
const { main } = require('../tools/support/run.js');
const { drawGallery } = require('./pictures/gallery.js');
const { drawPictures } = require('./pictures/index.js');

/** Writes the pictures of docs/images, the gallery as SVG and PNG: the same bytes at every run. */

const OUTPUT = path.join(__dirname, '..', 'docs', 'images');

const PNG_SCALE = 2;

/** The rasteriser ignores media queries, so the picture is in the light colour scheme. */
function toPng(svg) {
  const options = {
    fitTo: { mode: 'zoom', value: PNG_SCALE },
    font: { defaultFontFamily: 'DejaVu Sans' },
  };
  return new Resvg(svg, options).render().asPng();
}

main(async () => {
  const pictures = { 'gallery.svg': drawGallery(), ...drawPictures() };
  pictures['gallery.png'] = toPng(pictures['gallery.svg']);
  fs.mkdirSync(OUTPUT, { recursive: true });
  for (const [name, picture] of Object.entries(pictures)) {
    fs.writeFileSync(path.join(OUTPUT, name), picture);
  }
  return 0;
});
