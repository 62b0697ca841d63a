'use strict';

const { drift, lengthOf, roundCorners, spaceEvenly } = require('./outlines.js');

/**
 * How a person draws, and what the device records. Lengths called a share are fractions of the
 * figure's longer side.
 *
 * @typedef {object} Hand
 * @property {number} speed along a straight line, units a second
 * @property {number} rounding share cut off each edge at a corner
 * @property {number} closing standard deviation of the overshoot at the end of a closed outline,
 *   a share of the outline's length; negative draws leave a gap
 * @property {number} drift standard deviation of the sideways miss at the end, a share
 * @property {number} wobble standard deviation of the slow deviation from the path, a share
 * @property {number} tremor amplitude of the fast shake, units
 * @property {number} rate samples a second
 * @property {number} grid resolution of the device, units
 * @property {number} force pressure in the middle of a stroke, 0 to 1; 0 records none
 */

/** @type {Record<string, Hand>} */
const HANDS = {
  careful: {
    ...{ speed: 350, rounding: 0.015, closing: 0.008, drift: 0.006, wobble: 0.004, tremor: 0.25 },
    ...{ rate: 120, grid: 0.25, force: 0.55 },
  },
  ordinary: {
    ...{ speed: 700, rounding: 0.03, closing: 0.015, drift: 0.015, wobble: 0.01, tremor: 0.2 },
    ...{ rate: 120, grid: 0.25, force: 0.5 },
  },
  hasty: {
    ...{ speed: 1300, rounding: 0.07, closing: 0.03, drift: 0.03, wobble: 0.02, tremor: 0.1 },
    ...{ rate: 120, grid: 0.25, force: 0.4 },
  },
};

// Spacing of the points at which the motion is computed, units.
const FINE_STEP = 0.5;

// Least speed, as a share of full speed: the pen does not stop in a corner.
const SLOWEST = 0.06;

// Tremor of a pen that is pressed in one place, as a share of that in motion.
const STILL = 0.2;

// Frequency of physiological tremor, Hz.
const TREMOR_LOW = 8;
const TREMOR_HIGH = 12;

// Pressure builds up and fades over these times, ms.
const PRESS_TIME = 60;
const LIFT_TIME = 40;

/**
 * Moves a pen along a path.
 *
 * @param {Array<{x: number, y: number}>} path open polyline in units
 * @param {number} size longer side of the figure, units
 * @param {Hand} hand
 * @param {object} random from createRandom
 * @returns {Array<[number, number, number, number]>} samples [x, y, force, time], time in ms
 */
function drawPath(path, size, hand, random) {
  const shaky = wander(missEnd(path, size, hand, random), size, hand, random);
  const fine = spaceEvenly(shaky, Math.max(3, Math.round(lengthOf(shaky) / FINE_STEP)));
  const step = lengthOf(fine) / (fine.length - 1);
  const speeds = speedProfile(fine, step, size, hand.speed);
  const times = arrivalTimes(speeds, step);
  return record(sampleInTime(fine, speeds, times, hand.rate), hand, random);
}

function missEnd(path, size, hand, random) {
  const rounded = roundCorners(path, size * hand.rounding);
  const miss = () => random.normal(0, size * hand.drift);
  return spaceEvenly(drift(rounded, { x: miss(), y: miss() }), 400);
}

/**
 * Adds slow deviation: a few sine waves of random phase along the path, separately in x and y. A
 * wave is about as long as the figure, so that lines bow rather than ripple.
 */
function wander(points, size, hand, random) {
  const deviation = size * hand.wobble;
  const lengths = lengthOf(points) / size;
  const waves = [0.3, 0.5, 0.8, 1.2].map((cyclesALength) => ({
    cycles: cyclesALength * lengths,
    x: random.uniform(0, 2 * Math.PI),
    y: random.uniform(0, 2 * Math.PI),
    amplitude: deviation * Math.sqrt(2 / 4) * random.uniform(0.6, 1.4),
  }));
  const offset = (axis, share) =>
    waves.reduce(
      (sum, wave) =>
        sum + wave.amplitude * Math.sin(2 * Math.PI * wave.cycles * share + wave[axis]),
      0,
    );
  return points.map(({ x, y }, i) => {
    const share = i / (points.length - 1);
    return { x: x + offset('x', share), y: y + offset('y', share) };
  });
}

/**
 * Speed at every point, units a second. In bends it follows the two-thirds power law of hand
 * movement (speed grows with the cube root of the radius of curvature: Lacquaniti, Terzuolo and
 * Viviani, 1983); at the ends it rises and falls as in a minimum-jerk movement, whose distance grows
 * with the cube of time, and so its speed with the distance to the power of two thirds.
 */
function speedProfile(points, step, size, fullSpeed) {
  // Wider bends hardly slow the pen.
  const easyRadius = 0.3 * size;
  const curvature = smooth(curvatureOf(points, step), Math.ceil((0.015 * size) / step));
  const ramp = Math.min(0.25 * size, 0.3 * step * points.length);
  return points.map((_, i) => {
    const bend = (1 + (curvature[i] * easyRadius) ** 2) ** (-1 / 6);
    const toEnd = Math.min(i, points.length - 1 - i) * step;
    const ease = Math.min(1, (toEnd / ramp) ** (2 / 3));
    return fullSpeed * Math.max(SLOWEST, bend * ease);
  });
}

/** Change of direction per length, radians a unit; 0 at both ends. */
function curvatureOf(points, step) {
  return points.map((point, i) => {
    const [before, after] = [points[i - 1], points[i + 1]];
    if (!before || !after) return 0;
    const [ux, uy] = [point.x - before.x, point.y - before.y];
    const [vx, vy] = [after.x - point.x, after.y - point.y];
    return Math.abs(Math.atan2(ux * vy - uy * vx, ux * vx + uy * vy)) / step;
  });
}

/** Mean over the values up to `reach` away on both sides. */
function smooth(values, reach) {
  const sums = [0];
  for (const value of values) sums.push(sums.at(-1) + value);
  return values.map((_, i) => {
    const from = Math.max(0, i - reach);
    const to = Math.min(values.length, i + reach + 1);
    return (sums[to] - sums[from]) / (to - from);
  });
}

/** Time at which the pen reaches each point, ms. */
function arrivalTimes(speeds, step) {
  const times = [0];
  for (let i = 1; i < speeds.length; i += 1) {
    times.push(times[i - 1] + (2000 * step) / (speeds[i - 1] + speeds[i]));
  }
  return times;
}

/** Positions of the pen at the ticks of the device, and at pen-up. */
function sampleInTime(points, speeds, times, rate) {
  const end = times.at(-1);
  const ticks = Math.floor((end * rate) / 1000);
  const samples = [];
  let i = 1;
  for (let tick = 0; tick <= ticks; tick += 1) {
    const time = (tick * 1000) / rate;
    while (i < points.length - 1 && times[i] < time) i += 1;
    const share = (time - times[i - 1]) / (times[i] - times[i - 1]);
    const mix = (a, b) => a + (b - a) * share;
    samples.push({
      x: mix(points[i - 1].x, points[i].x),
      y: mix(points[i - 1].y, points[i].y),
      speed: speeds[i],
      time,
    });
  }
  return [...samples, { ...points.at(-1), speed: speeds.at(-1), time: end }];
}

/** Adds tremor, and rounds to the resolution of the device. */
function record(samples, hand, random) {
  const shake = ['x', 'y'].map(() => ({
    frequency: random.uniform(TREMOR_LOW, TREMOR_HIGH),
    phase: random.uniform(0, 2 * Math.PI),
  }));
  const tremor = ({ frequency, phase }, time) =>
    hand.tremor * Math.sin((2 * Math.PI * frequency * time) / 1000 + phase);
  const end = samples.at(-1).time;
  return samples.map(({ x, y, speed, time }) => [
    toGrid(x + tremor(shake[0], time), hand.grid),
    toGrid(y + tremor(shake[1], time), hand.grid),
    pressure(hand, speed, time, end),
    Math.round(time * 10) / 10,
  ]);
}

/** Pressure rises as the pen slows. */
function pressure({ force, speed: fullSpeed }, speed, time, end) {
  if (force === 0) return 0;
  const press = Math.min(1, 0.2 + time / PRESS_TIME);
  const lift = Math.min(1, 0.1 + (end - time) / LIFT_TIME);
  const slow = 1 + 0.3 * (1 - speed / fullSpeed);
  return Math.round(1000 * Math.min(1, force * press * lift * slow)) / 1000;
}

function toGrid(value, grid) {
  return grid > 0 ? Math.round(value / grid) * grid : value;
}

/**
 * A tap: a firm press that slips a little.
 *
 * @returns {Array<[number, number, number, number]>} at least 10 samples within a few units
 */
function tap(hand, random) {
  const count = random.integer(14, 40);
  const slip = { x: random.normal(0, 0.8), y: random.normal(0, 0.8) };
  const samples = Array.from({ length: count }, (_, i) => ({
    x: (slip.x * i) / count,
    y: (slip.y * i) / count,
    speed: 0,
    time: (i * 1000) / hand.rate,
  }));
  const force = hand.force > 0 ? Math.min(1, hand.force + 0.35) : 0;
  return record(samples, { ...hand, force, tremor: STILL * hand.tremor }, random);
}

module.exports = { HANDS, drawPath, tap };
