'use strict';

// Bundles the tests of the engines for a page, unchanged, with scrivo-wasm in the place of the
// native modules and with the parts of Node that they use.

const fs = require('node:fs');
const path = require('node:path');
const { DIST, readTables } = require('../../../tools/build-wasm.js');
const { root } = require('../../support/native.js');
const { TEST_FILES } = require('../tested.js');

const CASES = path.join(root, 'test', 'cases');

/** The files that the tests read, by their path from the root. */
function readCases() {
  const names = fs.readdirSync(CASES, { recursive: true });
  const files = names.filter((name) => fs.statSync(path.join(CASES, name)).isFile());
  const entry = (name) => [`/test/cases/${name}`, fs.readFileSync(path.join(CASES, name), 'utf8')];
  return JSON.stringify(Object.fromEntries(files.map(entry)));
}

/** What stands for the modules of Node and for those of lib. */
const SUBSTITUTES = {
  'node:assert/strict': () => "module.exports = require('assert').strict;",
  'node:fs': () => `module.exports = require('./files.js')(${readCases()});`,
  'node:path': () => "exports.join = require('./files.js').join;",
  'node:test': () => "module.exports = require('./runner.js');",
  'node:vm': () => "module.exports = require('./realm.js');",
  'lib/index.js': () => "module.exports = require('../tested.js').asNative(globalThis.scrivo);",
  'lib/beautifier.js': () => 'module.exports = globalThis.scrivo;',
  'lib/figures.js': () =>
    "const { figureCodec } = require('../../../lib/figure-codec.js');" +
    `module.exports = figureCodec(${readTables()});`,
  'lib/native.js': () => 'exports.findNative = () => null;',
};

const substitute = {
  name: 'substitute',
  setup(build) {
    const namespace = 'substitute';
    build.onResolve({ filter: /^node:/ }, ({ path: name }) => ({ path: name, namespace }));
    build.onResolve({ filter: /^\.\.\/\.\.\/lib/ }, ({ path: asked }) => {
      const name = asked.replace('../../', '').replace(/^lib$/, 'lib/index.js');
      return name in SUBSTITUTES ? { path: name, namespace } : undefined;
    });
    // Other modules of Node are used by tests that are skipped in a page.
    build.onLoad({ filter: /.*/, namespace }, ({ path: name }) => ({
      contents: SUBSTITUTES[name]?.() ?? '',
      resolveDir: __dirname,
    }));
  },
};

/** The script that runs each file of tests and sends the results. */
async function bundleTests() {
  const runs = TEST_FILES.map((file) => `await run('${file}', () => require('../../${file}'));`);
  const contents = `const { run } = require('./runner.js');
    (async () => { ${runs.join('\n')} await run.end(); })();`;
  const { outputFiles } = await require('esbuild').build({
    stdin: { contents, resolveDir: __dirname },
    bundle: true,
    target: 'es2022',
    write: false,
    logLevel: 'error',
    define: { __dirname: '"/test/support"', global: 'globalThis' },
    plugins: [substitute],
  });
  return outputFiles[0].text;
}

const PAGE = `<!doctype html><meta charset="utf-8"><title>Tests of the engines</title>
<script type="module">
  import * as scrivo from './scrivo-wasm/index.js';
  await scrivo.start();
  const process = { env: { SCRIVO_TESTED: 'wasm' }, versions: { browser: navigator.userAgent } };
  Object.assign(globalThis, { scrivo, process });
  await import('./tests.js');
</script>`;

/** Writes the page, its script and the package into a folder. */
async function writePage(folder) {
  fs.cpSync(DIST, path.join(folder, 'scrivo-wasm'), { recursive: true });
  fs.writeFileSync(path.join(folder, 'tests.js'), await bundleTests());
  fs.writeFileSync(path.join(folder, 'tests.html'), PAGE);
}

module.exports = { writePage };
