// What the package offers in Node.js: all that a browser has, and pictures in files.

export * from './browser.js';
export { decodePicture, encodePng, writePng } from './pictures.js';
