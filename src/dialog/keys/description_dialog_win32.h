// Editing the description of one key.
#pragma once

#include "toolbox/dialogs.h"

namespace toolbox::keys {

class DescriptionDialog final : public TvDialog {
  public:
    DescriptionDialog(const CString& key, const CString& description);
    /// What was entered, without blanks around it, which saving would lose.
    [[nodiscard]] const CString& description() const { return description_; }

  protected:
    void opened() override;
    void exchange(TvExchange& fields) override;

  private:
    CString key_;
    CString description_;
};

}  // namespace toolbox::keys
