// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "extensions/extension.h"

#include <utility>

#include "extensions/callback_frame.h"
#include "extensions/extension_state.h"
#include "extensions/host_context.h"
#include "extensions/host_error.h"
#include "extensions/instance_state.h"
#include "extensions/library.h"
#include "extensions/registry.h"
#include "extensions/thread_entry.h"

namespace orvane::extensions {
namespace {

XW_Initialize_Func EntryPoint(const Library& library, const std::filesystem::path& path) {
  void* symbol = library.Symbol("XW_Initialize");
  if (symbol == nullptr) {
    throw HostError(path.string() +
                    " exports no XW_Initialize, so it is no extension. Export that function with C "
                    "linkage and default visibility.");
  }
  return reinterpret_cast<XW_Initialize_Func>(symbol);
}

}  // namespace

std::unique_ptr<Extension> Extension::Load(std::shared_ptr<HostContext> context,
                                           const std::filesystem::path& library) {
  const std::filesystem::path path = std::filesystem::absolute(library);
  std::unique_ptr<Library> code = Library::Open(path);
  const XW_Initialize_Func initialize = EntryPoint(*code, path);
  auto state = std::make_shared<ExtensionState>(std::move(context), path);
  Registry::Process().Add(state);
  try {
    state->Initialize(initialize);
  } catch (...) {
    Registry::Process().RemoveExtension(state->handle());
    throw;
  }
  return std::unique_ptr<Extension>(new Extension(std::move(code), std::move(state)));
}

Extension::Extension(std::unique_ptr<Library> library, std::shared_ptr<ExtensionState> state)
    : library_(std::move(library)), state_(std::move(state)) {}

Extension::~Extension() {
  state_->Shutdown();
  Registry::Process().RemoveExtension(state_->handle());
  if (!CallbackFrame::IsRunning(*state_)) return;
  library_->KeepLoaded();
  state_->context().Warn(
      state_->Describe() +
      " was shut down from within one of its callbacks, so its library stays loaded. "
      "End the host outside of callbacks.");
}

const std::string& Extension::name() const { return state_->registration().name; }
const std::string& Extension::api() const { return state_->registration().api; }
const std::vector<std::string>& Extension::entry_points() const {
  return state_->registration().entry_points;
}
const std::vector<std::string>& Extension::permissions() const {
  return state_->registration().permissions;
}
const std::filesystem::path& Extension::path() const { return state_->library(); }
XW_Extension Extension::handle() const { return state_->handle(); }

std::unique_ptr<Instance> Extension::CreateInstance(InstanceClient* client) {
  EnterHost(state_->context(), "Extension::CreateInstance");
  if (client == nullptr) throw HostError("Extension::CreateInstance needs a client.");
  auto state = std::make_shared<InstanceState>(state_, *client);
  Registry::Process().Add(state);
  // Made first, so that nothing can fail once the extension knows the instance.
  auto instance = std::make_unique<Instance>(state);
  state->Create();
  return instance;
}

}  // namespace orvane::extensions
