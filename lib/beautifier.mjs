import beautifier from './beautifier.js';

export const { Beautifier, FIGURES, outlineOf, resample } = beautifier;
