// @ts-check

/** @typedef {Node | string | null | false | undefined} Child */

/**
 * Makes an element. Names of properties that begin with "on" add listeners; names with a dash and
 * `role` set attributes.
 *
 * @template {keyof HTMLElementTagNameMap} K
 * @param {K} tag @param {Record<string, any>} [properties] @param {Child[]} children
 * @returns {HTMLElementTagNameMap[K]}
 */
export function make(tag, properties = {}, ...children) {
  const element = document.createElement(tag);
  for (const [name, value] of Object.entries(properties)) {
    if (name.startsWith('on')) element.addEventListener(name.slice(2), value);
    else if (name.includes('-') || name === 'role') element.setAttribute(name, value);
    else Object.assign(element, { [name]: value });
  }
  element.append(
    ...children.filter((child) => child !== null && child !== false && child !== undefined),
  );
  return element;
}

const SVG = 'http://www.w3.org/2000/svg';

/**
 * @param {string} tag @param {Record<string, string | number>} attributes @param {Node[]} children
 * @returns {SVGElement}
 */
export function makeSvg(tag, attributes, ...children) {
  const element = document.createElementNS(SVG, tag);
  for (const [name, value] of Object.entries(attributes)) element.setAttribute(name, String(value));
  element.append(...children);
  return element;
}

/** @template {HTMLElement} T @param {string} id @returns {T} */
export const byId = (id) => /** @type {T} */ (document.getElementById(id));
