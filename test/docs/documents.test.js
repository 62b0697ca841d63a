'use strict';

// Runs the examples of README, CONTRIBUTING and docs/. An example must print what its
// comments state; test/support/documents.js lists the marks of a block.

const assert = require('node:assert/strict');
const { spawnSync } = require('node:child_process');
const fs = require('node:fs');
const os = require('node:os');
const path = require('node:path');
const { after, before, describe, test } = require('node:test');
const ts = require('typescript');

const { root } = require('../support/native.js');
const {
  anchors,
  documents,
  links,
  readExamples,
  statedOutput,
} = require('../support/documents.js');

/** Long enough for a slow compiler; ends an example that hangs. */
const PATIENCE_MS = 120_000;

const folder = fs.realpathSync(fs.mkdtempSync(path.join(os.tmpdir(), 'scrivo-documents-')));
after(() => fs.rmSync(folder, { recursive: true }));
const inFolder = (...names) => path.join(folder, ...names);

function execute(command, args, options) {
  const { status, stdout, stderr, error } = spawnSync(command, args, {
    cwd: folder,
    encoding: 'utf8',
    timeout: PATIENCE_MS,
    ...options,
  });
  assert.equal(status, 0, `${command} ${args.join(' ')}\n${error ?? ''}${stdout}${stderr}`);
  return stdout;
}

const write = (name, content) => {
  fs.mkdirSync(path.dirname(inFolder(name)), { recursive: true });
  fs.writeFileSync(inFolder(name), content);
  return inFolder(name);
};

const nameOf = ({ place }) => place.replace(/\W+/g, '_');

function checkOutput({ code }, stdout) {
  const printed = stdout.split('\n').slice(0, -1);
  assert.deepEqual(printed, statedOutput(code), 'printed, and stated in the comments');
}

function runScript(block, code = block.code) {
  const type = /^(import|export) /m.test(code) ? 'mjs' : 'cjs';
  checkOutput(block, execute(process.execPath, [write(`${nameOf(block)}.${type}`, code)]));
}

function runTypeScript(block) {
  const compilerOptions = {
    module: ts.ModuleKind.NodeNext,
    target: ts.ScriptTarget.ES2022,
    strict: true,
    skipLibCheck: true, // the tests of the package check the declarations
    types: ['node'],
    typeRoots: [path.join(root, 'node_modules', '@types')],
  };
  const program = ts.createProgram([write(`${nameOf(block)}.mts`, block.code)], compilerOptions);
  const found = ts.getPreEmitDiagnostics(program).map(({ messageText }) => messageText);
  assert.deepEqual(found, []);
  runScript(block, ts.transpileModule(block.code, { compilerOptions }).outputText);
}

/** A fragment becomes the body of a program; its includes come first. */
function asProgram(code) {
  if (/\bint main\(/.test(code)) return code;
  const isInclude = (line) => line.startsWith('#include');
  const all = code.split('\n');
  const body = all.filter((line) => !isInclude(line)).join('\n');
  return `${all.filter(isInclude).join('\n')}\nint main() {\n${body}\n}\n`;
}

/** Configures a project against the library as it is installed; returns its build folder. */
function configure(project, makefile) {
  write(`${project}/CMakeLists.txt`, makefile);
  const options = ['-DCMAKE_BUILD_TYPE=Debug', `-DCMAKE_PREFIX_PATH=${inFolder('prefix')}`];
  execute('cmake', ['-G', 'Ninja', '-S', project, '-B', `${project}/build`, ...options]);
  return `${project}/build`;
}

function runProgram({ code }, build, target) {
  execute('cmake', ['--build', build, '--target', target]);
  checkOutput({ code }, execute(inFolder(build, target), []));
}

/** Configures one project for the C++ of all blocks, since configuring takes longer than building. */
function configureExamples(blocks) {
  const targets = blocks.map((block) => {
    const name = nameOf(block);
    write(`examples/${name}.cpp`, asProgram(block.code));
    return `add_executable(${name} ${name}.cpp)
target_link_libraries(${name} PRIVATE Scrivo::beautifier)`;
  });
  const head = ['cmake_minimum_required(VERSION 3.25)', 'project(examples CXX)'];
  configure('examples', [...head, 'find_package(Scrivo REQUIRED)', ...targets].join('\n'));
}

/** Builds and runs the program shown before a makefile. */
function runMakefile(block) {
  const project = nameOf(block);
  write(`${project}/main.cpp`, asProgram(block.program));
  const [, target] = /add_executable\((\w+)/.exec(block.code);
  runProgram({ code: block.program }, configure(project, block.code), target);
}

/** The environment in which other languages find the installed library. */
function forLibrary() {
  const libraries = ['lib', 'lib64'].map((name) => inFolder('prefix', name));
  const PKG_CONFIG_PATH = libraries.map((each) => path.join(each, 'pkgconfig')).join(':');
  return { env: { ...process.env, LD_LIBRARY_PATH: libraries.join(':'), PKG_CONFIG_PATH } };
}

function runC(block) {
  const source = write(`${nameOf(block)}.c`, block.code);
  const program = inFolder(nameOf(block));
  const flags = '-std=c11 -Wall -Wextra -Wpedantic -Werror';
  const compile = `cc ${flags} ${source} -o ${program} $(pkg-config --cflags --libs scrivo) -lm`;
  execute('bash', ['-euc', compile], forLibrary());
  checkOutput(block, execute(program, [], forLibrary()));
}

function runPython(block) {
  checkOutput(block, execute('python3', [write(`${nameOf(block)}.py`, block.code)], forLibrary()));
}

function runShell({ code }) {
  assert.notEqual(execute('bash', ['-euo', 'pipefail', '-c', code], { cwd: root }), '');
}

const examples = readExamples().others;
const run = examples.filter(({ reason }) => reason === undefined);

describe('the examples of the documents', () => {
  before(() => {
    fs.mkdirSync(inFolder('node_modules'));
    fs.symlinkSync(root, inFolder('node_modules', 'scrivo'), 'dir');
    execute('cmake', [
      '--install',
      path.join(root, 'build', 'release'),
      '--prefix',
      inFolder('prefix'),
    ]);
    configureExamples(run.filter(({ language }) => language === 'cpp'));
  });

  const RUNNERS = {
    js: (block) => runScript(block),
    ts: runTypeScript,
    cpp: (block) => runProgram(block, 'examples/build', nameOf(block)),
    cmake: runMakefile,
    c: runC,
    python: runPython,
    sh: runShell,
    json: ({ code }) => JSON.parse(code),
    text: () => {}, // a drawing, a table, what a program printed
  };

  for (const block of run) {
    test(`${block.place} (${block.language})`, () => {
      const runner = RUNNERS[block.language];
      assert.ok(runner, 'nothing runs this language: name one that is run, or "text"');
      runner(block);
    });
  }

  test('are only left out with a reason', () => {
    for (const { place, reason } of examples.filter((block) => block.reason !== undefined)) {
      assert.match(reason, /\w+ \w+/, `${place}: say why it is not run`);
    }
  });
});

/** The text of all C++ files in a folder. */
function codeIn(folder) {
  const all = fs.readdirSync(path.join(root, folder), { recursive: true });
  const files = all.filter((name) => /\.(cpp|h)$/.test(name));
  return files.map((name) => fs.readFileSync(path.join(root, folder, name), 'utf8')).join('\n');
}

const matches = (text, pattern) => [...text.matchAll(pattern)].map((m) => m.slice(1).join('.'));

describe('the documents', () => {
  const { scripts } = require('../../package.json');
  const tests = new Set(matches(codeIn('test'), /^TEST(?:_F)?\((\w+?)(?:Test)?, (\w+)\)/gm));
  const missing = (names) => names.filter((name) => !tests.has(name));

  for (const name of documents()) {
    test(`${name} has no dead links`, () => {
      for (const target of links(name)) {
        const [file, anchor] = target.split('#');
        const linked = file ? path.posix.join(path.posix.dirname(name), file) : name;
        assert.ok(fs.existsSync(path.join(root, linked)), target);
        if (anchor) assert.ok(anchors(linked).includes(anchor), target);
      }
    });

    test(`${name} names commands, files and tests that exist`, () => {
      const text = fs.readFileSync(path.join(root, name), 'utf8');
      for (const [, script] of text.matchAll(/npm run ([a-z][\w:-]*)/g)) {
        assert.ok(script in scripts, `npm run ${script}`);
      }
      const places =
        /(?<![\w./-])((?:lib|src|subproject|packages|surface|research|test|tools|bench|docs|cmake|examples)\/[\w./-]+\.(?:js|h|cpp|cc|json|inc|md|cmake|ts|mjs|svg))\b/g;
      for (const [, file] of text.matchAll(places)) {
        const own = path.join(path.dirname(name), file);
        assert.ok(
          [file, own].some((each) => fs.existsSync(path.join(root, each))),
          file,
        );
      }
      assert.deepEqual(missing(matches(text, /`([A-Z]\w+)\.([A-Z]\w+)`/g)), []);
    });
  }

  test('comments name tests that exist', () => {
    const pinned = matches(codeIn('subproject'), /Pinned by[\s/]+([\w.]+\w)/g);
    assert.ok(pinned.length > 0);
    assert.deepEqual(missing(pinned), []);
  });
});
