// What the package offers in Node.js: all that a browser has, and files: pictures, projects.

export * from './browser.js';
export { sha256Of, writeWhole } from './files.js';
export { decodePicture, encodePng, writePng } from './pictures.js';
export {
  pathFromProject,
  readProject,
  readProjectImage,
  writeProject,
} from './projects/project_files.js';
