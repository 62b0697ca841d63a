'use strict';

const { chromium } = require('playwright-core');

const CHROMIUM = process.env.SCRIVO_CHROMIUM ?? '/usr/bin/chromium';
const FLAGS = [
  '--disable-gpu',
  '--disable-background-networking',
  '--disable-component-update',
  '--disable-sync',
  '--no-first-run',
  ...(process.getuid?.() === 0 ? ['--no-sandbox'] : []),
];

/** Starts the system's Chromium, headless and without background network traffic. */
const launchChromium = () => chromium.launch({ executablePath: CHROMIUM, args: FLAGS });

module.exports = { launchChromium };
