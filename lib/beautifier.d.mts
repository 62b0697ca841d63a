export * from './beautifier.js';
