export * from './index.js';
