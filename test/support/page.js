'use strict';

// The drawing page in Chromium, with its server.

const { once } = require('node:events');
const { buildPage } = require('../../surface/build.js');
const { createRecogniser } = require('../../surface/recognise.js');
const { createServer, listen } = require('../../surface/server.js');
const { launchChromium } = require('./chromium.js');
const { HEIGHT, WIDTH } = require('./strokes.js');

const VIEW = { width: WIDTH, height: HEIGHT };

/** A server that can be stopped and started again at the same address. */
class PageServer {
  #recognise;
  #files;
  #server;
  #port = 0;

  static async create() {
    const server = new PageServer();
    [server.#recognise, server.#files] = await Promise.all([createRecogniser(), buildPage()]);
    await server.start();
    return server;
  }

  async start() {
    this.#server = createServer(this.#recognise, this.#files);
    this.address = await listen(this.#server, this.#port);
    this.#port = this.#server.address().port;
  }

  async stop() {
    const closed = once(this.#server, 'close');
    this.#server.close().closeAllConnections();
    await closed;
  }
}

/** One page: draws on it, and reads what is on its surface. Places are CSS pixels. */
class DrawingPage {
  errors = [];

  static async open(browser, address, options = {}) {
    const opened = new DrawingPage();
    const context = await browser.newContext({ viewport: VIEW, ...options });
    opened.page = await context.newPage();
    opened.page.on('pageerror', (error) => opened.errors.push(error));
    opened.page.on('requestfailed', (request) => opened.errors.push(request.url()));
    await opened.load(address);
    return opened;
  }

  /** Another tab of the same browser. */
  async openAnother() {
    const other = new DrawingPage();
    other.page = await this.page.context().newPage();
    await other.load(this.page.url());
    return other;
  }

  /** Empties the browser's storage and loads the page again: quicker than a new one. */
  async reset(address) {
    const { page } = this;
    await page.goto('about:blank');
    const client = await page.context().newCDPSession(page);
    await client.send('Storage.clearDataForOrigin', {
      origin: new URL(address).origin,
      storageTypes: 'all',
    });
    await client.detach();
    await page.setViewportSize(VIEW);
    await page.emulateMedia({ colorScheme: null });
    await this.load(address);
  }

  async load(address) {
    await this.page.goto(address);
    await this.page.waitForFunction(() => window.scrivo?.isReady);
  }

  /** Whether it is the only tab of its browser. */
  get isAlone() {
    return this.page.context().pages().length === 1;
  }

  close() {
    return this.page.context().close();
  }

  /** Draws with a mouse of 60 samples a second; resolves when the stroke is answered. */
  draw(points) {
    return this.drawWith(
      'mouse',
      points.map(([x, y]) => [x, y, 0.5]),
    );
  }

  /** Draws with the mouse of the browser, without lifting it. */
  async press(points) {
    const { mouse } = this.page;
    const few = points.filter((_, i) => i % 3 === 0);
    await mouse.move(...few[0]);
    await mouse.down();
    for (const point of [...few.slice(1), points.at(-1)]) await mouse.move(...point);
  }

  /** Rests the mouse, and lifts it. */
  async lift(rest = 0) {
    await this.page.waitForTimeout(rest);
    await this.page.mouse.up();
    await this.answered();
  }

  /** Presses keys one after the other. */
  async keys(...names) {
    for (const name of names) await this.page.keyboard.press(name);
  }

  /** Clicks what has this text in the panel. */
  choose(text) {
    return this.page.click(`#inspector >> text="${text}"`);
  }

  /** Sets when ink becomes a figure. */
  async snapOn(name) {
    await this.page.click('#open-settings');
    await this.page.selectOption('#settings select', name);
    await this.keys('Escape');
  }

  /** The number of samples of the stroke in progress, once all of them are stored. */
  async storedSketch() {
    const drawn = await this.page.evaluate(() => window.scrivo.drawing.sketch.samples.length);
    const stored = () =>
      this.page.evaluate(async () => {
        const result = (request) =>
          new Promise((resolve) => (request.onsuccess = () => resolve(request.result)));
        const database = await result(indexedDB.open('scrivo-drawing'));
        const parts = await result(database.transaction('sketch').objectStore('sketch').getAll());
        database.close();
        return parts.reduce((sum, { samples }) => sum + samples.length, 0);
      });
    for (let tries = 0; (await stored()) < drawn; tries += 1) {
      if (tries > 100) throw new Error('the stroke in progress is not stored');
      await this.page.waitForTimeout(50);
    }
    return drawn;
  }

  answered() {
    return this.page.waitForFunction(() => window.scrivo.recogniser.waiting === 0);
  }

  /**
   * Draws with events of one kind of pointer, made in the page: through points [x, y, pressure] that
   * are `rate` samples a second. In the end the pen rests for some ms and moves on to a place, if given:
   * both by the clock of the page, whatever the load.
   */
  async drawWith(pointerType, points, rate = 60, { rest = 0, onward = null } = {}) {
    await this.page.evaluate(
      async ([type, samples, step, ms, next]) => {
        const canvas = document.getElementById('surface');
        const send = (name, [clientX, clientY, pressure], i) => {
          const event = new PointerEvent(name, {
            ...{ pointerType: type, pointerId: 7, isPrimary: true, bubbles: true },
            ...{ clientX, clientY, pressure, buttons: 1 },
          });
          Object.defineProperty(event, 'timeStamp', { value: 1000 + i * step });
          canvas.dispatchEvent(event);
        };
        send('pointerdown', samples[0], 0);
        samples.forEach((sample, i) => i > 0 && send('pointermove', sample, i));
        if (ms > 0) await new Promise((resolve) => setTimeout(resolve, ms));
        if (next) send('pointermove', next, samples.length);
        send('pointerup', next ?? samples.at(-1), samples.length + 1);
      },
      [pointerType, points, 1000 / rate, rest, onward],
    );
    await this.answered();
  }

  /** Draws a spiral of so many samples, a thousand of them an event. */
  async drawLong(count) {
    await this.page.evaluate((total) => {
      const canvas = document.getElementById('surface');
      const eventAt = (name, i) =>
        new PointerEvent(name, {
          ...{ pointerType: 'mouse', pointerId: 1, bubbles: true, buttons: 1, pressure: 0.5 },
          clientX: 500 + (100 + i / 800) * Math.cos(i / 100),
          clientY: 400 + (100 + i / 800) * Math.sin(i / 100),
        });
      const send = (name, i, count = 1) => {
        const event = eventAt(name, i);
        event.getCoalescedEvents = () =>
          Array.from({ length: count }, (_, k) => eventAt(name, i + k));
        canvas.dispatchEvent(event);
      };
      send('pointerdown', 0);
      send('pointermove', 1, 999);
      for (let i = 1000; i < total; i += 1000) send('pointermove', i, 1000);
      send('pointerup', total);
    }, count);
    await this.answered();
  }

  /** Items without their ink, of which the number of samples is kept. */
  items() {
    return this.page.evaluate(() =>
      window.scrivo.drawing.items.map(({ ink, ...item }) => ({
        ...item,
        samples: ink.samples.length / 4,
      })),
    );
  }

  async kinds() {
    return (await this.items()).map(({ figure }) => figure?.subtype ?? figure?.kind ?? null);
  }

  async figure() {
    return (await this.items()).at(-1).figure;
  }

  status() {
    return this.page.textContent('#status');
  }

  /** Whether a canvas is painted at a place: by default that of the drawing, not what moves above it. */
  isPainted([x, y], canvas = 'settled') {
    return this.page.evaluate(
      ([px, py, id]) => {
        const context = document.getElementById(id).getContext('2d');
        const at = [px, py].map((value) => Math.round(value * devicePixelRatio));
        return context.getImageData(...at, 1, 1).data[3] > 128;
      },
      [x, y, canvas],
    );
  }
}

module.exports = { DrawingPage, PageServer, VIEW, launchChromium };
