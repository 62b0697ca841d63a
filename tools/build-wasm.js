'use strict';

// `npm run build:wasm`: compiles the core to WebAssembly and bundles the package
// scrivo-wasm into packages/wasm/dist.

const fs = require('node:fs');
const path = require('node:path');
const { buildPreset } = require('./build.js');
const { ROOT, failure, heading, main } = require('./support/run.js');

const PACKAGE = path.join(ROOT, 'packages', 'wasm');
const DIST = path.join(PACKAGE, 'dist');
const COMPILED = path.join(ROOT, 'build', 'wasm');
const TEMPLATES = ['rectangle', 'triangle', 'isosceles_triangle', 'ellipse'];

/** The modules of each entry. */
const ENTRIES = {
  beautifier: ['beautifier', 'beautifier-scalar'],
  index: ['scrivo', 'scrivo-scalar'],
};
const MODULES = Object.values(ENTRIES).flatMap((names) => names.map((name) => `${name}.wasm`));

/** The declarations that both packages share, by their name in this one. */
const SHARED = { 'scrivo-beautifier.d.ts': 'lib/beautifier.d.ts', 'scrivo.d.ts': 'lib/index.d.ts' };

/** What the build puts into the package. */
const PACKED = [
  ...Object.keys(SHARED),
  ...Object.keys(ENTRIES).flatMap((name) => [`${name}.js`, `${name}.d.ts`]),
  ...MODULES,
].map((name) => `dist/${name}`);

/** The core's tables of families and figures, from a module that is not shipped. */
function readTables() {
  const module = new WebAssembly.Module(fs.readFileSync(path.join(COMPILED, 'describe.wasm')));
  const outOfMemory = () => {
    throw failure('build: describing the figures took too much memory.');
  };
  const { exports } = new WebAssembly.Instance(module, { scrivo: { outOfMemory } });
  exports._initialize();
  const [count, ...codes] = new Float64Array(exports.memory.buffer, exports.describe(0));
  return String.fromCharCode(...codes.slice(0, count));
}

/** The template files by the names that `templates` lists, without the white space at the ends. */
function readTemplates() {
  const entries = TEMPLATES.map((figure) => {
    const file = path.join(ROOT, 'templates', `${figure}.template`);
    return [`scrivo:${figure}.template`, fs.readFileSync(file, 'utf8').trim()];
  });
  return JSON.stringify(Object.fromEntries(entries));
}

const generated = {
  name: 'generated',
  setup(build) {
    const contents = { 'scrivo-wasm-tables': readTables, 'scrivo-wasm-templates': readTemplates };
    build.onResolve({ filter: /^scrivo-wasm-/ }, (args) => ({
      path: args.path,
      namespace: 'generated',
    }));
    build.onLoad({ filter: /.*/, namespace: 'generated' }, (args) => ({
      contents: contents[args.path](),
      loader: 'json',
    }));
  },
};

async function bundle() {
  const { build } = require('esbuild');
  const { outputFiles } = await build({
    absWorkingDir: PACKAGE,
    entryPoints: Object.keys(ENTRIES).map((name) => `lib/${name}.js`),
    outdir: DIST,
    bundle: true,
    format: 'esm',
    target: 'es2022',
    minify: true,
    write: false,
    legalComments: 'none',
    plugins: [generated],
    logLevel: 'warning',
  });
  for (const { path: file, text } of outputFiles) fs.writeFileSync(file, withComments(text));
}

/** Puts back comments that minifying removes: bundlers leave the import of a file to Node. */
const withComments = (script) =>
  script.replace(/\bimport\((?=\w+\))/, '$&/* webpackIgnore: true *//* @vite-ignore */');

/** Copies a file in one step: the type checks may run beside another build. */
function copyWhole(from, to) {
  const part = `${to}.${process.pid}`;
  fs.copyFileSync(from, part);
  fs.renameSync(part, to);
}

/** The shared declarations, beside those of this package. */
function copyDeclarations() {
  fs.mkdirSync(DIST, { recursive: true });
  for (const [to, from] of Object.entries(SHARED)) {
    copyWhole(path.join(ROOT, from), path.join(DIST, to));
  }
  for (const name of Object.keys(ENTRIES)) {
    copyWhole(path.join(PACKAGE, 'lib', `${name}.d.ts`), path.join(DIST, `${name}.d.ts`));
  }
}

async function buildWasm() {
  await buildPreset('wasm');
  heading('Bundle (wasm)');
  copyDeclarations();
  for (const file of MODULES) {
    fs.copyFileSync(path.join(COMPILED, file), path.join(DIST, file));
  }
  await bundle();
}

module.exports = { DIST, MODULES, PACKED, buildWasm, copyDeclarations, readTables };

if (require.main === module) main(async () => (await buildWasm(), 0));
