// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// However a stream is cut, it gives the same frames; whatever a head holds, it can be written and
// read again; whatever a body holds, it becomes well-formed text, and JSON when it is written as a
// string.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/frame.h"
#include "base/utf8.h"
#include "fuzz_folder.h"

namespace {

using orvane::Json;
using orvane::base::FrameReader;
using orvane::base::JsonText;

struct Taken {
  Json head;  // null for one that cannot be read
  std::string body;
  bool operator==(const Taken& other) const { return head == other.head && body == other.body; }
};

void TakeFrames(FrameReader* reader, std::vector<Taken>* frames) {
  while (true) {
    try {
      auto frame = reader->Next();
      if (!frame) return;
      frames->push_back({std::move(frame->head), std::string(frame->body)});
    } catch (const orvane::base::JsonError&) {
      frames->push_back({});
    }
  }
}

// Ends where the stream announces too much.
std::vector<Taken> Frames(std::string_view stream, size_t step) {
  std::vector<Taken> frames;
  FrameReader reader;
  try {
    for (size_t at = 0; at < stream.size(); at += step) {
      reader.Append(stream.substr(at, step));
      TakeFrames(&reader, &frames);
    }
  } catch (const orvane::base::FrameError&) {
  }
  return frames;
}

void Check(const Taken& frame) {
  std::string bytes;
  orvane::base::AppendFrame(JsonText(frame.head), frame.body, &bytes);
  Require(Frames(bytes, bytes.size()) == std::vector<Taken>{frame});
  const std::string text = orvane::base::WellFormedUtf8(frame.body);
  Require(orvane::base::WellFormedUtf8(text) == text);
  Require(orvane::base::ParseJson(JsonText(Json(frame.body))).get<std::string>() == text);
  std::string quoted;
  orvane::base::AppendJsonString(frame.body, &quoted);
  Require(quoted == JsonText(Json(frame.body)));
  const std::string whole = orvane::base::WithoutHalfCharacters(frame.body);
  Require(orvane::base::WithoutHalfCharacters(whole) == whole);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view stream(reinterpret_cast<const char*>(data), size);
  const std::vector<Taken> frames = Frames(stream, size == 0 ? 1 : size);
  Require(Frames(stream, 1) == frames);
  Require(Frames(stream, 7) == frames);
  for (const Taken& frame : frames) Check(frame);
  return 0;
}
