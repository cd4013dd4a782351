// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

// Reads runtime variables in XW_Initialize; a synchronous message "KEY SIZE" reads one later, into
// a buffer of that many bytes. Bytes behind the buffer must stay as they are.

#include <sstream>
#include <vector>

#include "support.h"

namespace {

Host g_host;
XW_Extension g_extension;
std::string g_early;

std::string Read(const std::string& key, size_t size) {
  std::vector<char> buffer(size + 1, '#');
  g_host.runtime->GetRuntimeVariableString(g_extension, key.c_str(), buffer.data(), size);
  if (buffer[size] != '#') return "written beyond the buffer";
  if (size == 0) return "no buffer";
  return buffer.data();
}

void OnSyncMessage(XW_Instance instance, const char* message) {
  std::istringstream words(message);
  std::string key;
  size_t size = 0;
  words >> key >> size;
  const std::string reply = key == "early" ? g_early : Read(key, size);
  g_host.sync->SetSyncReply(instance, reply.c_str());
}

}  // namespace

int32_t XW_Initialize(XW_Extension extension, XW_GetInterface get_interface) {
  g_host = GetHost(get_interface);
  g_extension = extension;
  g_host.core->SetExtensionName(extension, "test.runtimeVariables");
  g_host.sync->Register(extension, OnSyncMessage);
  g_early = Read("app_id", 256) + " " + Read("extension_path", 4096) + " " + Read("unknown", 256);
  return XW_OK;
}
