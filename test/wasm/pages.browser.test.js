'use strict';

const assert = require('node:assert/strict');
const fs = require('node:fs');
const http = require('node:http');
const os = require('node:os');
const path = require('node:path');
const { after, before, describe, test } = require('node:test');
const { pathToFileURL } = require('node:url');
const { launchChromium } = require('../support/chromium.js');
const { root } = require('../support/native.js');
const { serveTests } = require('./page/server.js');
const { TEST_FILES } = require('./tested.js');

const DIST = path.join(root, 'packages', 'wasm', 'dist');
const EXAMPLE = path.join(root, 'packages', 'wasm', 'example');
const ENTRY = path.join(EXAMPLE, 'page.js');
const POLICY = "default-src 'self'; style-src 'self' 'unsafe-inline'";
const TYPES = { '.html': 'text/html', '.js': 'text/javascript', '.wasm': 'application/wasm' };
const PAGE = '<!doctype html><canvas></canvas><script type="module" src="bundle.js"></script>';

const scratch = fs.mkdtempSync(path.join(os.tmpdir(), 'scrivo-wasm-'));
const folder = (name) => fs.mkdtempSync(path.join(scratch, name));

/** Serves a folder on the loopback interface, with a Content-Security-Policy. */
async function serve(files, script = "'self' 'unsafe-inline' 'wasm-unsafe-eval'") {
  const server = http.createServer((request, response) => {
    const file = path.join(files, new URL(request.url, 'http://localhost').pathname);
    if (!fs.existsSync(file)) return response.writeHead(404).end();
    const policy = `${POLICY}; script-src ${script}`;
    const type = TYPES[path.extname(file)] ?? 'text/plain';
    response.writeHead(200, { 'content-type': type, 'content-security-policy': policy });
    return response.end(fs.readFileSync(file));
  });
  await new Promise((resolve) => server.listen(0, '127.0.0.1', resolve));
  after(() => server.close());
  return `http://127.0.0.1:${server.address().port}/`;
}

/** The example as static files. */
function staticFiles() {
  const files = folder('static');
  fs.cpSync(EXAMPLE, path.join(files, 'example'), { recursive: true });
  fs.cpSync(DIST, path.join(files, 'dist'), { recursive: true });
  return files;
}

const copyModule = (out) =>
  fs.copyFileSync(path.join(DIST, 'beautifier.wasm'), path.join(out, 'beautifier.wasm'));

/** Each bundles the example's page into `out`/bundle.js. */
const BUNDLERS = {
  async esbuild(out) {
    const options = { bundle: true, format: 'esm', target: 'es2022', logLevel: 'error' };
    const outfile = path.join(out, 'bundle.js');
    await require('esbuild').build({ ...options, entryPoints: [ENTRY], outfile });
    copyModule(out);
  },
  async rollup(out) {
    const { nodeResolve } = require('@rollup/plugin-node-resolve');
    const bundle = await require('rollup').rollup({ input: ENTRY, plugins: [nodeResolve()] });
    await bundle.write({ file: path.join(out, 'bundle.js'), format: 'es' });
    copyModule(out);
  },
  async webpack(out) {
    const output = { path: out, filename: 'bundle.js' };
    const compiler = require('webpack')({ mode: 'production', entry: ENTRY, output });
    const stats = await new Promise((resolve, reject) =>
      compiler.run((error, result) => (error ? reject(error) : resolve(result))),
    );
    assert.equal(stats.hasErrors() || stats.hasWarnings(), false, stats.toString());
  },
  async vite(out) {
    const { build, createLogger } = await import('vite');
    const warn = (message) => assert.fail(message);
    const customLogger = { ...createLogger('error'), warn, warnOnce: warn };
    const rollupOptions = { input: ENTRY, output: { entryFileNames: 'bundle.js' } };
    const options = { outDir: out, emptyOutDir: false, target: 'es2022', rollupOptions };
    await build({
      root: EXAMPLE,
      base: './',
      customLogger,
      configFile: false,
      build: options,
    });
  },
};

describe('scrivo-wasm in Chromium', () => {
  let browser;
  before(async () => (browser = await launchChromium()));
  after(async () => {
    await browser.close();
    fs.rmSync(scratch, { recursive: true });
  });

  /** Draws a rectangle with the pointer; returns what the whiteboard took it for. */
  async function draw(url) {
    const page = await browser.newPage();
    await page.goto(url);
    await page.waitForFunction(() => document.title === 'ready');
    const corners = [
      [300, 100],
      [300, 250],
      [100, 250],
      [101, 101],
    ];
    await page.mouse.move(100, 100);
    await page.mouse.down();
    for (const [x, y] of corners) await page.mouse.move(x, y, { steps: 12 });
    await page.mouse.up();
    const title = await page.title();
    await page.close();
    return title;
  }

  test('runs from static files, under a policy with wasm-unsafe-eval', async () => {
    assert.equal(await draw(`${await serve(staticFiles())}example/index.html`), 'quadrangle');
  });

  test('reports a policy without it, and answers in a worker', async () => {
    const files = staticFiles();
    const page = await browser.newPage();
    await page.goto(`${await serve(files, "'self' 'unsafe-inline'")}example/worker.js`);
    const refused = await page.evaluate(async () => {
      const { start } = await import('../dist/beautifier.js');
      return start().catch(({ name }) => name);
    });
    assert.equal(refused, 'CompileError');
    await page.goto(`${await serve(files)}example/worker.js`);
    const answer = await page.evaluate(() => {
      const worker = new Worker('worker.js', { type: 'module' });
      const stroke = Array.from({ length: 30 }, (_, i) => ({ x: i / 40, y: 0.5 }));
      worker.postMessage({ stroke, width: 800, height: 600 });
      return new Promise((resolve) => (worker.onmessage = ({ data }) => resolve(data)));
    });
    assert.equal(answer.figure.kind, 'line');
    await page.close();
  });

  for (const [name, bundle] of Object.entries(BUNDLERS)) {
    test(`runs when bundled by ${name}`, async () => {
      const out = folder(name);
      await bundle(out);
      fs.writeFileSync(path.join(out, 'index.html'), PAGE);
      assert.equal(await draw(`${await serve(out)}index.html`), 'quadrangle');
    });
  }

  test('is named by the error that scrivo gives in a page', async () => {
    const out = folder('native');
    await require('esbuild').build({
      stdin: {
        contents: "import { Beautifier } from 'scrivo/beautifier'; new Beautifier();",
        resolveDir: root,
      },
      bundle: true,
      outfile: path.join(out, 'bundle.js'),
    });
    const page = await browser.newPage();
    const error = page.waitForEvent('pageerror');
    fs.writeFileSync(path.join(out, 'index.html'), PAGE);
    await page.goto(`${await serve(out)}index.html`);
    assert.match((await error).message, /use scrivo-wasm/);
    await page.close();
  });

  test('runs from one HTML file without a server', async () => {
    const page = fs.readFileSync(ENTRY, 'utf8').replace('await start()', 'await start(bytes)');
    const contents = `import bytes from 'scrivo-wasm/beautifier-scalar.wasm';\n${page}`;
    const { outputFiles } = await require('esbuild').build({
      stdin: { contents, resolveDir: EXAMPLE },
      loader: { '.wasm': 'binary' },
      bundle: true,
      format: 'esm',
      target: 'es2022',
      write: false,
    });
    const file = path.join(folder('single'), 'whiteboard.html');
    const script = outputFiles[0].text.replaceAll('</script', '<\\/script');
    fs.writeFileSync(
      file,
      `<!doctype html><canvas></canvas><script type="module">${script}</script>`,
    );
    assert.equal(await draw(pathToFileURL(file).href), 'quadrangle');
  });

  test('passes the tests of the engines', async () => {
    const { address, results, close } = await serveTests(folder('tests'));
    after(close);
    const page = await browser.newPage();
    page.on('pageerror', results.reject);
    await page.goto(address);
    const found = await results.promise;
    assert.deepEqual(Object.keys(found), TEST_FILES);
    for (const [file, { passed, failed }] of Object.entries(found)) {
      assert.deepEqual(failed, [], file);
      assert.ok(passed > 0, file);
    }
    await page.close();
  });
});
