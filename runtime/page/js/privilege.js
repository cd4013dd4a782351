// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// Privileges of the platform's web APIs by their short names, and the check that a method makes
// before it does something that needs one.
(function makePrivilege(use, bridge) {
  'use strict';

  const { WebAPIException } = use('exceptions');

  // Short name, and the last part of the URI where it is not the same in lower case without
  // underscores.
  const names = {};
  for (const [name, path] of [
    ['ALARM'],
    ['APPLICATION_INFO', 'application.info'],
    ['APPLICATION_LAUNCH', 'application.launch'],
    ['APPMANAGER_CERTIFICATE', 'appmanager.certificate'],
    ['APPMANAGER_KILL', 'appmanager.kill'],
    ['DATASYNC'],
    ['DOWNLOAD'],
    ['FILESYSTEM_READ', 'filesystem.read'],
    ['FILESYSTEM_WRITE', 'filesystem.write'],
    ['KEYMANAGER'],
    ['NOTIFICATION'],
    ['PACKAGE_INFO', 'package.info'],
    ['SETTING'],
    ['SYSTEM'],
    ['TV_AUDIO', 'tv.audio'],
    ['TV_CHANNEL', 'tv.channel'],
    ['TV_DISPLAY', 'tv.display'],
    ['TV_INPUT_DEVICE', 'tv.inputdevice'],
    ['TV_WINDOW', 'tv.window'],
    ['WEBSETTING'],
  ]) {
    names[name] = `http://tizen.org/privilege/${path || name.toLowerCase()}`;
  }
  Object.freeze(names);

  function checkPrivilegeAccess(privilege) {
    if (!bridge.hasPrivilege(privilege)) {
      throw new WebAPIException(
        WebAPIException.SECURITY_ERR,
        `Permission denied: add the line <tizen:privilege name="${privilege}"/> ` +
          "to the application's config.xml."
      );
    }
  }

  return { names, checkPrivilegeAccess };
});
