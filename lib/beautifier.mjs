import beautifier from './beautifier.js';

export const { Beautifier, FIGURES, WISHES, outlineOf, resample } = beautifier;
