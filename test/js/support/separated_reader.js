/**
 * Reads text in rows and columns, character by character, as RFC 4180 describes it; refuses what
 * does not keep to it.
 * @param {string} text
 * @param {{separator?: string, end?: string}} [syntax]
 * @returns {string[][]}
 */
export function readSeparated(text, { separator = ',', end = '\r\n' } = {}) {
  const rows = [];
  let row = [];
  let next = 0;
  while (next < text.length) {
    let cell = '';
    if (text[next] === '"') {
      for (++next; ; ++next) {
        if (next >= text.length) throw new Error('a quote is not closed');
        if (text[next] === '"' && text[++next] !== '"') break;
        cell += text[next];
      }
    } else {
      while (next < text.length && text[next] !== separator && !text.startsWith(end, next)) {
        if ('"\r\n'.includes(text[next]) && end === '\r\n') throw new Error(`bare ${text[next]}`);
        cell += text[next++];
      }
    }
    row.push(cell);
    if (text[next] === separator) {
      ++next;
      if (next < text.length && !text.startsWith(end, next)) continue;
      row.push('');
    }
    if (!text.startsWith(end, next)) throw new Error(`no end of the row after ${row.join('|')}`);
    next += end.length;
    rows.push(row);
    row = [];
  }
  return rows;
}
