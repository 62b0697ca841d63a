'use strict';

const assert = require('node:assert/strict');
const { once } = require('node:events');
const fs = require('node:fs');
const http = require('node:http');
const os = require('node:os');
const path = require('node:path');
const { after, before, describe, test } = require('node:test');
const axe = require('axe-core');
const { HANDS, drawInk } = require('../../research/ink/index.js');
const { writeSite } = require('../../tools/site.js');
const { DrawingPage, PageServer, launchChromium } = require('../support/page.js');
const { inkOf, shakyLine } = require('../support/strokes.js');

// Tests that run at a time: they mostly wait, for frames and for pens that rest.
const AT_ONCE = 4;

const WASM = path.join(__dirname, '../../packages/wasm/dist/scrivo.wasm');

const LINE = shakyLine([200, 300], [700, 420], 4);
const SQUARE = inkOf('square');
const CIRCLE = inkOf('circle');

const near = (value, expected, tolerance, what) =>
  assert.ok(
    Math.abs(value - expected) <= tolerance,
    `${what ?? 'value'}: ${value}, not ${expected}`,
  );

const nearPlace = (place, [x, y], tolerance = 1) => {
  near(place.x, x, tolerance, 'x');
  near(place.y, y, tolerance, 'y');
};

describe('the drawing page', { concurrency: AT_ONCE }, () => {
  let server;
  let browser;

  before(async () => {
    [server, browser] = await Promise.all([PageServer.create(), launchChromium()]);
  });

  after(async () => {
    await browser?.close();
    await server?.stop();
  });

  const idle = [];

  /** A test with an empty page. */
  const onPage = (name, body) =>
    test(name, async () => {
      const used = idle.pop();
      await used?.reset(server.address);
      const drawing = used ?? (await DrawingPage.open(browser, server.address));
      await body(drawing, drawing.page);
      assert.deepEqual(drawing.errors, []);
      if (drawing.isAlone) idle.push(drawing);
      else await drawing.close();
    });

  for (const rate of [60, 240]) {
    onPage(`every figure drawn with a pen at ${rate} Hz`, async (drawing) => {
      const expected = {
        ...{ dot: 'dot', line: 'line', angle: 'angle', isosceles: 'triangle' },
        ...{ square: 'square', rectangle: 'rectangle', circle: 'circle', ellipse: 'ellipse' },
      };
      const hand = { ...HANDS.careful, rate };
      for (const [figure, kind] of Object.entries(expected)) {
        const { points } = drawInk({ figure, seed: 1, hand, at: { x: 500, y: 400 } });
        await drawing.drawWith('pen', points, rate);
        const { kind: found, subtype } = await drawing.figure();
        assert.ok([found, subtype].includes(kind), `${figure}: ${found} ${subtype}`);
      }
      const [dot] = await drawing.items();
      nearPlace(dot.figure.centre, [500, 400], 2);
      assert.match(await drawing.status(), /^Ellipse, confidence \d\d\s%$/);
    });
  }

  onPage('engines: the template engine, and both on the same ink', async (drawing, page) => {
    await page.focus('input[value=beautifier]');
    await drawing.keys('ArrowRight');
    await drawing.draw(LINE);
    assert.equal(await drawing.status(), 'Line');
    await drawing.keys('Control+z', 'Control+z');
    await page.click('text=Both');
    await drawing.draw(CIRCLE);
    const [{ figure, answer }] = await drawing.items();
    assert.deepEqual([figure.kind, answer.second.kind], ['circle', 'circle']);
    nearPlace(answer.second.centre, [figure.centre.x, figure.centre.y], 8);
    assert.match(await page.textContent('#engine-info'), /^Both engines, native.* \d+ µs$/);
  });

  onPage(
    'undo goes from the figure to ink to nothing, redo back, and clear is undone',
    async (drawing, page) => {
      await drawing.draw(LINE);
      await drawing.draw(SQUARE);
      await drawing.keys('Control+z');
      assert.deepEqual(await drawing.kinds(), ['line', null]);
      await page.click('#undo');
      assert.deepEqual(await drawing.kinds(), ['line']);
      await drawing.keys('Control+Shift+z', 'Control+y');
      assert.deepEqual(await drawing.kinds(), ['line', 'square']);
      await page.click('#clear');
      assert.deepEqual(await drawing.kinds(), []);
      assert.equal(await drawing.isPainted([500, 372]), false, 'the page is blank');
      await page.click('#undo');
      assert.deepEqual(await drawing.kinds(), ['line', 'square']);
      assert.equal(await page.isDisabled('#redo'), false);
    },
  );

  onPage('the ink is painted while it is drawn, then the figure alone', async (drawing) => {
    const edge = [200, 300];
    const ink = [...shakyLine(edge, [700, 300], 0), [700, 330]].slice(0, 60);
    const peak = shakyLine([200, 500], [700, 500], 16);
    await drawing.draw(ink);
    assert.equal(await drawing.isPainted([450, 300]), true);
    await drawing.draw(peak);
    const { from, to } = await drawing.figure();
    const far = peak.reduce((p, q) => (Math.abs(q[1] - 500) > Math.abs(p[1] - 500) ? q : p));
    assert.equal(await drawing.isPainted([(from.x + to.x) / 2, (from.y + to.y) / 2]), true);
    assert.equal(await drawing.isPainted(far), false, 'the ink that it came from is gone');
  });

  onPage(
    'resting the pen: a preview, back to ink, the snap, and a drag that sizes and turns',
    async (drawing) => {
      await drawing.snapOn('hold');
      await drawing.draw(CIRCLE);
      assert.deepEqual(await drawing.kinds(), [null], 'lifting alone keeps the ink');

      const [x, y] = CIRCLE.at(-1);
      await drawing.drawWith('pen', CIRCLE, 60, { rest: 700, onward: [x + 30, y + 30] });
      assert.deepEqual(await drawing.kinds(), [null, null], 'moving on takes the figure back');

      await drawing.drawWith('pen', CIRCLE, 60, { rest: 850 });
      const lifted = await drawing.figure();
      assert.equal(lifted?.kind, 'circle', 'lifting during the preview takes the figure');

      const { centre, radius } = lifted;
      const outward = [centre.x + 2 * (x - centre.x), centre.y + 2 * (y - centre.y)];
      await drawing.drawWith('pen', CIRCLE, 60, { rest: 1100, onward: outward });
      const sized = await drawing.figure();
      near(sized.radius, 2 * radius, 0.1 * radius, 'radius');
      await drawing.keys('Control+z');
      assert.deepEqual((await drawing.kinds()).at(-1), null, 'undo brings the ink back');
    },
  );

  onPage('figures back to ink, ink to figures, and alternatives', async (drawing, page) => {
    await drawing.draw(SQUARE);
    assert.equal(await page.isVisible('#inspector'), false, 'the panel opens on demand');
    assert.match(await page.textContent('#chip'), /^Square · \d\d\s%$/);
    await page.click('#chip');
    await drawing.choose('As drawn');
    assert.deepEqual(await drawing.kinds(), [null]);
    await page.selectOption('#inspector select', 'rectangle');
    await page.waitForFunction(() => window.scrivo.drawing.items[0].figure);
    assert.deepEqual(await drawing.kinds(), ['rectangle']);
    await drawing.choose('Square');
    await page.waitForSelector('#inspector h2 >> text="Square"');
    assert.match(await page.textContent('#inspector dl'), /Sides\d+Angles90°/);
    await drawing.draw(inkOf('zigzag'));
    assert.equal(await page.isVisible('#inspector'), false, 'a stroke closes the panel');
    await page.click('#chip');
    assert.match(await page.textContent('#inspector .reason'), /resembles no figure/);
  });

  onPage(
    'a stroke may begin on the chip, and the panel leaves its figure in view',
    async (drawing, page) => {
      const size = page.viewportSize();
      await drawing.draw(SQUARE.map(([x, y]) => [x - 500 + size.width - 130, y - 400 + 260]));
      const { x, y, width } = await (await page.$('#chip')).boundingBox();
      await drawing.press(shakyLine([x + width / 2, y + 12], [x - 300, y + 40], 2));
      await drawing.lift();
      assert.deepEqual(await drawing.kinds(), ['square', 'line']);
      await page.click('[data-tool=select]');
      const [{ figure }] = await drawing.items();
      const [, p, q] = figure.corners;
      await page.mouse.click((p.x + q.x) / 2, (p.y + q.y) / 2);
      const box = await (await page.waitForSelector('#inspector')).boundingBox();
      assert.ok(box.x + box.width < Math.min(...figure.corners.map((corner) => corner.x)));
    },
  );

  onPage(
    'selected figures are moved, sized by their handles, duplicated and deleted',
    async (drawing, page) => {
      await drawing.draw(SQUARE);
      const { corners } = await drawing.figure();
      const [first, , third] = corners;
      await page.click('[data-tool=select]');
      const drag = async (from, to) => {
        await page.mouse.move(...from);
        await page.mouse.down();
        await page.mouse.move(...to, { steps: 3 });
        await page.mouse.up();
      };
      const edge = [(first.x + corners[1].x) / 2, (first.y + corners[1].y) / 2];
      await page.mouse.click(...edge);
      await drag(edge, [edge[0] + 40, edge[1] - 30]);
      const moved = await drawing.figure();
      nearPlace(moved.corners[0], [first.x + 40, first.y - 30]);
      assert.equal(await drawing.isPainted([moved.corners[0].x, moved.corners[0].y]), true);
      assert.equal(await drawing.isPainted([third.x, third.y]), false);

      const [from, opposite] = [moved.corners[0], moved.corners[2]];
      const target = [(from.x + opposite.x) / 2, (from.y + opposite.y) / 2];
      await drag([from.x, from.y], target);
      const half = await drawing.figure();
      nearPlace(half.corners[0], target);
      nearPlace(half.corners[2], [opposite.x, opposite.y]);
      assert.equal(half.subtype, 'square');

      await drawing.choose('Duplicate');
      await drawing.choose('Delete');
      assert.equal((await drawing.items()).length, 1);
      await drawing.keys('Control+z', 'Control+z', 'Control+z', 'Control+z');
      assert.deepEqual((await drawing.figure()).corners, corners, 'each is a step');
    },
  );

  onPage(
    'the keyboard selects, moves, sizes, copies and deletes, and leaves the drawing',
    async (drawing, page) => {
      await drawing.draw(SQUARE);
      await drawing.draw(inkOf('line'));
      const [{ figure }] = await drawing.items();
      await drawing.keys('Tab');
      assert.match(await drawing.status(), /^Square/);
      await drawing.keys('ArrowRight', 'ArrowRight', 'Shift+ArrowDown', ']');
      const [{ figure: moved }] = await drawing.items();
      const mid = ({ corners }) =>
        [0, 1].map((k) => corners.reduce((s, c) => s + [c.x, c.y][k] / 4, 0));
      const [x, y] = mid(figure);
      assert.deepEqual(
        mid(moved).map((v) => v.toFixed(6)),
        [x + 2, y + 10].map((v) => v.toFixed(6)),
      );
      await drawing.keys('Control+d', 'Delete', 'Control+z', 'Tab', 'Tab', 'Tab', 'Tab');
      assert.equal((await drawing.items()).length, 3);
      assert.notEqual(await page.evaluate(() => document.activeElement.id), 'surface');
    },
  );

  onPage(
    'resizing and zooming never distort, and ink drawn zoomed lands under the pen',
    async (drawing, page) => {
      await drawing.draw(CIRCLE);
      const before = await drawing.items();
      await page.setViewportSize({ width: 500, height: 900 });
      await page.setViewportSize({ width: 1000, height: 800 });
      assert.deepEqual(await drawing.items(), before);
      await page.mouse.move(500, 400);
      await page.keyboard.down('Control');
      await page.mouse.wheel(0, -315);
      await page.keyboard.up('Control');
      await page.waitForTimeout(150);
      const scale = await page.evaluate(() => window.scrivo.view.scale);
      near(scale, 2, 0.05, 'scale');
      const { centre, radius } = before[0].figure;
      const rim = [500 + scale * (centre.x - 500 + radius), 400 + scale * (centre.y - 400)];
      assert.equal(await drawing.isPainted(rim), true, 'the picture follows');
      await drawing.draw(shakyLine([300, 100], [700, 100]));
      const { from } = await drawing.figure();
      nearPlace(from, [500 - 200 / scale, 400 - 300 / scale], 5);
    },
  );

  onPage('two fingers zoom, and a palm beside the pen draws nothing', async (drawing, page) => {
    await page.evaluate(() => {
      const canvas = document.getElementById('surface');
      const send = (name, pointerId, clientX, more) =>
        canvas.dispatchEvent(
          new PointerEvent(name, {
            ...{ pointerType: 'touch', pointerId, clientX, clientY: 300, bubbles: true, ...more },
          }),
        );
      send('pointerdown', 1, 400);
      send('pointerdown', 2, 600);
      send('pointermove', 2, 800);
      send('pointerup', 1, 400);
      send('pointerup', 2, 800);
      send('pointerdown', 3, 400, { width: 90, height: 70 });
      send('pointerup', 3, 400);
    });
    near(await page.evaluate(() => window.scrivo.view.scale), 2, 1e-6, 'scale');
    assert.deepEqual(await drawing.items(), []);
  });

  onPage('lines snap to others, with a cue', async (drawing, page) => {
    await drawing.draw(SQUARE);
    const { corners } = await drawing.figure();
    const [corner] = corners;
    await drawing.press(shakyLine([80, 80], [corner.x - 4, corner.y - 3], 1));
    await page.evaluate(() => new Promise(requestAnimationFrame));
    const ring = [corner.x, corner.y - 7];
    assert.equal(await drawing.isPainted(ring, 'surface'), true, 'a ring around the corner');
    await drawing.lift();
    nearPlace((await drawing.figure()).to, [corner.x, corner.y], 0.01);
  });

  onPage('the eraser, the colours and the widths', async (drawing, page) => {
    await page.check('input[aria-label=Red]', { force: true });
    await page.check('input[aria-label=Broad]', { force: true });
    await drawing.draw(LINE);
    await drawing.draw(SQUARE);
    const [{ colour, width }] = await drawing.items();
    assert.deepEqual([colour, width], [1, 7]);
    await page.click('[data-tool=erase]');
    await drawing.draw([
      [100, 360],
      [900, 360],
      [900, 500],
      [100, 500],
    ]);
    assert.deepEqual(await drawing.kinds(), []);
    await drawing.keys('Control+z');
    assert.deepEqual(await drawing.kinds(), ['line', 'square'], 'one step');
  });

  onPage(
    'a reload keeps the drawing, its history and the stroke in progress',
    async (drawing, page) => {
      await drawing.draw(LINE);
      await drawing.draw(SQUARE);
      await drawing.keys('Control+z');
      const before = await drawing.items();
      await drawing.load(server.address);
      assert.deepEqual(await drawing.items(), before);
      await page.click('#redo');
      assert.deepEqual(await drawing.kinds(), ['line', 'square']);
      await drawing.snapOn('lift');
      await drawing.press(CIRCLE);
      await drawing.load(server.address);
      await drawing.answered();
      assert.deepEqual(await drawing.kinds(), ['line', 'square', 'circle']);
    },
  );

  onPage(
    'what the browser refuses to store is stored with the next change',
    async (drawing, page) => {
      await page.evaluate(() => {
        const { put } = IDBObjectStore.prototype;
        IDBObjectStore.prototype.put = () => {
          throw new DOMException('full', 'QuotaExceededError');
        };
        window.makeRoom = () => (IDBObjectStore.prototype.put = put);
      });
      await drawing.draw(LINE);
      await page.waitForSelector('#alert:not([hidden])');
      assert.match(await page.textContent('#alert'), /save it to a file/);
      await page.evaluate(() => window.makeRoom());
      await drawing.draw(SQUARE);
      await drawing.load(server.address);
      assert.deepEqual(await drawing.kinds(), ['line', 'square']);
    },
  );

  onPage('a database that answers late adds what was drawn meanwhile', async (drawing, page) => {
    await drawing.draw(SQUARE);
    await page.addInitScript(() => {
      // An empty page between tests has no storage.
      if (location.protocol === 'about:' || !sessionStorage.isLate) return;
      delete sessionStorage.isLate;
      const open = indexedDB.open.bind(indexedDB);
      indexedDB.open = (...args) => {
        const late = {};
        window.answer = () => {
          const request = open(...args);
          request.onupgradeneeded = late.onupgradeneeded;
          request.onsuccess = () => Object.assign(late, { result: request.result }).onsuccess();
        };
        return late;
      };
    });
    await page.evaluate(() => (sessionStorage.isLate = 'yes'));
    await page.goto(server.address);
    await page.waitForFunction(() => !document.querySelector('main').inert);
    await drawing.draw(LINE);
    assert.deepEqual(await drawing.kinds(), ['line']);
    await page.evaluate(() => window.answer());
    await page.waitForFunction(() => window.scrivo.isReady);
    await drawing.answered();
    assert.deepEqual(await drawing.kinds(), ['square', 'line']);
    await drawing.load(server.address);
    assert.deepEqual(await drawing.kinds(), ['square', 'line']);
  });

  onPage('a tab that crashes in the middle of a stroke keeps its ink', async (drawing, page) => {
    await drawing.snapOn('lift');
    await drawing.draw(SQUARE);
    await drawing.press(LINE);
    const drawn = await drawing.storedSketch();
    const client = await page.context().newCDPSession(page);
    client.send('Page.crash').catch(() => {});
    await page.waitForEvent('crash');
    const again = await drawing.openAnother();
    assert.deepEqual(await again.kinds(), ['square', null]);
    const [, { samples, answer }] = await again.items();
    assert.equal(answer.reason, 'restored');
    assert.equal(samples, drawn);
  });

  onPage('one tab at a time has the drawing, and another takes it over', async (drawing, page) => {
    await drawing.draw(SQUARE);
    const other = await drawing.openAnother();
    assert.deepEqual(await other.items(), []);
    assert.match(await other.page.textContent('#alert'), /open in another tab/);
    await page.bringToFront();
    await drawing.press(LINE);
    await other.page.bringToFront();
    await other.page.click('#take-over');
    await page.waitForSelector('#take-over:visible');
    await other.page.waitForFunction(() => window.scrivo?.drawing.items.length === 2);
    await other.answered();
    assert.deepEqual(await other.kinds(), ['square', 'line']);
    await other.draw(CIRCLE);
    await page.bringToFront();
    await page.mouse.up();
    await page.click('#take-over');
    await page.waitForFunction(() => window.scrivo?.drawing.items.length === 3);
  });

  test('strokes drawn while the server is down are kept, also by a closed tab, and answered later', async () => {
    const own = await PageServer.create();
    const drawing = await DrawingPage.open(browser, own.address);
    const { page } = drawing;
    await drawing.snapOn('lift');
    await drawing.press(LINE);
    await own.stop();
    await page.mouse.up();
    await page.waitForSelector('#alert:not([hidden])');
    assert.match(await page.textContent('#alert'), /One stroke waits/);
    await own.start();
    await drawing.answered();
    assert.deepEqual(await drawing.kinds(), ['line']);
    await page.waitForSelector('#alert', { state: 'hidden' });

    await own.stop();
    await drawing.press(SQUARE);
    await page.mouse.up();
    await page.waitForSelector('#alert:not([hidden])');
    await own.start();
    const again = await drawing.openAnother();
    await again.page.click('#take-over');
    await again.page.waitForFunction(() => window.scrivo?.drawing.items.length === 2);
    await again.answered();
    assert.deepEqual(await again.kinds(), ['line', 'square']);
    await drawing.close();
    await own.stop();
  });

  onPage(
    'a drawing that is saved and opened again is the same; exports show it',
    async (drawing, page) => {
      await drawing.draw(SQUARE);
      await drawing.draw(inkOf('zigzag'));
      const get = async (name) => {
        await page.click('#open-menu');
        const [download] = await Promise.all([
          page.waitForEvent('download'),
          page.click(`[data-file=${name}]`),
        ]);
        return Buffer.concat(await (await download.createReadStream()).toArray());
      };
      const saved = await get('save');
      const before = await drawing.items();
      await page.click('#clear');
      await page.setInputFiles('#file', {
        name: 'a.json',
        mimeType: 'application/json',
        buffer: saved,
      });
      await page.waitForFunction(() => window.scrivo.drawing.items.length === 2);
      const withoutIds = (items) => items.map(({ id: _, ...item }) => item);
      assert.deepEqual(withoutIds(await drawing.items()), withoutIds(before));

      const svg = String(await get('svg'));
      assert.deepEqual(
        [svg.match(/fill="none" stroke=/g).length, svg.match(/<path /g).length],
        [1, 2],
      );
      const png = await get('png');
      assert.deepEqual([...png.subarray(1, 4)], [...Buffer.from('PNG')]);
      assert.ok(png.readUInt32BE(16) > 300, 'width');
      const traces = String(await get('inkml')).match(/<trace /g);
      assert.equal(traces.length, 2);

      const changed = (change) => {
        const value = JSON.parse(saved);
        change(value.items[0]);
        return Buffer.from(JSON.stringify(value));
      };
      const open = (name, buffer) =>
        page.setInputFiles('#file', { name, mimeType: 'application/json', buffer });
      const broken = [
        [Buffer.from('{}'), 'this is no drawing'],
        [png, 'this is not JSON'],
        [changed(({ figure }) => (figure.corners[0].x = 1e300)), 'items[0].figure.corners'],
        [changed(({ figure }) => (figure.subtype = 'blob')), 'items[0].figure.subtype'],
        [changed(({ ink }) => (ink.points[1][0] = 1e9)), 'items[0].ink.points[1] is too far'],
      ];
      for (const [i, [buffer, message]] of broken.entries()) {
        await open(`${i}.json`, buffer);
        const text = `${i}.json cannot be opened: ${message}`;
        await page.waitForFunction(
          (start) => document.getElementById('alert-text').textContent.startsWith(start),
          text,
        );
      }
      assert.equal((await drawing.items()).length, 2);
      const answer = {
        engine: 'constructor',
        confidence: 'high',
        alternatives: [null],
        micros: {},
      };
      await open(
        'odd.json',
        changed((item) => Object.assign(item, { answer, width: 5000 })),
      );
      await page.waitForFunction(() => window.scrivo.drawing.items[0].width === 100);
      assert.equal(await page.isVisible('#alert'), false, 'the last file was opened');
      await page.focus('#surface');
      await drawing.keys('Tab');
      assert.match(await page.textContent('#inspector'), /^SquareSides/);
    },
  );

  onPage('settings show their effect on example ink', async (drawing, page) => {
    await page.click('#open-settings');
    const captions = () =>
      page.$$eval('.examples figcaption', (all) => all.map((c) => c.textContent));
    await page.waitForSelector('.examples figure');
    const count = async () => (await captions()).filter((text) => text !== 'Ink').length;
    assert.equal(await count(), 10);
    await page.fill('#settings input[type=range]', '40');
    await page.waitForFunction(() => document.querySelectorAll('.examples .changed').length === 8);
    await page.click('text=Quadrangle');
    await page.waitForFunction(() => document.querySelectorAll('.examples .changed').length === 5);
    await page.click('text=Put the examples on the page');
    await drawing.answered();
    assert.equal((await drawing.kinds()).filter((kind) => kind !== null).length, 5);
  });

  onPage('the explanation of a stroke, and its ink for the command line', async (drawing, page) => {
    await page.context().grantPermissions(['clipboard-read', 'clipboard-write']);
    await drawing.draw(SQUARE);
    await page.click('#chip');
    await drawing.choose('Why?');
    await page.waitForSelector('#why meter');
    assert.match(
      await page.textContent('#why figure:nth-child(1) figcaption >> nth=1'),
      /^Quadrangle \d\d\s%$/,
    );
    await page.click('text=Copy as NDJSON');
    await page.waitForSelector('text=Copied');
    const line = JSON.parse(await page.evaluate(() => navigator.clipboard.readText()));
    assert.equal(line.points.length, SQUARE.length);
  });

  onPage('ink of 200,000 samples is drawn and kept', async (drawing) => {
    await drawing.drawLong(200_000);
    const [{ samples, answer }] = await drawing.items();
    assert.deepEqual([samples, answer.reason], [200_000, 'no-figure']);
    assert.equal(await drawing.isPainted([620, 400]), true);
  });

  for (const colorScheme of ['light', 'dark']) {
    onPage(`accessible, ${colorScheme}`, async (drawing, page) => {
      await page.emulateMedia({ colorScheme });
      await page.evaluate(axe.source);
      const check = async (what) => {
        const violations = await page.evaluate(async () => {
          const { violations: found } = await window.axe.run();
          return found.flatMap(({ id, nodes }) => nodes.map(({ html }) => `${id}: ${html}`));
        });
        assert.deepEqual(violations, [], what);
      };
      await check('empty');
      await drawing.draw(SQUARE);
      await page.click('#open-menu');
      await check('chip and menu');
      await drawing.keys('Escape');
      await page.focus('#surface');
      await drawing.keys('Enter');
      await check('panel');
      await drawing.choose('Why?');
      await page.waitForSelector('#why meter');
      await check('explanation');
      await drawing.keys('Escape');
      await page.click('#open-settings');
      await page.waitForSelector('.examples figure');
      await check('settings');
      await drawing.keys('Escape');
      await page.focus('#surface');
      await drawing.keys('?');
      await check('keys');
    });
  }
});

describe(
  'the page without a server',
  { skip: !fs.existsSync(WASM) && 'npm run build:wasm' },
  () => {
    const folder = fs.mkdtempSync(path.join(os.tmpdir(), 'scrivo-site-'));
    let browser;

    before(async () => {
      [browser] = await Promise.all([launchChromium(), writeSite(folder)]);
    });

    after(async () => {
      await browser?.close();
      fs.rmSync(folder, { recursive: true });
    });

    test('opened from disk as one file, with both engines', async () => {
      const drawing = await DrawingPage.open(browser, `file://${folder}/scrivo.html`);
      await drawing.draw(SQUARE);
      assert.match(
        await drawing.page.textContent('#engine-info'),
        /WebAssembly, in this page · \d+ µs/,
      );
      await drawing.page.click('text=Both');
      await drawing.draw(CIRCLE);
      assert.deepEqual(await drawing.kinds(), ['square', 'circle']);
      const [, { answer }] = await drawing.items();
      assert.equal(answer.second.kind, 'circle');
      assert.deepEqual(drawing.errors, []);
      await drawing.close();
    });

    test('served as files', async () => {
      const files = Object.fromEntries(
        fs
          .readdirSync(folder)
          .map((name) => [name, fs.readFileSync(path.join(folder, name), 'utf8')]),
      );
      const server = http.createServer((request, response) => {
        const name = request.url === '/' ? 'index.html' : request.url.slice(1);
        const type = { js: 'text/javascript', css: 'text/css' }[name.split('.')[1]];
        response.setHeader('Content-Type', type ?? 'text/html');
        response.end(files[name]);
      });
      await once(server.listen(0, '127.0.0.1'), 'listening');
      const address = `http://127.0.0.1:${server.address().port}/`;
      const drawing = await DrawingPage.open(browser, address);
      await drawing.draw(SQUARE);
      assert.deepEqual(await drawing.kinds(), ['square']);
      await drawing.close();
      server.close();
    });
  },
);
