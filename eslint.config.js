'use strict';

const js = require('@eslint/js');
const globals = require('globals');

const rules = {
  eqeqeq: 'error',
  'no-unused-vars': ['error', { argsIgnorePattern: '^_' }],
  'no-var': 'error',
  'object-shorthand': 'error',
  'prefer-const': 'error',
};

module.exports = [
  {
    ignores: [
      'packages/cli/page/',
      'build/',
      'packages/wasm/dist/',
      'out/',
      'prebuilds/',
      'docs/api/',
    ],
  },
  js.configs.recommended,
  { rules, linterOptions: { reportUnusedDisableDirectives: 'error' } },
  // The native module runs it as a script, in sloppy mode: its comment says why.
  { files: ['src/*.js'], languageOptions: { sourceType: 'script' }, rules: { strict: 'off' } },
  {
    files: ['**/*.js'],
    ignores: ['packages/cli/page/', 'packages/wasm/**', 'src/*.js'],
    languageOptions: { sourceType: 'commonjs', globals: globals.node },
    rules: { strict: ['error', 'global'] },
  },
  { files: ['**/*.mjs'], languageOptions: { sourceType: 'module', globals: globals.node } },
  {
    files: ['surface/page/**', 'examples/**/page.js'],
    languageOptions: { globals: { ...globals.browser, FAMILIES: false, WISHES: false } },
  },
  {
    files: ['packages/wasm/**/*.js'],
    languageOptions: { sourceType: 'module', globals: globals.browser },
  },
  // Functions that run in the page.
  {
    files: [
      'test/**/*.browser.test.js',
      'test/support/chromium.js',
      'test/support/page.js',
      'bench/surface.bench.js',
    ],
    languageOptions: { globals: globals.browser },
  },
];
