/** The everyday name of a figure: "Square", "Right triangle", "Circle". */
export function figureLabel({ kind, subtype = 'general' }) {
  const words = [kind];
  // The kinds of quadrangles are nouns, those of triangles adjectives.
  if (subtype !== 'general') words.splice(0, kind === 'triangle' ? 0 : 1, subtype);
  const label = words.join(' ').replaceAll('-', ' ');
  return label[0].toUpperCase() + label.slice(1);
}

/** A confidence in whole percent. Rounded down: 100 % would claim certainty. */
export const percent = (confidence) => `${Math.floor(100 * confidence)} %`;
