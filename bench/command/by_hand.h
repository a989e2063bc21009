// Delivery as one would write it by hand. In a file of its own, which like the library knows no
// handler that it could call without the table of virtual functions.
#pragma once

#include <vector>

#include "toolbox/dispatch.h"

/// From a copy, so that clients may come and go meanwhile.
LRESULT deliver(const std::vector<DispatchClient*>& clients, TarvMess& message);
LRESULT deliverWithoutCopy(const std::vector<DispatchClient*>& clients, TarvMess& message);
