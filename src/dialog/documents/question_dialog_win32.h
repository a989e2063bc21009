// A question with answers that say what they do.
#pragma once

#include <vector>

#include "toolbox/dialogs.h"

namespace toolbox::documents {

/// What is asked.
struct Question {
    CString text;
    std::vector<CString> lines{};           ///< shown in a list under the text; empty: none
    std::vector<unsigned short> answers{};  ///< texts of at most three buttons; the first is usual
    unsigned short cancel = 0;              ///< text of the button that Escape stands for
};

/// Shows it as high as it needs to be. run() gives the number of an answer, from 1, or 0.
class QuestionDialog : public TvDialog {
  public:
    explicit QuestionDialog(Question question);

  protected:
    void opened() override;
    int command(int control, int notification) override;

  private:
    int place(int control, int top, int height);
    [[nodiscard]] int textHeight() const;
    [[nodiscard]] RECT areaOf(int control) const;

    Question question_;
};

}  // namespace toolbox::documents
