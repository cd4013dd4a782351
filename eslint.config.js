// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// One set of rules for every script of the repository, and the globals of each place where scripts
// run. Layout is Prettier's.

import js from '@eslint/js';
import globals from 'globals';

const strictRules = {
  ...js.configs.recommended.rules,
  'array-callback-return': 'error',
  'block-scoped-var': 'error',
  'consistent-return': 'error',
  curly: 'error',
  'default-case-last': 'error',
  eqeqeq: 'error',
  'max-len': ['error', { code: 100, ignoreUrls: true, ignorePattern: 'eslint-disable' }],
  'max-lines': ['error', { max: 500 }],
  'max-lines-per-function': ['error', { max: 60, skipBlankLines: true, skipComments: true }],
  'no-array-constructor': 'error',
  'no-caller': 'error',
  'no-else-return': 'error',
  'no-eval': 'error',
  'no-extend-native': 'error',
  'no-implicit-coercion': 'error',
  'no-implicit-globals': 'error',
  'no-implied-eval': 'error',
  'no-lonely-if': 'error',
  'no-new-func': 'error',
  'no-new-wrappers': 'error',
  'no-promise-executor-return': 'error',
  'no-prototype-builtins': 'error',
  'no-return-assign': 'error',
  'no-self-compare': 'error',
  'no-sequences': 'error',
  'no-shadow': 'error',
  'no-throw-literal': 'error',
  'no-unneeded-ternary': 'error',
  'no-unused-expressions': 'error',
  'no-unused-vars': ['error', { caughtErrors: 'none' }],
  'no-use-before-define': ['error', { functions: false, classes: false, variables: false }],
  'no-useless-concat': 'error',
  'no-useless-return': 'error',
  'no-var': 'error',
  'prefer-const': 'error',
  radix: 'error',
  yoda: 'error',
};

const runtimeScript = {
  sourceType: 'script',
  parserOptions: { ecmaFeatures: { impliedStrict: true } },
};

const libraryScript = {
  languageOptions: {
    ...runtimeScript,
    ecmaVersion: 2015,
    globals: {
      WebAPIException: 'readonly',
      console: 'readonly',
      exports: 'writable',
      extension: 'readonly',
      setTimeout: 'readonly',
      widget: 'readonly',
      xwalk: 'readonly',
    },
  },
  rules: { ...strictRules, 'no-implicit-globals': 'off', 'prefer-rest-params': 'off' },
};

const nodeModules = [
  '*.js',
  '**/*.mjs',
  'keys/*.js',
  'script/**/*.js',
  'bench/**/*.js',
  'tests/**/*.js',
];

export default [
  { ignores: ['build/', 'node_modules/', '**/third_party/', 'coverage/'] },
  { linterOptions: { reportUnusedDisableDirectives: 'error' }, rules: strictRules },
  {
    files: nodeModules,
    languageOptions: { ecmaVersion: 2022, sourceType: 'module', globals: globals.nodeBuiltin },
  },
  { files: ['**/*.test.mjs'], rules: { 'max-lines-per-function': 'off' } },
  {
    files: ['src/orvane/api/*.js'],
    languageOptions: { ...libraryScript.languageOptions, sourceType: 'module' },
    rules: libraryScript.rules,
  },
  {
    // Facilities that the web runtime evaluates in a page, in JavaScriptCore and in a browser.
    files: ['runtime/page/js/**/*.js'],
    languageOptions: {
      ecmaVersion: 2022,
      sourceType: 'module',
      globals: globals['shared-node-browser'],
    },
    // Each module is one function, which makes its part when that is first used.
    rules: { 'max-lines-per-function': 'off' },
  },
  {
    files: ['runtime/page/js/in_process.js'],
    languageOptions: { globals: { host: 'readonly' } },
  },
  {
    files: ['runtime/page/js/extension_wrapper.js'],
    languageOptions: { ...runtimeScript, globals: { scriptText: 'readonly' } },
    rules: { 'no-unused-expressions': 'off' },
  },
  {
    // What pages run: scripts of web applications.
    files: [
      'examples/**/*.js',
      'tests/**/pages/**/*.js',
      'tests/browser/apps/**/*.js',
      'bench/js/*.js',
    ],
    languageOptions: {
      ...runtimeScript,
      ecmaVersion: 2022,
      globals: { ...globals.browser, dravelt: 'readonly', WebAPIException: 'readonly' },
    },
  },
  {
    // Suites that js_suite runs in a page, and the script of the extension that they talk to.
    files: ['tests/page/**/*.js', 'tests/integration/**/*.js'],
    languageOptions: {
      ...libraryScript.languageOptions,
      ecmaVersion: 2022,
      globals: {
        ...libraryScript.languageOptions.globals,
        ...globals.browser,
        WebAPIError: 'readonly',
        assert: 'readonly',
        describe: 'readonly',
        dravelt: 'readonly',
        test: 'readonly',
        testing: 'readonly',
      },
    },
    rules: { 'max-lines-per-function': 'off', 'no-implicit-globals': 'off' },
  },
  {
    // The source of an application that a bundler builds.
    files: ['tests/browser/apps/bundled/src/*.js'],
    languageOptions: { sourceType: 'module' },
  },
  {
    // Tests that drive a browser hold functions that run in its pages.
    files: ['tests/browser/**/*.mjs', 'bench/browser/**/*.mjs'],
    languageOptions: {
      globals: { ...globals.browser, ...globals.nodeBuiltin, dravelt: 'readonly' },
    },
  },
  {
    files: ['bench/js/*.js'],
    languageOptions: { globals: { native: 'readonly' } }, // the benchmark's own function
  },
  {
    // What the command runs in a page of its own accord.
    files: ['runtime/cli/**/*.js'],
    languageOptions: {
      ...runtimeScript,
      ecmaVersion: 2020,
      globals: { dravelt: 'readonly', orvaneCommand: 'readonly' },
    },
  },
  {
    files: ['simulator/**/*.js', 'runtime/server/**/*.js'],
    languageOptions: { ecmaVersion: 2022, sourceType: 'module', globals: globals.browser },
  },
  {
    // What the server gives to the function that the build makes of it.
    files: ['runtime/server/browser_script/page.js'],
    languageOptions: { globals: { boot: 'readonly', scripts: 'readonly' } },
  },
];
