'use strict';

// The packages as users get them: packed, then installed into empty projects, the engines
// alone and the command line with them. The archive contains the modules of this build as
// the prebuilt files of this system. npm runs with --offline and takes dependencies from
// this clone's node_modules: the test needs no network and no cache, and a dependency that
// package.json lacks stays missing.

const assert = require('node:assert/strict');
const { execFileSync, spawn, spawnSync } = require('node:child_process');
const { once } = require('node:events');
const fs = require('node:fs');
const os = require('node:os');
const path = require('node:path');
const { after, before, describe, test } = require('node:test');
const { nodeFileTrace } = require('@vercel/nft');

const { PACKED: PACKED_WASM } = require('../../tools/build-wasm.js');
const { moduleNames } = require('../../tools/support/modules.js');
const { ROOT } = require('../../tools/support/run.js');
const { PACKED } = require('../../surface/pack.js');
const { links } = require('../support/documents.js');

const folder = fs.realpathSync(fs.mkdtempSync(path.join(os.tmpdir(), 'scrivo-install-')));
after(() => fs.rmSync(folder, { recursive: true }));
const project = path.join(folder, 'project');
const installed = path.join(project, 'node_modules', 'scrivo');
const COMMAND = 'packages/cli';
const WASM = 'packages/wasm';

const THIS_TARGET = `${process.platform}-${process.arch}`;
const PREBUILT = moduleNames().map((name) => `prebuilds/${THIS_TARGET}/${name}.node`);

const npm = (cwd, ...args) =>
  execFileSync('npm', [...args, '--loglevel=error'], { cwd, encoding: 'utf8' });
const start = (...args) => spawnSync(process.execPath, args, { cwd: project, encoding: 'utf8' });

function trackedFiles() {
  const options = ['--cached', '--others', '--exclude-standard', '-z'];
  const listed = execFileSync('git', ['ls-files', ...options], { cwd: ROOT, encoding: 'utf8' });
  return listed.split('\0').filter((name) => name && fs.existsSync(path.join(ROOT, name)));
}

function copy(name, to) {
  fs.mkdirSync(path.dirname(to), { recursive: true });
  fs.copyFileSync(path.join(ROOT, name), to);
}

/** Packs packages of a copy of the clone; returns what npm says about each archive. */
function pack(...places) {
  const clone = path.join(folder, 'clone');
  for (const name of trackedFiles()) copy(name, path.join(clone, name));
  // What builds the page of the command line.
  const tools = path.join(clone, 'node_modules');
  if (!fs.existsSync(tools)) fs.symlinkSync(path.join(ROOT, 'node_modules'), tools);
  for (const file of PREBUILT) {
    copy(path.join('build', 'release', path.basename(file)), path.join(clone, file));
  }
  for (const file of PACKED_WASM) copy(`${WASM}/${file}`, path.join(clone, WASM, file));
  const packed = (place) =>
    JSON.parse(npm(path.join(clone, place), 'pack', '--json', '--pack-destination', folder))[0];
  return places.map(packed);
}

/**
 * The packages that a package of the lock file depends on, by name, each as the folder where it is
 * installed here, so that a project can be set up without a registry.
 */
function dependencies(place) {
  const { packages } = JSON.parse(fs.readFileSync(path.join(ROOT, 'package-lock.json'), 'utf8'));
  const found = {};
  const visit = (entry) => {
    for (const name of Object.keys(entry.dependencies ?? {})) {
      const needed = packages[`node_modules/${name}`];
      if (found[name] || needed.link) continue;
      found[name] = folderOf(name);
      visit(needed);
    }
  };
  visit(packages[place]);
  return found;
}

const folderOf = (name) => `file:${path.join(ROOT, 'node_modules', name)}`;
const archiveOf = ({ filename }) => path.join(folder, filename);

/** Makes a project with these packages, and installs others into it. */
function install(to, needed, ...wanted) {
  fs.mkdirSync(to, { recursive: true });
  const manifest = { private: true, dependencies: needed };
  fs.writeFileSync(path.join(to, 'package.json'), JSON.stringify(manifest));
  const options = ['--offline', '--ignore-scripts', '--install-links', '--omit=optional'];
  npm(to, 'install', ...options, '--no-audit', '--no-fund', ...wanted);
}

/** What npm noted of the packages in a project. */
const readLock = (of) =>
  JSON.parse(fs.readFileSync(path.join(of, 'node_modules', '.package-lock.json'), 'utf8'));

/** Relative links of the documents in an archive, packed from `folder`, to what is not in it. */
function deadLinks(names, folder) {
  const documents = names.filter((name) => name.endsWith('.md'));
  return documents.flatMap((name) =>
    links(path.posix.join(folder, name)).filter((target) => {
      const [file] = target.split('#');
      return file && !names.includes(path.posix.join(path.posix.dirname(name), file));
    }),
  );
}

const CIRCLE = `Array.from({ length: 65 }, (_, i) => ({
  x: 0.5 + 0.4 * Math.cos(i * Math.PI / 32), y: 0.5 + 0.4 * Math.sin(i * Math.PI / 32) }))`;

describe('the archive of the engines', () => {
  let archive;
  let names;
  before(() => {
    [archive] = pack('');
    names = archive.files.map((file) => file.path);
    install(project, dependencies(''), archiveOf(archive));
  });

  test('holds what is run, what it is built from, and nothing else', () => {
    const inFolder =
      /^(examples|lib|src|subproject|templates)\/|^docs\/(images\/)?[^/]+\.(md|png|svg)$/;
    const alone = `CHANGELOG.md CMakeLists.txt CMakePresets.json LICENSE README.md SECURITY.md
      cmake/ScrivoCompileOptions.cmake cmake/ScrivoConfig.cmake.in package.json
      tools/build.js tools/setup.js tools/support/run.js`.split(/\s+/);
    const expected = trackedFiles().filter((name) => inFolder.test(name) || alone.includes(name));
    assert.deepEqual([...names].sort(), [...expected, ...PREBUILT].sort());
    assert.ok(alone.every((name) => names.includes(name)));
    assert.deepEqual(
      names.filter((name) => /test|\.ndjson$/.test(path.basename(name))),
      [],
    );
    assert.deepEqual(deadLinks(names, ''), []);
  });

  test('is small, the modules aside', () => {
    const modules = archive.files.filter((file) => file.path.endsWith('.node'));
    assert.equal(modules.length, moduleNames().length);
    assert.ok(archive.unpackedSize - modules.reduce((sum, { size }) => sum + size, 0) < 1.05e6);
  });

  test('adds one package to a project', () => {
    const listed = JSON.parse(npm(project, 'ls', '--all', '--omit=dev', '--json'));
    assert.deepEqual(Object.keys(listed.dependencies), ['scrivo']);
    assert.equal(listed.dependencies.scrivo.dependencies, undefined);
    const { packages } = readLock(project);
    assert.deepEqual(Object.keys(packages), ['node_modules/scrivo']);
  });

  test('runs nothing when it is installed', () => {
    const entry = readLock(project).packages['node_modules/scrivo'];
    assert.equal(entry.version, require('../../package.json').version);
    assert.equal(entry.hasInstallScript, undefined);
  });

  const USE = `
    scrivo.initScrivo(scrivo.templates);
    const { path, type } = scrivo.optimizeAStroke(${CIRCLE}, 400, 400, []);
    console.log(type === scrivo.FigureType.ELLIPSE, path.length, typeof beautifier.Beautifier);`;
  const entries = {
    'require()': `const scrivo = require('scrivo');
      const beautifier = require('scrivo/beautifier');`,
    import: `import * as scrivo from 'scrivo';
      import * as beautifier from 'scrivo/beautifier';`,
  };
  for (const [how, head] of Object.entries(entries)) {
    test(`answers at once by ${how}`, () => {
      const file = path.join(project, how === 'import' ? 'use.mjs' : 'use.cjs');
      fs.writeFileSync(file, head + USE);
      assert.equal(start(file).stdout, 'true 85 function\n');
    });
  }

  test('is complete in what tools that trace files copy to a server', async () => {
    const file = path.join(project, 'traced.mjs');
    fs.writeFileSync(file, entries.import);
    const { fileList } = await nodeFileTrace([file], { base: project });
    const traced = [...fileList].filter((name) => /\.(node|template)$/.test(name));
    const needed = [...PREBUILT, ...names.filter((name) => name.startsWith('templates/'))];
    assert.deepEqual(traced.sort(), needed.map((name) => `node_modules/scrivo/${name}`).sort());
  });

  const resolutions = {
    nodenext: { module: 'nodenext', include: ['*.mts', '*.cts'] },
    bundler: { module: 'preserve', include: ['*.mts'] },
    node10: { module: 'commonjs', include: ['*.cts'], ignoreDeprecations: '6.0' },
  };
  for (const [resolution, { include, ...options }] of Object.entries(resolutions)) {
    test(`is understood by TypeScript (${resolution})`, () => {
      fs.cpSync(path.join(ROOT, 'test', 'lib', 'types'), project, { recursive: true });
      const compilerOptions = {
        ...{ ...options, target: 'es2022', moduleResolution: resolution, types: [] },
        ...{ strict: true, skipLibCheck: false, exactOptionalPropertyTypes: true, noEmit: true },
      };
      const config = path.join(project, `tsconfig.${resolution}.json`);
      fs.writeFileSync(config, JSON.stringify({ compilerOptions, include }));
      const tsc = path.join(ROOT, 'node_modules', 'typescript', 'bin', 'tsc');
      const { status, stdout } = start(tsc, '-p', config);
      assert.equal(status, 0, stdout);
    });
  }

  test('says where it looked and how to build, where no prebuilt file fits', () => {
    const prebuilds = path.join(installed, 'prebuilds');
    fs.renameSync(prebuilds, `${prebuilds}-away`);
    try {
      const { status, stderr } = start('-e', "require('scrivo')");
      assert.equal(status, 1);
      assert.match(stderr, /Cannot find the native module hello\.node\. Tried:/);
      assert.ok(stderr.includes(`  ${path.join(installed, PREBUILT[0])}\n`));
      assert.ok(stderr.includes(`(cd ${JSON.stringify(installed)} && npm run build)`));
    } finally {
      fs.renameSync(`${prebuilds}-away`, prebuilds);
    }
  });

  // The archive contains all sources, see above; this checks that they are found.
  test('can be built from its sources', () => {
    // Only needed to build.
    const headers = ['node-addon-api', 'node-api-headers'];
    const configure = ['--preset', 'release', '-DSCRIVO_DEVELOPER=OFF'];
    const build = () => start(path.join(installed, 'tools', 'build.js'));
    assert.match(build().stderr, /`npm install --save-dev node-addon-api node-api-headers`/);
    npm(project, 'install', '--offline', '--install-links', ...headers.map(folderOf));
    execFileSync('cmake', configure, { cwd: installed });
    const list = ['-C', path.join(installed, 'build', 'release'), '-t', 'targets', 'all'];
    const made = execFileSync('ninja', list, { encoding: 'utf8' });
    for (const name of moduleNames()) assert.match(made, new RegExp(`^${name}\\.node: `, 'm'));
    fs.rmSync(path.join(installed, 'build'), { recursive: true });
  });
});

describe('the archive of the command line', () => {
  const commands = path.join(folder, 'commands');
  let archive;
  before(() => {
    const archives = pack('', COMMAND);
    archive = archives[1];
    install(commands, dependencies(COMMAND), ...archives.map(archiveOf));
  });

  test('holds the program, and nothing else', () => {
    const expected = trackedFiles()
      .filter((name) => name.startsWith(`${COMMAND}/`))
      .map((name) => path.posix.relative(COMMAND, name));
    const names = archive.files.map((file) => file.path);
    assert.deepEqual(names.sort(), [...expected, ...PACKED].sort());
    assert.deepEqual(deadLinks(names, COMMAND), []);
  });

  test('brings a command that answers with the engines beside it', () => {
    const command = path.join(commands, 'node_modules', '.bin', 'scrivo');
    const points = eval(CIRCLE).map(({ x, y }) => [400 * x, 400 * y]);
    const input = JSON.stringify({ points });
    for (const engine of ['template', 'beautifier']) {
      const args = ['idealise', '--engine', engine, '-'];
      const output = execFileSync(command, args, { encoding: 'utf8', input });
      assert.equal(JSON.parse(output).figure, 'ellipse');
    }
    assert.equal(readLock(commands).packages['node_modules/scrivo'].link, undefined);
  });

  test('serves the drawing page without a clone', async () => {
    const program = path.join(commands, 'node_modules', 'scrivo-cli', 'bin', 'scrivo.js');
    const child = spawn(process.execPath, [program, 'draw', '--port', '0']);
    const [text] = await once(child.stdout, 'data');
    const [address] = /http:\S+/.exec(text);
    const page = await (await fetch(address)).text();
    const points = eval(CIRCLE).flatMap(({ x, y }) => [400 * x, 400 * y]);
    const answer = await fetch(`${address}recognise`, {
      method: 'POST',
      headers: { 'Content-Type': 'application/json' },
      body: JSON.stringify({ task: 'recognise', points, width: 400, height: 400 }),
    });
    child.kill();
    assert.match(page, /<title>Scrivo/);
    assert.equal((await answer.json()).figure.kind, 'circle');
  });
});

describe('the archive for browsers', () => {
  const site = path.join(folder, 'site');
  let archive;
  before(() => {
    [archive] = pack(WASM);
    install(site, {}, archiveOf(archive));
  });

  test('holds what is built and an example, and nothing else', () => {
    const own = `${WASM}/example/`;
    const expected = trackedFiles()
      .filter((name) => name.startsWith(own))
      .map((name) => path.posix.relative(WASM, name));
    const names = archive.files.map((file) => file.path);
    const alone = ['LICENSE', 'README.md', 'package.json'];
    assert.deepEqual(names.sort(), [...alone, ...expected, ...PACKED_WASM].sort());
    assert.deepEqual(deadLinks(names, WASM), []);
  });

  test('answers by the lines of its page', () => {
    const [lines] = /import [^]*?(?=```)/.exec(fs.readFileSync(path.join(ROOT, WASM, 'README.md')));
    const script = `const [stroke, width, height] = [${CIRCLE}, 400, 400];\n${lines}
      console.log(figure.kind, path.length);`;
    fs.writeFileSync(path.join(site, 'main.mjs'), script);
    const [program, args] = [process.execPath, ['main.mjs']];
    assert.equal(execFileSync(program, args, { cwd: site, encoding: 'utf8' }), 'circle 85\n');
  });
});
