'use strict';

// Static checks of the whole tree.
//
//   npm run lint                        all checks
//   npm run lint -- eslint prettier     some checks, by name
//   npm run format                      fixes what the tools can fix

const crypto = require('node:crypto');
const fs = require('node:fs');
const path = require('node:path');
const { build } = require('./build.js');
const { copyDeclarations } = require('./build-wasm.js');
const { unbuiltFiles } = require('./support/source-lists.js');
const { ROOT, capture, failure, heading, main, nodeTool, run } = require('./support/run.js');

// Versions of clang-format format differently.
const CLANG_FORMAT_MAJOR = 14;

/** Files that git tracks or would track, as paths from the root, that exist. */
function sourceFiles(pattern) {
  const listed = capture('git', ['ls-files', '--cached', '--others', '--exclude-standard', '-z']);
  if (listed === null) throw failure('The checks need git and a git checkout to find the files.');
  const names = new Set(listed.split('\0'));
  return [...names].filter((name) => pattern.test(name) && fs.existsSync(path.join(ROOT, name)));
}

const cppFiles = () => sourceFiles(/\.(h|cpp|cc)$/);

function findClangFormat() {
  const candidates = [`clang-format-${CLANG_FORMAT_MAJOR}`, 'clang-format'];
  const fits = (name) => capture(name, ['--version'])?.includes(`version ${CLANG_FORMAT_MAJOR}.`);
  const found = candidates.find(fits);
  if (!found) throw failure(`clang-format ${CLANG_FORMAT_MAJOR} is needed: npm run setup`);
  return found;
}

async function clangFormat({ fix }) {
  const mode = fix ? ['-i'] : ['--dry-run', '--Werror'];
  return run(findClangFormat(), ['--style=file', ...mode, ...cppFiles()]);
}

async function eslint({ fix }) {
  const [command, ...args] = nodeTool('eslint', 'bin/eslint.js');
  return run(command, [...args, '--max-warnings=0', ...(fix ? ['--fix'] : []), '.']);
}

async function prettier({ fix }) {
  const [command, ...args] = nodeTool('prettier', 'bin/prettier.cjs');
  return run(command, [...args, '--log-level=warn', fix ? '--write' : '--check', '.']);
}

/** Every C++ file must be part of a build: others are neither compiled nor checked. */
async function lists() {
  const read = (name) => [name, fs.readFileSync(path.join(ROOT, name), 'utf8')];
  const makefiles = sourceFiles(/(^|\/)CMakeLists\.txt$|\.cmake$/);
  const unbuilt = unbuiltFiles(new Map(cppFiles().map(read)), new Map(makefiles.map(read)));
  for (const name of unbuilt) console.error(`${name}: named in no CMake file and not included`);
  return unbuilt.length === 0 ? 0 : 1;
}

/** The type declarations, with calls that must and must not compile. */
async function types() {
  copyDeclarations();
  const projects = sourceFiles(/(^|\/)tsconfig\.json$/);
  const [command, ...args] = nodeTool('typescript', 'bin/tsc');
  let worst = 0;
  for (const project of projects) {
    worst = Math.max(worst, await run(command, [...args, '--noEmit', '-p', project]));
  }
  return worst;
}

/** The reference of both interfaces, where a missing comment is an error. */
const docs = () => run(process.execPath, ['tools/docs.js']);

/**
 * clang-tidy runs as part of a build with clang, so only changed files are checked again.
 * The build does not track the configuration: a change of it starts over.
 */
async function clangTidy() {
  const hash = crypto.createHash('sha256');
  for (const name of sourceFiles(/(^|\/)\.clang-tidy$/)) {
    hash.update(fs.readFileSync(path.join(ROOT, name)));
  }
  const digest = hash.digest('hex');
  const folder = path.join(ROOT, 'build', 'tidy');
  const stamp = path.join(folder, '.clang-tidy.sha256');
  if (!fs.existsSync(stamp) || fs.readFileSync(stamp, 'utf8') !== digest) {
    fs.rmSync(folder, { recursive: true, force: true });
    fs.mkdirSync(folder, { recursive: true });
    fs.writeFileSync(stamp, digest);
  }
  await build('tidy', { keepGoing: true });
  return 0;
}

const CHECKS = {
  lists,
  'clang-format': clangFormat,
  prettier,
  eslint,
  types,
  docs,
  'clang-tidy': clangTidy,
};
const FORMATTERS = ['clang-format', 'prettier', 'eslint'];
const QUICK_CHECKS = Object.keys(CHECKS).filter((name) => name !== 'clang-tidy');

/** Runs the named checks, even after a failure; true when all passed. */
async function lint(names, { fix = false } = {}) {
  const failed = [];
  for (const name of names) {
    heading(`${fix ? 'Format' : 'Check'}: ${name}`);
    try {
      if ((await CHECKS[name]({ fix })) !== 0) failed.push(name);
    } catch (error) {
      console.error(error.expected ? error.message : error);
      failed.push(name);
    }
  }
  console.log(failed.length === 0 ? '\nChecks: all ok' : `\nChecks failed: ${failed.join(', ')}`);
  return failed.length === 0;
}

async function lintMain(args) {
  const fix = args.includes('--fix');
  const names = args.filter((name) => name !== '--fix');
  const unknown = names.filter((name) => !(name in CHECKS));
  if (unknown.length > 0) {
    const known = Object.keys(CHECKS).join(', ');
    throw failure(`lint: no check "${unknown.join('", "')}"; there are ${known}`);
  }
  const standard = fix ? FORMATTERS : Object.keys(CHECKS);
  return (await lint(names.length > 0 ? names : standard, { fix })) ? 0 : 1;
}

module.exports = { QUICK_CHECKS, lint };

if (require.main === module) main(lintMain);
