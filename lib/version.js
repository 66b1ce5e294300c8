/** The version of the package, that of package.json. */
export const VERSION = '0.1.0';
