'use strict';

// Builds the page: one script, one style sheet and a page that names them.

const fs = require('node:fs/promises');
const path = require('node:path');
const esbuild = require('esbuild');

const PAGE = path.join(__dirname, 'page');

/** Files of the page, with what they are served as. */
const FILES = { script: 'page.js', style: 'style.css', icon: 'icon.svg' };

/**
 * What the page of the local server may load. The static page adds to this.
 *
 * @param {string[]} [scripts] further sources of scripts
 */
const policy = (...scripts) =>
  [
    "default-src 'none'",
    `script-src 'self' ${scripts.join(' ')}`.trim(),
    "style-src 'self'",
    "img-src 'self' data: blob:",
    "connect-src 'self'",
    "base-uri 'none'",
    "form-action 'none'",
  ].join('; ');

/** @param {string} entry a script of `page/js` */
async function bundle(entry) {
  const { outputFiles } = await esbuild.build({
    entryPoints: [path.join(PAGE, 'js', entry)],
    bundle: true,
    format: 'iife',
    target: 'es2022',
    minify: true,
    write: false,
    legalComments: 'none',
    loader: { '.wasm': 'binary' },
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

module.exports = { FILES, PAGE, buildPage, fill, policy };
