'use strict';

const { figureCodec } = require('./figure-codec.js');
const { loadNative } = require('./native.js');

const native = loadNative('beautifier');

module.exports = { ...figureCodec(native), native };
