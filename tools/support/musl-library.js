'use strict';

// Bun for musl needs the GNU C++ library, which Debian has for glibc only. The members
// that Bun uses hardly depend on the C library, so for tests they are linked from the
// static library into a shared one.

const { execFileSync } = require('node:child_process');
const fs = require('node:fs');
const path = require('node:path');

// What the members need from glibc and musl lacks. -1 means "not found"; the unwinder
// then looks for the library's tables in a way that works with musl.
const GLIBC_PARTS = `extern "C" {
char __libc_single_threaded;
int _dl_find_object(void*, void*) { return -1; }
unsigned arc4random() { return 4; }
unsigned long getauxval(unsigned long);
unsigned long __getauxval(unsigned long type) { return getauxval(type); }
}`;

const NEEDED = /^(_Z(St|NS|NKS|T[IV]N10__cxxabiv)|__cxa_[bdgp]|__dynamic_cast|__gxx|_Unwind)/;

/**
 * Makes libstdc++.so.6 for `program`; returns the folder that it is in. `tools` is put
 * before the compiler's names, for a processor that is not this one.
 */
function linkForMusl(program, folder, tools = '') {
  const library = path.join(folder, 'libstdc++.so.6');
  if (fs.existsSync(library)) return folder;
  fs.mkdirSync(folder, { recursive: true });
  const parts = path.join(folder, 'glibc-parts.cc');
  fs.writeFileSync(parts, GLIBC_PARTS);
  const symbols = execFileSync(`${tools}nm`, ['-D', '--format=just-symbols', program], {
    encoding: 'utf8',
    maxBuffer: 1 << 26,
  });
  const wanted = symbols.split('\n').filter((name) => NEEDED.test(name));
  const part = (name) =>
    execFileSync(`${tools}g++`, [`-print-file-name=${name}`], { encoding: 'utf8' });
  const archives = ['libstdc++.a', 'libgcc_eh.a', 'libgcc.a'].map((name) => part(name).trim());
  execFileSync(`${tools}g++`, [
    ...['-shared', '-fPIC', '-nostdlib', '-o', library, parts],
    ...wanted.map((name) => `-Wl,--undefined=${name}`),
    ...[part('crtbeginS.o').trim(), '-Wl,--start-group', ...archives, '-Wl,--end-group'],
    part('crtendS.o').trim(),
  ]);
  return folder;
}

module.exports = { linkForMusl };
