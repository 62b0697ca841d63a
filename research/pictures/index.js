'use strict';

const { drawBeautifier } = require('./beautifier.js');
const { drawAnchorPair, drawQuadrangles } = require('./constructions.js');
const { drawCornerScan } = require('./corner-scan.js');
const { drawGallery } = require('./gallery.js');
const { drawMatching } = require('./matching.js');
const { drawPipeline } = require('./pipeline.js');
const { drawRegularisation } = require('./regularisation.js');

/** Pictures of the documents by file name: SVG, the same at every call. */
function drawPictures() {
  return {
    'gallery.svg': drawGallery(),
    'beautifier.svg': drawBeautifier(),
    'pipeline.svg': drawPipeline(),
    'corner-scan.svg': drawCornerScan(),
    'matching.svg': drawMatching(),
    'regularisation.svg': drawRegularisation(),
    'anchor-pair.svg': drawAnchorPair(),
    'quadrangles.svg': drawQuadrangles(),
  };
}

module.exports = { drawPictures };
