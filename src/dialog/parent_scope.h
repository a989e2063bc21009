// The message service's parent, while an operation of a dialog runs.
#pragma once

#include "toolbox/messages.h"

namespace toolbox::dialog {

/// Makes a window the message service's parent; at its end the one before is again, unless another
/// has become it meanwhile.
class [[nodiscard]] ParentScope {
  public:
    explicit ParentScope(HWND parent) : parent_(parent), before_(GMSG::getParent()) {
        GMSG::setParent(parent);
    }
    ~ParentScope() {
        if (GMSG::getParent() == parent_) GMSG::setParent(before_);
    }
    ParentScope(const ParentScope&) = delete;
    ParentScope& operator=(const ParentScope&) = delete;

  private:
    HWND parent_;
    HWND before_;
};

}  // namespace toolbox::dialog
