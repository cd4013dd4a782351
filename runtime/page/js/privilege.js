// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// Privileges of the platform's web APIs by their short names, and the check that a method makes
// before it does something that needs one.
export function makePrivilege(use, host) {
  const root = 'http://tizen.org/privilege/';

  return {
    names: {
      ALARM: `${root}alarm`,
      APPLICATION_INFO: `${root}application.info`,
      APPLICATION_LAUNCH: `${root}application.launch`,
      APPMANAGER_CERTIFICATE: `${root}appmanager.certificate`,
      APPMANAGER_KILL: `${root}appmanager.kill`,
      DATASYNC: `${root}datasync`,
      DOWNLOAD: `${root}download`,
      FILESYSTEM_READ: `${root}filesystem.read`,
      FILESYSTEM_WRITE: `${root}filesystem.write`,
      KEYMANAGER: `${root}keymanager`,
      NOTIFICATION: `${root}notification`,
      PACKAGE_INFO: `${root}package.info`,
      SETTING: `${root}setting`,
      SYSTEM: `${root}system`,
      TV_AUDIO: `${root}tv.audio`,
      TV_CHANNEL: `${root}tv.channel`,
      TV_DISPLAY: `${root}tv.display`,
      TV_INPUT_DEVICE: `${root}tv.inputdevice`,
      TV_WINDOW: `${root}tv.window`,
      WEBSETTING: `${root}websetting`,
    },

    check(privilege) {
      if (!host.hasPrivilege(privilege)) {
        const WebAPIException = use('exceptions');
        throw new WebAPIException(
          WebAPIException.SECURITY_ERR,
          `Permission denied: add the line <tizen:privilege name="${privilege}"/> ` +
            "to the application's config.xml."
        );
      }
    },
  };
}
