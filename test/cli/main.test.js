'use strict';

const assert = require('node:assert/strict');
const { spawn } = require('node:child_process');
const { once } = require('node:events');
const fs = require('node:fs');
const path = require('node:path');
const { after, test } = require('node:test');
const { version } = require('../../packages/cli/package.json');
const { PROGRAM, makeFolder, run } = require('../support/cli.js');

const folder = makeFolder(after);
const inFolder = (name) => path.join(folder, name);
const write = (name, content) => fs.writeFileSync(inFolder(name), content);

test('a wrong command line says what to do, and does nothing', async () => {
  write('taken.ndjson', 'mine');
  write('ink.ndjson', '{"family":"dot","points":[[1,2]]}\n');
  write('empty.ndjson', '\n');
  write('square.txt', '0,0,1,1');
  fs.mkdirSync(inFolder('sub'));
  fs.symlinkSync('gone', inFolder('dangling.ndjson'));
  const cases = [
    [',', /scrivo: name a command\n\nusage: /],
    ['frobnicate', /there is no command frobnicate\n/],
    ['help frobnicate', /there is no command frobnicate\n/],
    ['idealise missing.ndjson', /missing\.ndjson: no such file/],
    ['idealise taken.ndjson/x', /taken\.ndjson\/x: no such file/],
    ['idealise sub', /sub is a directory/],
    ['idealise dangling.ndjson', /dangling\.ndjson is a link to gone, which does not exist/],
    ['idealise ,', /the name of an input is empty/],
    ['idealise - -', /standard input \(-\) can be read only once/],
    ['idealise ink.ndjson -o taken.ndjson', /taken\.ndjson exists; --force overwrites it/],
    ['idealise ink.ndjson -o dangling.ndjson', /is a link to gone, which does not exist/],
    ['idealise ink.ndjson -o no/where.ndjson', /there is no directory no/],
    ['idealise ink.ndjson -o taken.ndjson/x.svg', /taken\.ndjson is not a directory/],
    ['idealise ink.ndjson -o ,', /-o needs a name/],
    ['idealise ink.ndjson -o ink.pdf', /format is not clear from the name .*: add --format ndjson/],
    [
      'idealise ink.ndjson --format pdf',
      /must be one of ndjson, svg, inkml, xopp, rnote, excalidraw, found pdf/,
    ],
    ['idealise --colour', /Unknown option '--colour'\nscrivo idealise --help lists the options/],
    ['idealise --force=yes', /Option '--force' does not take an argument\n/],
    ['idealise ink.ndjson --width 10', /give both --width and --height/],
    ['idealise ink.ndjson --scale 0', /--scale must be a positive number, found 0/],
    ['idealise ink.ndjson --jobs 1.5', /--jobs must be a whole number/],
    ['idealise ink.ndjson --engine steam', /no engine steam: choose beautifier or template/],
    ['idealise ink.ndjson --templates sub', /--templates is for the template engine: add --engine/],
    ['idealise ink.ndjson --engine template --templates nowhere', /nowhere: no such template file/],
    ['render ink.ndjson --pixels 0', /--pixels must be a whole number/],
    ['evaluate empty.ndjson', /there is no stroke in the input/],
    ['evaluate ink.ndjson --fast', /--fast/],
    ['evaluate ink.ndjson --unit=-3', /--unit must be a positive number or natural, found -3/],
    [
      'evaluate ink.ndjson --engine template --templates square.txt',
      /must contain one of rectangle/,
    ],
    ['evaluate ink.ndjson --svg -', /--svg needs a file/],
    ['evaluate ink.ndjson --svg no/sheet.svg', /there is no directory/],
  ];
  const before = fs.readdirSync(folder);
  for (const [line, message] of cases) {
    // A comma stands for an empty name.
    const args = line.split(' ').map((word) => (word === ',' ? '' : word));
    const { code, stdout, stderr } = await run(folder, args);
    assert.deepEqual([code, stdout], [2, ''], line);
    assert.match(stderr, message);
    assert.doesNotMatch(stderr, /\.js:\d/, 'no stack');
  }
  assert.deepEqual(fs.readdirSync(folder), before);
  assert.equal(fs.readFileSync(inFolder('taken.ndjson'), 'utf8'), 'mine');
});

test('help lists every option, and goes to standard output', async () => {
  assert.equal((await run(folder, ['--version'])).stdout, `${version}\n`);
  assert.match((await run(folder, ['--help'])).stdout, /usage: scrivo COMMAND/);
  for (const command of ['idealise', 'render', 'evaluate']) {
    const { OPTIONS } = require(`../../packages/cli/lib/commands/${command}.js`);
    const { code, stdout, stderr } = await run(folder, ['help', command]);
    assert.deepEqual([code, stderr], [0, '']);
    assert.match(stdout, /^examples\n {2}scrivo /m);
    const found = stdout.matchAll(/^ {2}(?:-\w,| {3}) --([\w-]+)/gm);
    const listed = Array.from(found, ([, name]) => name);
    const also = stdout.includes('--width N --height N') ? ['height'] : [];
    assert.deepEqual([...listed, ...also].sort(), Object.keys(OPTIONS).sort(), command);
  }
});

test('a full or closed standard output shows in the exit code, without a stack', async () => {
  write('labelled.ndjson', '{"family":"dot","points":[[1,2]]}\n');
  const commands = [
    '--help',
    'idealise labelled.ndjson',
    'idealise labelled.ndjson -o summed.ndjson --force --json',
    'evaluate labelled.ndjson',
  ];
  const shell = async (line) => {
    const child = spawn('bash', ['-c', line], { cwd: folder });
    let text = '';
    child.stderr.on('data', (chunk) => (text += chunk));
    const [code] = await once(child, 'close');
    return { code, text };
  };
  await Promise.all(
    commands.map(async (command) => {
      const program = `"${process.execPath}" "${PROGRAM}" ${command}`;
      const full = await shell(`${program} > /dev/full`);
      assert.equal(full.code, 2, full.text);
      assert.match(full.text, /^scrivo.*: standard output cannot be written: ENOSPC[^\n]*\n$/);
      const closed = await shell(`${program} | true; exit \${PIPESTATUS[0]}`);
      assert.deepEqual(closed, { code: 0, text: '' });
    }),
  );
  const mute = await shell(`"${process.execPath}" "${PROGRAM}" idealise --no-such 2> /dev/full`);
  assert.equal(mute.code, 2);
});
