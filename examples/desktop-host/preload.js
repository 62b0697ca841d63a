'use strict';

// The page sees one function. Strokes and answers are plain objects, of which each
// side gets a copy.

const { contextBridge, ipcRenderer } = require('electron');

contextBridge.exposeInMainWorld('scrivo', {
  beautify: (stroke, width, height, others) =>
    ipcRenderer.invoke('scrivo:beautify', { stroke, width, height, others }),
});
