// JSON as people like to read it.

const WIDTH = 100;

/**
 * Plain data as JSON on one line. What a terminal might obey, or turn round, is written as an escape,
 * which reads back as the same text.
 * @param {unknown} data
 * @returns {string}
 */
export const jsonLine = (data) =>
  JSON.stringify(data).replace(/[\x7f-\x9f\u2028\u2029]|(?![\u200c\u200d])\p{Cf}/gu, (character) =>
    character
      .split('')
      .map((unit) => `\\u${unit.charCodeAt(0).toString(16).padStart(4, '0')}`)
      .join(''),
  );

/**
 * Writes plain data as JSON, the same text for the same data: indented by two blanks, but what fits
 * on a line and holds nothing that is itself spread over lines stays on one. A long list of pairs has
 * one of them on each line.
 * @param {unknown} data
 * @returns {string} Ends with a line feed.
 */
export function formatJson(data) {
  return `${indented(data, '')}\n`;
}

/**
 * @param {unknown} value
 * @param {string} margin
 * @param {number} [before] How many characters stand before the value on its line.
 * @returns {string}
 */
function indented(value, margin, before = margin.length) {
  if (value === null || typeof value !== 'object') return jsonLine(value);
  const inner = `${margin}  `;
  const isList = Array.isArray(value);
  const parts = isList
    ? value.map((part) => indented(part ?? null, inner))
    : Object.entries(value)
        .filter(([, part]) => part !== undefined)
        .map(([key, part]) => {
          const name = `${jsonLine(key)}: `;
          return name + indented(part, inner, inner.length + name.length);
        });
  const [open, close] = isList ? ['[', ']'] : ['{', '}'];
  const blank = isList || parts.length === 0 ? '' : ' ';
  const line = `${open}${blank}${parts.join(', ')}${blank}${close}`;
  // A comma may follow. With a part that did not fit on a line, this one does not fit either.
  if (before + line.length < WIDTH) return line;
  return `${open}\n${parts.map((part) => inner + part).join(',\n')}\n${margin}${close}`;
}
