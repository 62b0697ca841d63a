import assert from 'node:assert/strict';
import { describe, test } from 'node:test';
import { PointerGate } from '../../surface/page/js/input/pointer-gate.mjs';

describe('which pointer draws', () => {
  const plain = { timeStamp: 0, button: 0 };
  const event = (pointerType, pointerId, more) => ({ ...plain, pointerType, pointerId, ...more });
  const pointers = {
    mouse: event('mouse', 1),
    'right-button': event('mouse', 1, { button: 2 }),
    pen: event('pen', 2),
    finger: event('touch', 10),
    second: event('touch', 11),
    'second-later': event('touch', 11, { timeStamp: 2000 }),
    third: event('touch', 12),
  };
  /** Steps: an event, its pointer and the answer of the gate. */
  const sequences = {
    'one pointer draws from down to up': [
      'down mouse start, isDrawing mouse true, isDrawing pen false, up mouse finish',
      'up mouse ignore', // the capture is lost after the pointer is up
      'down right-button ignore',
    ],
    'a second pointer does not disturb a stroke': [
      'down pen start, down mouse ignore, up mouse ignore',
      'down finger ignore, up finger ignore, up pen finish',
    ],
    'two fingers are a gesture: nothing is drawn until both are lifted': [
      'down finger start, down second gesture, up second ignore, down third gesture',
      'up third ignore, up finger ignore, down finger start',
    ],
    'a hand that comes to rest later leaves the stroke alone': [
      'down finger start, down second-later ignore, up finger finish',
    ],
    'a pen takes over from the hand that holds it': [
      'down finger start, down pen restart, isDrawing finger false, up pen finish',
      'down second gesture', // where there is a pen, fingers move the view
    ],
    'a cancelled pointer leaves nothing': [
      'down finger start, cancel finger drop, down second start',
    ],
  };
  for (const [name, steps] of Object.entries(sequences)) {
    test(name, () => {
      const gate = new PointerGate();
      for (const step of steps.join(', ').split(', ')) {
        const [action, pointer, expected] = step.split(' ');
        assert.equal(String(gate[action](pointers[pointer])), expected, step);
      }
    });
  }
});
