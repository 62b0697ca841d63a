'use strict';

// Builds the page and its server into the package scrivo-cli when that is packed.
//
//   node surface/pack.js            writes packages/cli/page
//   node surface/pack.js --remove   removes it

const fs = require('node:fs');
const path = require('node:path');
const esbuild = require('esbuild');
const { buildPage } = require('./build.js');

const FOLDER = path.join(__dirname, '..', 'packages', 'cli', 'page');
const SERVER = 'server.js';

async function write() {
  const files = await buildPage();
  await esbuild.build({
    entryPoints: [path.join(__dirname, 'packaged.js')],
    outfile: path.join(FOLDER, SERVER),
    bundle: true,
    platform: 'node',
    target: 'node18',
    external: ['scrivo', 'scrivo/beautifier'],
    logLevel: 'error',
  });
  for (const [name, content] of Object.entries(files)) {
    fs.writeFileSync(path.join(FOLDER, name), content);
  }
}

/** What is written into the package. */
const PACKED = [SERVER, 'index.html', 'page.js', 'style.css', 'icon.svg'].map(
  (name) => `page/${name}`,
);

module.exports = { PACKED };

if (require.main === module) {
  if (process.argv.includes('--remove')) fs.rmSync(FOLDER, { recursive: true, force: true });
  else write();
}
