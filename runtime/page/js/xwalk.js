// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

export function makeXwalk(use) {
  // Each facility is made when a script first reads it.
  return {
    utils: {
      get NativeManager() {
        return use('native_manager');
      },
      get validator() {
        return use('validator');
      },
      get converter() {
        return use('converter');
      },
      get type() {
        return use('type');
      },
      get privilege() {
        return use('privilege').names;
      },
      checkPrivilegeAccess(privilege) {
        use('privilege').check(privilege);
      },
    },
  };
}
