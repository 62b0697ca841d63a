export * from './lines.js';
