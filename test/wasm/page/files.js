'use strict';

// `node:fs` for files that are given, and `join` of `node:path`.

const join = (...parts) => {
  const { pathname } = new URL(parts.join('/').replace(/\/+/g, '/'), 'file:///');
  return pathname.replace(/(.)\/$/, '$1');
};

module.exports = (files) => ({
  existsSync: (name) => Object.hasOwn(files, name),
  readFileSync: (name) => files[name],
  readdirSync: (folder) =>
    Object.keys(files).flatMap((name) =>
      name.startsWith(`${folder}/`) ? name.slice(folder.length + 1) : [],
    ),
});
module.exports.join = join;
