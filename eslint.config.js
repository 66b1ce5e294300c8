import js from '@eslint/js';
import globals from 'globals';

// What lib/ may know of Node: decoding, files, loading the module and the entry. Everything else
// there is plain computation on plain data that a browser could run unchanged.
const nodeModulesOfLib = [
  'lib/files.js',
  'lib/index.js',
  'lib/index.cjs',
  'lib/tracing/native.js',
  'lib/tracing/native.cjs',
  'lib/pictures.js',
  'lib/projects/project_files.js',
  'lib/svg.js',
  'lib/svg_process.js',
];

export default [
  { ignores: ['build/', 'prebuilds/', 'types/', 'out/', 'examples/charts/'] },
  js.configs.recommended,
  {
    languageOptions: { globals: globals.node },
    linterOptions: { reportUnusedDisableDirectives: 'error' },
    rules: {
      eqeqeq: 'error',
      'no-var': 'error',
      'prefer-const': 'error',
      'object-shorthand': 'error',
      'prefer-template': 'error',
      'no-shadow': 'error',
      'no-use-before-define': ['error', { functions: false, classes: false, variables: false }],
    },
  },
  {
    files: ['lib/**'],
    ignores: nodeModulesOfLib,
    languageOptions: { globals: { process: false, Buffer: false } },
    rules: {
      'no-restricted-imports': ['error', { patterns: ['node:*', 'sharp'] }],
      'no-restricted-globals': ['error', 'process', 'Buffer', 'require'],
    },
  },
];
