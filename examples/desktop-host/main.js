'use strict';

// The main process loads the native module and answers the page.

const path = require('node:path');
const { app, BrowserWindow, ipcMain } = require('electron');
const { Beautifier } = require('scrivo/beautifier');

const beautifier = new Beautifier();

ipcMain.handle('scrivo:beautify', (_event, { stroke, width, height, others }) =>
  beautifier.beautify(stroke, width, height, others),
);

app.whenReady().then(() => {
  const window = new BrowserWindow({
    webPreferences: {
      preload: path.join(__dirname, 'preload.js'),
      contextIsolation: true, // the page cannot reach the preload script's objects
      sandbox: true, // the preload script cannot load native code: hence the messages
    },
  });
  return window.loadFile(path.join(__dirname, 'index.html'));
});

app.on('window-all-closed', () => app.quit());
