// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The route is the path below the application's own: "" or "details/7".

import { useEffect, useState } from 'preact/hooks';

const base = new URL('.', import.meta.url.replace(/assets\/[^/]*$/, '')).pathname;

function current() {
  return location.pathname.slice(base.length).replace(/^index\.html$/, '');
}

export function useRoute() {
  const [route, setRoute] = useState(current);
  useEffect(() => {
    const changed = () => setRoute(current());
    window.addEventListener('popstate', changed);
    return () => window.removeEventListener('popstate', changed);
  }, []);
  return {
    route,
    open(next) {
      history.pushState({ next }, '', base + next);
      setRoute(current());
    },
    back: () => history.back(),
  };
}
