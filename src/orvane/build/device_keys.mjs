// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Reads the device key file: the rows of registerkeyMap that belong to one set's remote control. It
// is a JSON array of { "name": script name, "keyName": platform symbol, "keyCode": number }.

export const DEVICE_KEY_COUNT = 27;

// One content-provider key of a set shares its code with this key.
const SHARED_CODE_KEY = 'QuickAccess';

const MEMBERS = ['name', 'keyName', 'keyCode'];
const NAME = /^[A-Za-z0-9][A-Za-z0-9._+-]{0,63}$/;
const LARGEST_CODE = 2 ** 31 - 1;

// Every problem of a device key file, one per line, each with the row and with what to do.
export class DeviceKeysError extends Error {
  constructor(file, problems) {
    super(problems.map((problem) => `${file}: ${problem}`).join('\n'));
    this.name = 'DeviceKeysError';
  }
}

// Returns the rows as [name, keyName, keyCode], in file order. genericRows are the rows of every
// other table, in the same form. Throws DeviceKeysError.
export function parseDeviceKeys(text, file, genericRows) {
  const entries = parseArray(text, file);
  const problems = countProblems(entries);
  const seen = new SeenKeys(genericRows);
  entries.forEach((entry, index) => {
    const found = shapeProblems(entry);
    const problemsOfRow = found.length > 0 ? found : seen.add(entry, `row ${index + 1}`);
    problems.push(...problemsOfRow.map((problem) => `${rowLabel(entry, index)}: ${problem}`));
  });
  if (problems.length > 0) {
    throw new DeviceKeysError(file, problems);
  }
  return entries.map((entry) => [entry.name, entry.keyName, entry.keyCode]);
}

function parseArray(text, file) {
  let entries;
  try {
    entries = JSON.parse(text);
  } catch (error) {
    throw new DeviceKeysError(file, [`is not JSON (${error.message}); correct it there`]);
  }
  if (!Array.isArray(entries)) {
    throw new DeviceKeysError(file, ['is not a JSON array; write the rows between [ and ]']);
  }
  return entries;
}

function countProblems(entries) {
  const count = entries.length;
  if (count > DEVICE_KEY_COUNT) {
    const surplus = rowLabel(entries[DEVICE_KEY_COUNT], DEVICE_KEY_COUNT);
    return [
      `has ${count} rows, ${DEVICE_KEY_COUNT} are needed; take out ${surplus} and what follows`,
    ];
  }
  if (count < DEVICE_KEY_COUNT) {
    const missing = `row ${count + 1}`;
    return [`has ${count} rows, ${DEVICE_KEY_COUNT} are needed; ${missing} is missing, add it`];
  }
  return [];
}

function rowLabel(entry, index) {
  const name = entry !== null && typeof entry === 'object' ? entry.name : undefined;
  return `row ${index + 1} (${JSON.stringify(name) ?? 'without a name'})`;
}

function shapeProblems(entry) {
  if (entry === null || typeof entry !== 'object' || Array.isArray(entry)) {
    return [`is not an object; write it with the members ${MEMBERS.join(', ')}`];
  }
  const problems = Object.keys(entry)
    .filter((member) => !MEMBERS.includes(member))
    .map((member) => `has an unknown member "${member}"; take it out`);
  for (const member of ['name', 'keyName']) {
    if (typeof entry[member] !== 'string' || !NAME.test(entry[member])) {
      problems.push(
        `${member} is ${JSON.stringify(entry[member])}; write a text of 1 to 64 letters, digits, ` +
          '".", "_", "+" or "-" that begins with a letter or a digit'
      );
    }
  }
  const code = entry.keyCode;
  if (!Number.isInteger(code) || code < 1 || code > LARGEST_CODE) {
    problems.push(
      `keyCode is ${JSON.stringify(code)}; write a whole number from 1 to ${LARGEST_CODE}`
    );
  }
  return problems;
}

// The names and codes that are taken, by whom.
class SeenKeys {
  constructor(genericRows) {
    this.names_ = new Map();
    this.codes_ = new Map();
    for (const [name, , code] of genericRows) {
      this.names_.set(name, 'the generic keys');
      this.codes_.set(code, name);
      if (name === SHARED_CODE_KEY) {
        this.sharedCode_ = code;
      }
    }
  }

  // Takes the name and the code of an entry; returns what stands against it.
  add({ name, keyCode }, row) {
    const problems = [];
    if (this.names_.has(name)) {
      problems.push(`the name is already used by ${this.names_.get(name)}; choose another name`);
    }
    if (this.codes_.has(keyCode) && keyCode !== this.sharedCode_) {
      const owner = this.codes_.get(keyCode);
      problems.push(`keyCode ${keyCode} already belongs to "${owner}"; give this key its own code`);
    }
    if (keyCode === this.sharedCode_) {
      this.sharedCode_ = undefined; // one row may share it, no second one
    }
    this.names_.set(name, row);
    this.codes_.set(keyCode, name);
    return problems;
  }
}
