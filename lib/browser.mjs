// What bundlers for browsers get instead of the native modules. They look for the names.

function refuse() {
  throw new Error(
    'The package scrivo runs in Node.js, Electron, Bun and Deno. ' +
      'In browsers use scrivo-wasm, which has the same interface after `await start()`.',
  );
}

export const {
  Beautifier,
  FIGURES,
  FigureType,
  initScrivo,
  LineIdealiser,
  loadTemplates,
  optimizeAStroke,
  outlineOf,
  resample,
  templates,
  WISHES,
} = refuse();
