'use strict';

// The main process: it loads the native module, and answers the page.

const path = require('node:path');
const { app, BrowserWindow, ipcMain } = require('electron');
const { initScrivo, optimizeAStroke, templates } = require('scrivo');

initScrivo(templates);

ipcMain.handle('scrivo:idealise', (_event, { stroke, width, height, otherStrokes }) =>
  optimizeAStroke(stroke, width, height, otherStrokes),
);

app.whenReady().then(() => {
  const window = new BrowserWindow({
    webPreferences: {
      preload: path.join(__dirname, 'preload.js'),
      contextIsolation: true, // the page cannot reach what the preload script has
      sandbox: true, // nor can that script load native code: hence the messages
    },
  });
  return window.loadFile(path.join(__dirname, 'index.html'));
});

app.on('window-all-closed', () => app.quit());
