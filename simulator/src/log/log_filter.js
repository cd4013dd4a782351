// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Which lines of the log are shown.

export const priorities = [
  ['2', 'V', 'Verbose'],
  ['3', 'D', 'Debug'],
  ['4', 'I', 'Info'],
  ['5', 'W', 'Warning'],
  ['6', 'E', 'Error'],
  ['7', 'F', 'Fatal'],
];

/**
 * @param {{priority: string, tag: string, text: string}} filter the lowest priority, part of the
 *        tag, part of the text; upper and lower case are one
 * @returns {(line: {priority: number, tag: string, text: string}) => boolean}
 */
export function lineFilter({ priority, tag, text }) {
  const lowest = Number(priority);
  const wantedTag = tag.trim().toLowerCase();
  const wantedText = text.trim().toLowerCase();
  return (line) =>
    line.priority >= lowest &&
    (wantedTag === '' || line.tag.toLowerCase().includes(wantedTag)) &&
    (wantedText === '' || line.text.toLowerCase().includes(wantedText));
}

/** The line as the platform's log tool prints it. */
export function lineText(line, time) {
  const { letter, tag, pid, tid, text } = line;
  return `${time} ${letter}/${tag.padEnd(8)} (P ${pid}, T ${tid}): ${text}`;
}
