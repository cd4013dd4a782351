// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "extensions/extension.h"

#include <optional>
#include <utility>

#include "base/json.h"
#include "extensions/callback_frame.h"
#include "extensions/host_context.h"
#include "extensions/host_error.h"
#include "extensions/instance_state.h"
#include "extensions/interface_tables.h"
#include "extensions/registry.h"

namespace orvane::extensions {

void ExtensionEnd::operator()(Extension* extension) const { extension->End(); }

LoadedExtension Extension::Load(std::shared_ptr<HostContext> context,
                                const std::filesystem::path& library) {
  const auto extension =
      std::make_shared<Extension>(std::move(context), std::filesystem::absolute(library));
  Registry& registry = Registry::Process();
  registry.extensions().Add(extension->handle(), extension);
  try {
    extension->Initialize();
  } catch (...) {
    registry.extensions().Remove(extension->handle());
    throw;
  }
  return LoadedExtension(extension.get());
}

Extension::Extension(std::shared_ptr<HostContext> context, std::filesystem::path path)
    : context_(std::move(context)),
      path_(std::move(path)),
      handle_(Registry::Process().NewHandle()),
      library_(LoadLibrary(path_)) {}

std::string Extension::Describe() const {
  std::lock_guard<std::mutex> lock(mutex_);
  if (registration_.name.empty()) return path_.string();
  return "extension " + base::JsonText(registration_.name);
}

void Extension::set_initializing(bool initializing) {
  std::lock_guard<std::mutex> lock(mutex_);
  initializing_ = initializing;
}

void Extension::Initialize() {
  const auto initialize = SymbolOf<XW_Initialize_Func>(library_, "XW_Initialize");
  if (initialize == nullptr) {
    throw HostError(path_.string() +
                    " exports no XW_Initialize, so it is no extension. Export that function with C "
                    "linkage and default visibility.");
  }
  set_initializing(true);
  int32_t result = XW_ERROR;
  const std::optional<std::string> escaped =
      RunCallback(*this, nullptr, [&] { result = initialize(handle_, GetInterface); });
  set_initializing(false);
  if (escaped) {
    throw HostError("XW_Initialize of " + path_.string() + " threw: " + *escaped +
                    ". The library is not used; no exception may leave XW_Initialize.");
  }
  if (result != XW_OK) {
    throw HostError("XW_Initialize of " + path_.string() + " returned " + std::to_string(result) +
                    " instead of XW_OK (0). The library is not used; its own log "
                    "may say what it lacks.");
  }
}

void Extension::End() {
  Registry& registry = Registry::Process();
  for (const auto& instance : registry.instances().All()) {
    if (&instance->extension() == this) instance->Destroy();
  }
  if (registration_.shutdown != nullptr) {
    const std::optional<std::string> escaped =
        RunCallback(*this, nullptr, [this] { registration_.shutdown(handle_); });
    if (escaped) {
      context_->Warn("The shutdown callback of " + Describe() + " threw: " + *escaped +
                     ". No exception may leave a callback.");
    }
  }
  const std::shared_ptr<Extension> self = registry.extensions().Remove(handle_);
  if (!CallbackFrame::IsRunning(*this)) return library_.reset();
  static_cast<void>(library_.release());  // it stays in the process, and in use
  context_->Warn(Describe() +
                 " was shut down from within one of its callbacks, so its library stays loaded. "
                 "End the host outside of callbacks.");
}

std::unique_ptr<Instance> Extension::CreateInstance(InstanceClient* client) {
  context_->Enter("Extension::CreateInstance");
  if (client == nullptr) throw HostError("Extension::CreateInstance needs a client.");
  auto state = std::make_shared<InstanceState>(shared_from_this(), *client);
  Registry::Process().instances().Add(state->handle(), state);
  // Made first, so that nothing can fail once the extension knows the instance.
  auto instance = std::make_unique<Instance>(state);
  state->Create();
  return instance;
}

}  // namespace orvane::extensions
