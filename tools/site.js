'use strict';

// `npm run site`: builds the drawing page as static files, with the engines as WebAssembly.
//
//   npm run site [-- FOLDER]    build/site by default
//
// The folder can be put on any web server. Its scrivo.html is the page in one file, which can also
// be opened from disk.

const fs = require('node:fs');
const path = require('node:path');
const { buildWasm } = require('./build-wasm.js');
const { setup } = require('./setup.js');
const { ROOT, heading, main } = require('./support/run.js');

/** Writes the site; the WebAssembly package must have been built. */
async function writeSite(folder) {
  const { buildSite } = require('../surface/build.js');
  fs.mkdirSync(folder, { recursive: true });
  const files = await buildSite();
  for (const [name, content] of Object.entries(files)) {
    fs.writeFileSync(path.join(folder, name), content);
  }
  return files;
}

async function siteMain([folder = path.join(ROOT, 'build', 'site')]) {
  await setup('run');
  await buildWasm();
  heading('Site');
  const files = await writeSite(path.resolve(folder));
  for (const [name, content] of Object.entries(files)) {
    console.log(
      `${path.relative('', path.join(folder, name))}  ${Math.ceil(content.length / 1024)} KB`,
    );
  }
  return 0;
}

module.exports = { writeSite };

if (require.main === module) main(siteMain);
