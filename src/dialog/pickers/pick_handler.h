// Dialogs answered by the handler that is installed.
#pragma once

#include "dialog/pickers/pick_flow.h"

namespace toolbox::pickers {

class HandlerSource final : public PickSource {
  public:
    SourceAnswer ask(const PickQuestion& question) override;
    bool mayReplace(const CString& name) override;
    void tell(Fault, const CString&) override {}
    [[nodiscard]] bool asksAgain() const override { return false; }
};

}  // namespace toolbox::pickers
