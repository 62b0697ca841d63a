'use strict';

// Loaded ahead of tests: takes the native modules of the preset `asan` instead of those of
// `release`.

const path = require('node:path');

const BUILD = path.join(__dirname, '..', '..', 'build');
const { dlopen } = process;

process.dlopen = (module, file, ...rest) => {
  const isOfRelease = path.dirname(file) === path.join(BUILD, 'release');
  const sanitized = path.join(BUILD, 'asan', path.basename(file));
  return dlopen.call(process, module, isOfRelease ? sanitized : file, ...rest);
};
