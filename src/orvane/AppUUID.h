// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

// An application's UUID: made once, kept as 36 bytes of text in the file "uuid" of the
// application's data folder, and read back from then on. No state, any thread; two first calls at
// once may each make one, and the later stays.
class AppUUID {
 public:
  // Writes a new random UUID, 36 lower-case characters and a NUL, into `buffer` of 37 bytes.
  static void GenerateUUID(char* buffer);

  // Writes the calling application's UUID into `buffer`, 37 bytes that the caller has zeroed. 0:
  // done. 9999: the application's id, or its file, could not be read or written. 101: the file
  // could not be made. A file of another length than 36 bytes is replaced; text of that length is
  // returned whatever it is. A file that the device has no room for is still 0, and the log says
  // so: the UUID then holds for this call alone.
  static int GetUUID(char* buffer);
};
