'use strict';

// The drawing page of the package scrivo-cli, whose files lie beside this one: see pack.js.

const fs = require('node:fs/promises');
const path = require('node:path');
const server = require('./server.js');

/** The files of the page, by name. */
async function loadPage() {
  const names = (await fs.readdir(__dirname)).filter((name) => name !== path.basename(__filename));
  const read = async (name) => [name, await fs.readFile(path.join(__dirname, name), 'utf8')];
  return Object.fromEntries(await Promise.all(names.map(read)));
}

module.exports = { serve: (args) => server.serve(args, loadPage) };
