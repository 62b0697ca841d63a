'use strict';

const { defineBeautifier } = require('./define-beautifier.js');
const { native, ...codec } = require('./figures.js');

module.exports = defineBeautifier(native, codec);
