// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The page in the development server's television.

export const appPage = `<!doctype html>
<html lang="en">
  <head>
    <meta charset="utf-8" />
    <title>Orvane tour</title>
    <style>
      body { margin: 0; height: 1080px; background: linear-gradient(150deg, #17233f, #0b0f1a);
             color: #e9eefc; font: 40px/1.4 system-ui, sans-serif; overflow: hidden; }
      h1 { margin: 0; padding: 90px 100px 20px; font-size: 84px; letter-spacing: -0.02em; }
      p { margin: 0; padding: 0 100px; color: #9fb0d8; }
      ul { display: grid; grid-template-columns: repeat(4, 1fr); gap: 28px; padding: 60px 100px;
           list-style: none; }
      li { height: 240px; padding: 32px; border-radius: 18px; background: #223257; }
      li:first-child { outline: 6px solid #8fb1ff; background: #2d4379; }
    </style>
  </head>
  <body>
    <h1>Orvane tour</h1>
    <p>Every method of the object, one after the other.</p>
    <ul>
      <li>getVersion</li><li>getUuid</li><li>getAppState</li><li>getSystemStat</li>
      <li>registerKey</li><li>setIMEPosition</li><li>setScreenSaver</li>
      <li>recordProfiling</li>
    </ul>
  </body>
</html>
`;
