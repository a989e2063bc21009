// Looks for new boxes at every tick of a timer, which the box's own loop of messages delivers.
#include "support/box_answerer.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "support/window_kit.h"

namespace toolbox::testing {
namespace {

BoxAnswerer* active = nullptr;

SeenBox readBox(HWND window) {
    SeenBox box{GetWindow(window, GW_OWNER), textOf(window), {}, {}};
    for (HWND control = GetWindow(window, GW_CHILD); control;
         control = GetWindow(control, GW_HWNDNEXT)) {
        const LONG style = GetWindowLongA(control, GWL_STYLE);
        if ((style & WS_VISIBLE) == 0) continue;
        if (isOfClass(control, "Button"))
            box.buttons.push_back(GetDlgCtrlID(control));
        else if (isOfClass(control, "Static") && (style & SS_TYPEMASK) != SS_ICON)
            box.text += textOf(control);
    }
    return box;
}

}  // namespace

BoxAnswerer::BoxAnswerer(std::vector<int> answers)
    : answers_(std::move(answers)), timer_(SetTimer(nullptr, 0, 10, tick)) {
    EXPECT_EQ(active, nullptr) << "one answerer at a time";
    active = this;
}

BoxAnswerer::~BoxAnswerer() {
    KillTimer(nullptr, timer_);
    active = nullptr;
    EXPECT_GE(seen_.size(), answers_.size()) << "fewer boxes than answers";
}

void CALLBACK BoxAnswerer::tick(HWND, UINT, UINT_PTR, DWORD) {
    if (active) active->look();
}

void BoxAnswerer::look() {
    // Handles of closed boxes are given to new ones.
    std::erase_if(handled_, [](HWND box) { return !IsWindow(box); });
    for (const HWND box : openDialogs()) {
        if (std::find(handled_.begin(), handled_.end(), box) != handled_.end()) continue;
        handled_.push_back(box);
        answer(box);
    }
}

void BoxAnswerer::answer(HWND box) {
    seen_.push_back(readBox(box));
    const SeenBox& shown = seen_.back();
    int button = shown.buttons.empty() ? IDCANCEL : shown.buttons.front();
    if (seen_.size() <= answers_.size()) {
        const int wanted = answers_[seen_.size() - 1];
        if (std::find(shown.buttons.begin(), shown.buttons.end(), wanted) != shown.buttons.end())
            button = wanted;
        else
            ADD_FAILURE() << "\"" << shown.text << "\" has no button " << wanted;
    } else {
        ADD_FAILURE() << "unexpected box: " << shown.caption << ": " << shown.text;
    }
    PostMessageA(box, WM_COMMAND, static_cast<WPARAM>(button), 0);
}

}  // namespace toolbox::testing
