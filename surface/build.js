'use strict';

// Builds the page: one script, one style sheet and a page that names them.

const crypto = require('node:crypto');
const fs = require('node:fs/promises');
const path = require('node:path');
const esbuild = require('esbuild');
const { WASM, policy } = require('./policy.js');

const PAGE = path.join(__dirname, 'page');

/** The script of the page without a server. */
const SITE = 'main-site.mjs';

/** Files of the page, with what they are served as. */
const FILES = { script: 'page.js', style: 'style.css', icon: 'icon.svg' };

/** @param {string} entry a script of `page/js` */
async function bundle(entry) {
  // Of the package that answers: the other one need not have been built.
  const { FIGURES, WISHES } =
    entry === SITE ? await import('scrivo-wasm') : require('scrivo/beautifier');
  const { outputFiles } = await esbuild.build({
    entryPoints: [path.join(PAGE, 'js', entry)],
    bundle: true,
    format: 'iife',
    target: 'es2022',
    minify: true,
    write: false,
    legalComments: 'none',
    loader: { '.wasm': 'binary' },
    define: {
      // A classic script has no address of its own.
      'import.meta.url': 'document.baseURI',
      FAMILIES: JSON.stringify(FIGURES),
      WISHES: JSON.stringify(WISHES),
    },
    logLevel: 'error',
  });
  return outputFiles[0].text;
}

/** The page with `head` in the place of its comment. */
function fill(html, head) {
  const filled = html.replace(/<!-- head:.*-->/, () => head);
  if (filled === html) throw new Error('index.html has no place for the head');
  return filled;
}

const LINKS = `<link rel="icon" href="${FILES.icon}" type="image/svg+xml" />
    <link rel="stylesheet" href="${FILES.style}" />
    <script src="${FILES.script}" defer></script>`;

/**
 * The files of the page, by name.
 *
 * @param {'main-server.mjs' | 'main-site.mjs'} [entry]
 * @returns {Promise<Record<string, string>>}
 */
async function buildPage(entry = 'main-server.mjs') {
  const read = (name) => fs.readFile(path.join(PAGE, name), 'utf8');
  const [script, html, style, icon] = await Promise.all([
    bundle(entry),
    read('index.html'),
    read('style.css'),
    read('icon.svg'),
  ]);
  return {
    'index.html': fill(html, LINKS),
    [FILES.script]: script,
    [FILES.style]: style,
    [FILES.icon]: icon,
  };
}

/** A policy as an element, for pages that come without headers. */
const policyElement = (text) => `<meta http-equiv="Content-Security-Policy" content="${text}" />`;

/** The source of an inline element that the policy lets in. */
const hashOf = (text) => `'sha256-${crypto.createHash('sha256').update(text).digest('base64')}'`;

/**
 * The page with the engines in it, as files for a web server and as one file: scrivo.html.
 *
 * @returns {Promise<Record<string, string>>}
 */
async function buildSite() {
  const files = await buildPage(SITE);
  const html = await fs.readFile(path.join(PAGE, 'index.html'), 'utf8');
  // The text of a script element ends at the first of these.
  const script = files[FILES.script].replaceAll('</script', '<\\/script').trim();
  const style = files[FILES.style];
  const icon = Buffer.from(files[FILES.icon]).toString('base64');
  const inline = policy({
    scripts: [WASM, hashOf(script)],
    styles: [hashOf(style)],
  });
  const single = `${policyElement(inline)}
    <link rel="icon" href="data:image/svg+xml;base64,${icon}" />
    <style>${style}</style>`;
  const linked = policyElement(policy({ scripts: [WASM] }));
  return {
    ...files,
    'index.html': fill(html, `${linked}\n    ${LINKS}`),
    'scrivo.html': fill(html, single).replace(
      '</body>',
      () => `<script>${script}</script>\n  </body>`,
    ),
  };
}

module.exports = { buildPage, buildSite };
