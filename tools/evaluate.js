'use strict';

const { main } = require('../packages/cli/lib/main.js');

main(['evaluate', ...process.argv.slice(2)]).then((exitCode) => {
  process.exitCode = exitCode;
});
