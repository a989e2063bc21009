// Answers the message boxes of a child process while the test waits for the child to end (Windows
// only): what ends the process is run in a death test, and the boxes are seen from outside.
//
//     ChildBoxes boxes;
//     EXPECT_EXIT(endTheProcess(), ::testing::ExitedWithCode(1), "");
//     EXPECT_EQ(boxes.seen().at(0).text, "Last words");
#pragma once

#include <atomic>
#include <thread>
#include <vector>

#include "support/box_answerer.h"

namespace toolbox::testing {

/// From its construction until seen() is called, every box that a child of this process shows is
/// read and answered by its first button.
class ChildBoxes {
  public:
    ChildBoxes() : watcher_([this] { watch(); }) {}
    ~ChildBoxes() { stop(); }
    ChildBoxes(const ChildBoxes&) = delete;
    ChildBoxes& operator=(const ChildBoxes&) = delete;

    /// The boxes in the order in which they opened.
    [[nodiscard]] const std::vector<SeenBox>& seen() {
        stop();
        return seen_;
    }

  private:
    void watch();
    void look(std::vector<HWND>& handled);
    void stop();

    std::vector<SeenBox> seen_;
    std::atomic<bool> stopped_ = false;
    std::thread watcher_;
};

}  // namespace toolbox::testing
