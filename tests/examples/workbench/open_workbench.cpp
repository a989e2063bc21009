#include "open_workbench.h"

#include <gtest/gtest.h>

#include "resources/resource.h"
#include "support/window_kit.h"

using namespace toolbox::testing;

namespace {

constexpr ULONGLONG kPatience = 15000;  // ms
constexpr UINT kTick = 10;              // ms

void CALLBACK leaveLoop(HWND, UINT, UINT_PTR, DWORD) {
    PostQuitMessage(0);
}

/// Tool windows would lie over what is tested.
BOOL CALLBACK hideOther(HWND window, LPARAM frame) {
    if (window != reinterpret_cast<HWND>(frame) && IsWindowVisible(window))
        ShowWindow(window, SW_HIDE);
    return TRUE;
}

}  // namespace

OpenWorkbench::Services::Services() {
    GMSG::initStaticVars();
    UDManager::initStaticVars();
    WindowDict::initStaticVars();
    GMSG::setInstance(GetModuleHandleA(nullptr));
    GMSG::setUseRegistry(0);
    GMSG::language = GMSG::English;
    GMSG::setErrorReportingOption(GMSG::ReportInList);
}

OpenWorkbench::Services::~Services() {
    WindowDict::destroyStaticVars();
    UDManager::destroyStaticVars();
    GMSG::destroyStaticVars();
}

OpenWorkbench::OpenWorkbench() {
    const std::string settings = folder_ / "workbench.ini";
    GMSG::setDestName(settings);
    const HINSTANCE module = GetModuleHandleA(nullptr);
    workbench_ = std::make_unique<Workbench>(module, Settings{settings, folder_ / "workbench.log"});
    frame_ = std::make_unique<WorkbenchFrame>(
        module, nullptr,
        MDI::ConstructInfo{.title = "workbench",
                           .menuId = static_cast<std::uint32_t>(inLanguage(IDM_FRAME)),
                           .acceleratorId = IDA_FRAME,
                           .iconId = IDI_FRAME,
                           .windowMenuItemId = CMD_CASCADE,
                           .firstChildId = CMD_FIRST_CHILD},
        workbench_.get());
    EXPECT_TRUE(frame_->initMainWindow(SW_SHOW));
    MoveWindow(frame(), 0, 0, 1100, 800, TRUE);
    SetForegroundWindow(frame());
    command(CMD_NEW);
    EnumThreadWindows(GetCurrentThreadId(), hideOther, reinterpret_cast<LPARAM>(frame()));
}

OpenWorkbench::~OpenWorkbench() {
    DestroyWindow(frame());
    pumpMessages();
}

void OpenWorkbench::command(int id) const {
    SendMessageA(frame(), WM_COMMAND, static_cast<WPARAM>(id), 0);
    pumpMessages();
}

bool OpenWorkbench::runUntil(const std::function<bool()>& condition) const {
    const ULONGLONG end = GetTickCount64() + kPatience;
    bool holds = condition();
    while (!holds && GetTickCount64() <= end) {
        const UINT_PTR timer = SetTimer(nullptr, 0, kTick, leaveLoop);
        frame_->run(SW_SHOW);
        KillTimer(nullptr, timer);
        holds = condition();
    }
    return holds;
}

std::string OpenWorkbench::hint() const {
    return textOf(FindWindowExA(frame(), nullptr, STATUSCLASSNAMEA, nullptr));
}

WindowObject* OpenWorkbench::maximize(int showCommand) const {
    command(showCommand);
    const HWND child = frame_->getActiveMDIChild();
    SendMessageA(frame_->getClient(), WM_MDIMAXIMIZE, reinterpret_cast<WPARAM>(child), 0);
    pumpMessages();
    return WindowDict::find(child);
}
