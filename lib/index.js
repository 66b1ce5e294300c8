// What the package offers.

export { trace } from './native.js';
