'use strict';

// All that the page gets to see: one function. Strokes and figures are plain
// objects, which cross the border between the two worlds as copies.

const { contextBridge, ipcRenderer } = require('electron');

contextBridge.exposeInMainWorld('scrivo', {
  idealise: (stroke, width, height, otherStrokes) =>
    ipcRenderer.invoke('scrivo:idealise', { stroke, width, height, otherStrokes }),
});
