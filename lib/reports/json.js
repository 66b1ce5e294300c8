// Reports as JSON.

import { formatJson, jsonLine } from '../json.js';

/** @typedef {import('./report.js').Report} Report */

/**
 * Writes a report as JSON for people and programs: indented, a pair of coordinates on a line. Numbers
 * read back as the very same doubles.
 * @param {Report} report
 * @returns {string} Ends with a line feed.
 */
export function toJson(report) {
  return formatJson(report);
}

/**
 * Writes the pictures of a report as JSON, one on each line. It is what a program that traces many
 * pictures writes as it goes: a line is whole, or is not there.
 * @param {Report} report
 * @returns {string}
 */
export function toNdjson({ images }) {
  return images.map((image) => `${jsonLine(image)}\n`).join('');
}
