'use strict';

// `npm start`: sets up, builds the module and opens the drawing page's server.
// Arguments go to the server: npm start -- --port 8080

const { build } = require('./build.js');
const { setup } = require('./setup.js');
const { main } = require('./support/run.js');

main(async (args) => {
  if (args.includes('--help')) return require('../surface/command-line.js').printHelp();
  await setup('run');
  await build('release', { modulesOnly: true });
  return require('../surface/main.js').serve(args);
});
