// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>

#include "set_process/message_in_hand.h"
#include "television/television.h"

namespace orvane::set_process {

// The work of the set process: serves the requests that come as frames on `socket` until the
// server says "shutdown" or closes it, and answers with what the process ends with: 0, or 2 after
// bytes that are no frames. The calling thread becomes the extension thread.
//
// The process holds the set and the extensions apart from the server, so that an extension that
// ends its process takes no page and no simulator with it. Before a message is handled it is
// noted in `in_hand`; what the process wrote before it died arrives. When the server is gone the
// process ends within `grace`, whatever its handlers do.
int RunSetProcess(int socket, MessageInHand& in_hand, const television::ShippedParts& shipped,
                  std::chrono::milliseconds grace);

}  // namespace orvane::set_process
