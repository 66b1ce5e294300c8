// Writes the JSON schemas of reports and projects, which lib/schemas has as modules, to the files
// that are published.
//
//   npm run schemas

import { mkdirSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { formatJson } from '../lib/json.js';
import { projectSchema } from '../lib/schemas/project.js';
import { reportSchema } from '../lib/schemas/report.js';
import { root } from './setup.mjs';

const folder = join(root, 'schemas');
mkdirSync(folder, { recursive: true });
writeFileSync(join(folder, 'project.schema.json'), formatJson(projectSchema));
writeFileSync(join(folder, 'report.schema.json'), formatJson(reportSchema));
