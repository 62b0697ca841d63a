// What bundlers for browsers get instead of the native modules.

throw new Error(
  'The package scrivo runs in Node.js, Electron, Bun and Deno. ' +
    'In browsers use scrivo-wasm, which has the same interface after `await start()`.',
);

// Never reached: bundlers look for the names.
const missing = undefined;
export {
  missing as Beautifier,
  missing as FIGURES,
  missing as FigureType,
  missing as initScrivo,
  missing as optimizeAStroke,
  missing as outlineOf,
  missing as templates,
};
