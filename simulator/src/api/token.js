// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The secret of this run. The link that is printed carries it in its fragment, which no server and
// no log sees; it moves into the tab's own storage, so that a reload keeps it and the address bar
// does not show it.

const storageKey = 'orvane.token';

/** @returns {string} empty when this tab never had one */
export function takeToken() {
  const given = /[#&]token=([^&]+)/.exec(location.hash);
  if (!given) {
    return sessionStorage.getItem(storageKey) ?? '';
  }
  const token = decodeURIComponent(given[1]);
  sessionStorage.setItem(storageKey, token);
  history.replaceState(null, '', location.pathname + location.search);
  return token;
}
