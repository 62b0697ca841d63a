#!/usr/bin/env node
'use strict';

const { main } = require('../lib/main.js');

// Nobody is left to read messages; the exit code still tells how it went.
process.stderr.on('error', () => {});

main(process.argv.slice(2)).then((exitCode) => {
  process.exitCode = exitCode;
});
