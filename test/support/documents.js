'use strict';

const { execFileSync } = require('node:child_process');
const fs = require('node:fs');
const path = require('node:path');
const markdownIt = require('markdown-it');

const { root } = require('./native.js');

// Marks: comments before a fenced block, which readers do not see:
//   <!-- not run: REASON -->   shown only
//   <!-- goes on -->           continues the block before it of the same language
//   <!-- setup                 code that goes before it
//   ... -->
const MARK = /^<!--\s*(not run:|goes on|setup)([^]*?)-->\s*$/;

/** The documents of the project: the Markdown files that git tracks or would track. */
function documents() {
  const args = ['ls-files', '--cached', '--others', '--exclude-standard', '*.md'];
  const listed = execFileSync('git', args, { cwd: root, encoding: 'utf8' });
  return listed.split('\n').filter((name) => name && fs.existsSync(path.join(root, name)));
}

const parse = (name) =>
  markdownIt({ html: true }).parse(fs.readFileSync(path.join(root, name), 'utf8'), {});

function markBefore(token) {
  const [, kind, text] = (token?.type === 'html_block' && MARK.exec(token.content)) || [];
  if (kind === 'not run:') return { reason: text.trim() };
  if (kind === 'setup') return { setup: text.trim() };
  return { goesOn: kind === 'goes on' };
}

/**
 * The fenced blocks of a document.
 *
 * @returns {Array<{place: string, language: string, code: string, reason?: string,
 *   program?: string}>} `code` includes the code that goes before it; `reason` says why it is not run
 *   and may be empty; `program` is the last C++ up to here
 */
function readBlocks(name) {
  const tokens = parse(name);
  const before = {};
  return tokens.flatMap((token, i) => {
    if (token.type !== 'fence') return [];
    const language = token.info.trim();
    const { reason, setup, goesOn } = markBefore(tokens[i - 1]);
    const head = goesOn ? before[language] : setup && `${setup}\n`;
    const code = (head ?? '') + token.content;
    before[language] = code;
    const place = `${name}:${token.map[0] + 1}`;
    return [{ place, language, code, reason, program: before.cpp }];
  });
}

/** The commands of these pages are run by test/cli/documents.test.js, on strokes made for them. */
const COMMAND_PAGES = ['packages/cli/docs/command-line.md', 'packages/cli/README.md'];

const isCommand = ({ place, language, reason }) =>
  language === 'sh' && reason === undefined && COMMAND_PAGES.includes(place.split(':')[0]);

/** The blocks of all documents, in two parts: commands of the command line, and the others. */
function readExamples() {
  const blocks = documents().flatMap(readBlocks);
  return {
    commands: blocks.filter(isCommand),
    others: blocks.filter((block) => !isCommand(block)),
  };
}

/** The output that the comments after printing statements state. */
function statedOutput(code) {
  const printing =
    /^.*(?:console\.log\(|std::cout\b|printf\().*?;\s*\/\/ (.*)$|^print\(.*\) # (.*)$/gm;
  return [...code.matchAll(printing)].map(([, text, ofPython]) => text ?? ofPython);
}

/** The anchor of a heading, as hosting sites name it. */
const slug = (heading) =>
  heading
    .toLowerCase()
    .replace(/[^\p{Letter}\p{Number}\s_-]/gu, '')
    .replace(/\s/g, '-');

/** The names under which the headings of a document can be linked. */
function anchors(name) {
  const tokens = parse(name);
  return tokens.flatMap(({ type }, i) =>
    type === 'heading_open' ? [slug(textOf(tokens[i + 1]))] : [],
  );
}

const textOf = ({ children }) => children.map(({ content }) => content).join('');

/** Targets of links and pictures within the project. */
function links(name) {
  const inline = parse(name).flatMap(({ children }) => children ?? []);
  const targets = inline.flatMap((token) => [token.attrGet('href'), token.attrGet('src')]);
  return targets.filter((target) => target && !/^[a-z]+:/.test(target));
}

module.exports = { anchors, documents, links, readExamples, statedOutput };
