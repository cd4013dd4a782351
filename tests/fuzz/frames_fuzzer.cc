// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// However a stream is cut, it gives the same frames; whatever a body holds, it becomes well-formed
// text, and JSON when it is written as a string.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <picojson.h>

#include "base/frame.h"
#include "base/json_text.h"
#include "fuzz_folder.h"

namespace {

using orvane::base::FrameReader;

// Ends where the stream announces too much.
std::vector<std::string> Frames(std::string_view stream, size_t step) {
  std::vector<std::string> bodies;
  FrameReader reader;
  try {
    for (size_t at = 0; at < stream.size(); at += step) {
      reader.Append(stream.substr(at, step));
      while (const auto body = reader.Next()) bodies.emplace_back(*body);
    }
  } catch (const orvane::base::FrameError&) {
  }
  return bodies;
}

void CheckText(const std::string& body) {
  const std::string text = orvane::base::WellFormed(body);
  Require(orvane::base::IsWellFormed(text));
  Require(orvane::base::IsWellFormed(body) == (text == body));
  std::string json;
  orvane::base::AppendJsonString(text, &json);
  picojson::value parsed;
  Require(picojson::parse(parsed, json).empty());
  Require(parsed.get<std::string>() == text);
  const std::string whole = orvane::base::WithoutHalfCharacters(body);
  Require(orvane::base::WithoutHalfCharacters(whole) == whole);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view stream(reinterpret_cast<const char*>(data), size);
  const std::vector<std::string> bodies = Frames(stream, size == 0 ? 1 : size);
  Require(Frames(stream, 1) == bodies);
  Require(Frames(stream, 7) == bodies);
  for (const std::string& body : bodies) CheckText(body);
  return 0;
}
