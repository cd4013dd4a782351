// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// What the framework reads and writes by itself is what the JSON library reads and writes.

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include <picojson.h>

#include "fuzz_folder.h"
#include "json_writer.h"
#include "plain_json_reader.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  const char* const text = bytes.c_str();  // up to its first zero
  picojson::value plain;
  if (!common::ReadPlainJson(text, plain)) return 0;
  picojson::value whole;
  std::string problem;
  const char* const end = text + std::strlen(text);
  const char* const rest = picojson::parse(whole, text, end, &problem);
  Require(problem.empty());
  Require(std::strspn(rest, " \t\r\n") == static_cast<size_t>(end - rest));
  Require(plain == whole);
  Require(plain.serialize() == whole.serialize());
  if (plain.is<picojson::object>()) {
    Require(common::WriteJson(plain.get<picojson::object>()) == whole.serialize());
  }
  return 0;
}
