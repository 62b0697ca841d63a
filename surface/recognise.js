'use strict';

const scrivo = require('scrivo');
const beautifier = require('scrivo/beautifier');

/** Loads the engines; resolves to the function that answers requests, see `readRequest`. */
async function createRecogniser() {
  const { createAnswerer } = await import('./page/js/engine/answerer.mjs');
  scrivo.initScrivo(scrivo.templates);
  return createAnswerer({ ...beautifier, optimizeAStroke: scrivo.optimizeAStroke });
}

module.exports = { createRecogniser };
