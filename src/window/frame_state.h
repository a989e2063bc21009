// What a frame holds.
#pragma once

#include <string>

#include "toolbox/detail/watch.h"
#include "toolbox/sets.h"
#include "toolbox/windowing.h"

struct MDI::State {
    ConstructInfo info;
    std::string title;  // what info.title points to
    int isFirstInstance = 0;
    HINSTANCE instance = nullptr;
    MDIApplication* application = nullptr;  // borrowed
    HWND frame = nullptr;
    HWND client = nullptr;
    HMENU frameMenu = nullptr;
    HMENU currentMenu = nullptr;
    HACCEL defaultAccel = nullptr;
    HACCEL currentAccel = nullptr;
    HICON icon = nullptr;
    int acceleratorsFrozen = 0;
    ContigSet<HWND> modeless{10};
    ContigSet<HWND> disabledBefore{10};  // when the dispatch was switched off
    int modelessOffCount = 0;
    HWND pane = nullptr;
    HWND statusBar = nullptr;         // borrowed
    bool isLeaving = false;           // the application is being told that the frame is destroyed
    toolbox::detail::Watched<> life;  // of the frame: callbacks may delete it
};
