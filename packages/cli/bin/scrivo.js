#!/usr/bin/env node
'use strict';

const { main } = require('../lib/main.js');
const { boundGarbage } = require('../lib/memory.js');

boundGarbage();

// When standard error is closed, messages are lost; the exit code still reports the result.
process.stderr.on('error', () => {});

main(process.argv.slice(2)).then((exitCode) => {
  process.exitCode = exitCode;
});
