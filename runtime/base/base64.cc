// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "base/base64.h"

#include <memory>

#include <glib.h>

namespace orvane::base {

std::string EncodeBase64(std::string_view bytes) {
  const std::unique_ptr<gchar, decltype(&g_free)> text(
      g_base64_encode(reinterpret_cast<const guchar*>(bytes.data()), bytes.size()), &g_free);
  return text.get();
}

// GLib passes over what does not belong there, so that it is not written again.
std::optional<std::string> DecodeBase64(std::string_view text) {
  gsize size = 0;
  const std::unique_ptr<guchar, decltype(&g_free)> decoded(
      g_base64_decode(std::string(text).c_str(), &size), &g_free);
  std::string bytes(reinterpret_cast<const char*>(decoded.get()), size);
  if (EncodeBase64(bytes) != text) return std::nullopt;
  return bytes;
}

}  // namespace orvane::base
