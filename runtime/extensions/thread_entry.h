// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace orvane::extensions {

class HostContext;
class InstanceState;

// What every member of a host, its extensions and its instances does first. Throws HostError on
// another thread than the extension thread. Outside callbacks it also destroys the instances that
// other threads have let go.
void EnterHost(HostContext& context, const char* call);

// The same for a member of an instance; throws HostError when the instance is dead.
void EnterInstance(InstanceState& instance, const char* call);

}  // namespace orvane::extensions
