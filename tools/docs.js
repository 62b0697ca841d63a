'use strict';

// `npm run docs`: generates the reference of both interfaces, for C++ in build/docs/cpp and
// for JavaScript in build/docs/javascript. A missing comment is an error.

const fs = require('node:fs');
const path = require('node:path');
const { ROOT, capture, failure, heading, main, nodeTool, run } = require('./support/run.js');
const { version } = require('../package.json');

const PAGES = path.join(ROOT, 'build', 'docs');

/** Public headers without a page: doxygen does not warn about a file without a comment. */
function headersLeftOut() {
  const makefile = path.join(ROOT, 'subproject', 'scrivo', 'CMakeLists.txt');
  const headers = fs.readFileSync(makefile, 'utf8').match(/\b(Scrivo|Beautifier|C)\/\w+\.h\b/g);
  const page = (header) => `${path.basename(header, '.h')}_8h.html`;
  return headers.filter((header) => !fs.existsSync(path.join(PAGES, 'cpp', page(header))));
}

async function makePages(what, command, args, options) {
  heading(`Documentation: ${what}`);
  if ((await run(command, args, options)) !== 0) throw failure(`The pages for ${what} failed.`);
}

main(async () => {
  if (capture('doxygen', ['--version']) === null) {
    throw failure('doxygen is not installed: npm run setup');
  }
  fs.rmSync(PAGES, { recursive: true, force: true });
  fs.mkdirSync(PAGES, { recursive: true });
  await makePages('C++', 'doxygen', ['docs/Doxyfile'], { env: { SCRIVO_VERSION: version } });
  const missing = headersLeftOut();
  if (missing.length > 0) throw failure(`No page for ${missing.join(', ')}: add a @file comment.`);
  const [node, ...typedoc] = nodeTool('typedoc', 'bin/typedoc');
  await makePages('JavaScript', node, [...typedoc, '--options', 'docs/typedoc.json']);
  console.log(`\nbuild/docs/cpp/index.html\nbuild/docs/javascript/index.html`);
  return 0;
});
