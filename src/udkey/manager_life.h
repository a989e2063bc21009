// Whether a manager is still there, for those that fetch several values of it: any of them may
// delete it.
#pragma once

#include <memory>

#include "toolbox/keys.h"
#include "udkey/shared.h"

namespace toolbox::udkey {

class ManagerLife {
  public:
    explicit ManagerLife(const UDManager& manager) : state_(manager.state_) {}
    [[nodiscard]] bool isOver() const { return state_->managerIsGone; }

  private:
    std::shared_ptr<const ManagerState> state_;
};

}  // namespace toolbox::udkey
