// Dates as ISO 8601 writes them, to milliseconds since 1970 and back. The calendar is the Gregorian
// one in every year, the offset from UTC is always a stated one: no time zone with a summer time, and
// never that of the computer.

const MINUTE = 60_000;

// 1999, 1999-12, 1999-12-31, 1999-12-31T23:59, …:59:59, …:59:59.999, each time with or without Z or
// an offset such as +02:00. Years beyond four digits carry a sign and have six.
const ISO =
  /^([+-]\d{6}|\d{4})(?:-(\d\d)(?:-(\d\d)(?:[T ](\d\d):(\d\d)(?::(\d\d)(?:[.,](\d+))?)?(Z|[+-]\d\d(?::?\d\d)?)?)?)?)?$/;

/**
 * Reads a date, or a date and a time. What is left out is the first: of 1999 the first of January.
 * @param {string} text
 * @param {number} [zone] The offset from UTC in minutes where the text states none.
 * @returns {{time: number, zone: number | null} | undefined} Milliseconds since the beginning of
 *   1970 in UTC, and the offset that the text states; undefined for what is no date of the calendar.
 */
export function parseDate(text, zone = 0) {
  const parts = ISO.exec(text.trim());
  if (!parts) return undefined;
  const [year, month, day, hour, minute, second] = [1, 2, 3, 4, 5, 6].map((i) =>
    Number(parts[i] ?? (i === 2 || i === 3 ? 1 : 0)),
  );
  const fraction = Number(`0.${parts[7] ?? 0}`);
  const endOfDay = hour === 24 && minute === 0 && second === 0 && fraction === 0;
  if (!(hour < 24 || endOfDay) || minute > 59 || second > 59) return undefined;
  const midnight = timeOfDay(year, month, day);
  const stated = parts[8] === undefined ? null : parseZone(parts[8]);
  if (midnight === undefined || stated === undefined) return undefined;
  const minutes = hour * 60 + minute - (stated ?? zone);
  // Thousandths first, so that .001 is the whole number 1.
  const milliseconds = second * 1000 + fraction * 1000;
  const time = midnight + minutes * MINUTE + milliseconds;
  return Number.isNaN(new Date(time).getTime()) ? undefined : { time, zone: stated };
}

/**
 * The time at which a day begins in UTC; undefined for a day that its month does not have.
 * @param {number} year
 * @param {number} month From 1.
 * @param {number} day
 */
function timeOfDay(year, month, day) {
  const date = new Date(0);
  // Date.UTC takes the years 0 to 99 for those of the twentieth century; this does not.
  date.setUTCFullYear(year, month - 1, day);
  const isThatDay = date.getUTCMonth() === month - 1 && date.getUTCDate() === day;
  return isThatDay ? date.getTime() : undefined;
}

/**
 * Reads an offset from UTC.
 * @param {string} text `'UTC'`, `'Z'`, or hours and minutes such as `'+02:00'`.
 * @returns {number | undefined} Minutes, those east of Greenwich positive.
 */
export function parseZone(text) {
  if (text === 'UTC' || text === 'Z') return 0;
  const parts = /^([+-])(\d\d):?(\d\d)?$/.exec(text);
  if (!parts) return undefined;
  const [hours, minutes] = [Number(parts[2]), Number(parts[3] ?? 0)];
  if (hours > 23 || minutes > 59) return undefined;
  return (parts[1] === '-' ? -1 : 1) * (hours * 60 + minutes) + 0;
}

/**
 * @param {number} zone Minutes.
 * @returns {string} Such as `'Z'` or `'+02:00'`.
 */
export function formatZone(zone) {
  if (zone === 0) return 'Z';
  const [hours, minutes] = [Math.floor(Math.abs(zone) / 60), Math.abs(zone) % 60];
  return `${zone < 0 ? '-' : '+'}${twoDigits(hours)}:${twoDigits(minutes)}`;
}

/** @param {number} number */
const twoDigits = (number) => String(number).padStart(2, '0');

/**
 * Writes a time as a date with its time of day.
 * @param {number} time Milliseconds since the beginning of 1970 in UTC.
 * @param {{zone?: number, digits?: 3 | 6}} [options] `zone`: the offset in minutes. `digits`: of
 *   the second.
 * @returns {string | null} Such as `'1999-12-31T23:59:59.000Z'`, rounded; null beyond the years that
 *   can be written.
 */
export function formatDate(time, { zone = 0, digits = 3 } = {}) {
  const unitsPerMillisecond = digits === 6 ? 1000 : 1;
  const whole = Math.floor(time);
  // The part after the millisecond is rounded on its own: times a thousand, a time of our days would
  // lie beyond the whole numbers that a double can hold.
  const units = Math.round((time - whole) * unitsPerMillisecond);
  const carried = whole + Math.floor(units / unitsPerMillisecond);
  const local = new Date(carried + zone * MINUTE);
  if (Number.isNaN(local.getTime())) return null;
  const after = digits === 6 ? String(units % unitsPerMillisecond).padStart(3, '0') : '';
  return local.toISOString().replace('Z', `${after}${formatZone(zone)}`);
}
