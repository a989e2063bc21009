// The frame object and its main window.
#include <memory>

#include "text/text_resources.h"
#include "toolbox/platform.h"
#include "window/frame_state.h"

static_assert(sizeof(void*) != 4 || sizeof(MDI::ConstructInfo) == 40, "ten words");

namespace {

constexpr unsigned int kRefusedText = 2;
constexpr int kRefusedTextLength = 80;

LPCSTR resourceName(std::uint32_t id) {
    return MAKEINTRESOURCEA(static_cast<WORD>(id));
}

/// The wait cursor, for as long as it lives.
class WaitCursor {
  public:
    WaitCursor() : before_(SetCursor(LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_WAIT)))) {}
    ~WaitCursor() { SetCursor(before_); }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;

  private:
    HCURSOR before_;
};

/// A display server tells later what has become of a window that is shown, and the window is raised
/// then: above a palette that was made meanwhile. A question about the pointer waits until all of
/// it has come; looking into the queue takes it up.
void takeUpEvents() {
    POINT pointer{};
    GetCursorPos(&pointer);
    GetQueueStatus(QS_ALLINPUT);
}

/// The submenu that lists the documents: the last that has the command; null when none has it.
HMENU windowMenuOf(HMENU menu, UINT itemId) {
    for (int i = GetMenuItemCount(menu) - 1; i >= 0; --i) {
        const HMENU submenu = GetSubMenu(menu, i);
        if (submenu && GetMenuState(submenu, itemId, MF_BYCOMMAND) != 0xFFFFFFFF) return submenu;
    }
    return nullptr;
}

}  // namespace

MDI::MDI(void* instance, void* other, const ConstructInfo& info, MDIApplication* application)
    : state_(std::make_unique<State>()) {
    State& state = *state_;
    state.isFirstInstance = other == nullptr;
    state.title = info.title ? info.title : "";
    state.info = info;
    state.info.title = state.title.c_str();
    state.instance = static_cast<HINSTANCE>(instance);
    state.application = application;
    if (info.menuId) state.frameMenu = LoadMenuA(state.instance, resourceName(info.menuId));
    if (info.acceleratorId)
        state.defaultAccel = LoadAcceleratorsA(state.instance, resourceName(info.acceleratorId));
    if (info.iconId) state.icon = LoadIconA(state.instance, resourceName(info.iconId));
    MDIApplication::setPMDI(this);
}

MDI::~MDI() {
    // The current menu belongs to the frame's window and goes with it.
    if (state_->frameMenu && state_->frameMenu != state_->currentMenu)
        DestroyMenu(state_->frameMenu);
    if (state_->defaultAccel) FreeResource(reinterpret_cast<HGLOBAL>(state_->defaultAccel));
    if (MDIApplication::getPMDI() == this) MDIApplication::setPMDI(nullptr);
}

unsigned short MDI::registerFrameClass() {
    WNDCLASSA frameClass{};
    frameClass.style = CS_HREDRAW | CS_VREDRAW;
    frameClass.lpfnWndProc = WinFrameWndProc;
    frameClass.hInstance = state_->instance;
    frameClass.hIcon = state_->icon;
    frameClass.hCursor = LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_ARROW));
    frameClass.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
    frameClass.lpszClassName = getClassFrame();
    return RegisterClassA(&frameClass);
}

const char* MDI::getClassFrame() const {
    return "MDIFrame";
}

HWND MDI::createFramePane() {
    return nullptr;
}

int MDI::initMainWindow(int showCommand) {
    State& state = *state_;
    if (state.frame) return 0;
    const toolbox::detail::Watch self(state.life);
    {
        const WaitCursor wait;
        if (state.info.registerClass) {
            registerFrameClass();
            if (state.application) state.application->classRegistered(state.instance);
            if (self.gone()) return 0;
        }
        const HWND frame = CreateWindowExA(0, getClassFrame(), state.info.title,
                                           WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, CW_USEDEFAULT,
                                           CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, nullptr,
                                           nullptr, state.instance, nullptr);
        if (self.gone()) return 0;
        state.frame = frame;
        if (!frame) return 0;
        setMDIMenu(state.frameMenu, static_cast<unsigned short>(state.info.windowMenuItemId));
        setMDIAccel(state.defaultAccel);
    }
    ShowWindow(state.frame, showCommand);
    takeUpEvents();
    if (self.gone()) return 0;
    const int accepted =
        !state.application || state.application->frameCreated(state.frame, state.instance);
    if (self.gone()) return 0;
    if (!accepted) refuseFrame();
    return accepted;
}

void MDI::refuseFrame() {
    char text[kRefusedTextLength + 1] = "";
    toolbox::text::loadFrom(state_->instance, kRefusedText, text, sizeof text);
    char caption[256] = "";
    GetWindowTextA(state_->frame, caption, sizeof caption);
    const HWND frame = state_->frame;  // the frame object may go while the message is shown
    toolbox::platform::current().prompt->messageBox(frame, text, caption, MB_ICONHAND);
    DestroyWindow(frame);
}

int MDI::setMDIMenu(HMENU menu, unsigned short windowMenuItemId) {
    State& state = *state_;
    if (!menu) {
        menu = state.frameMenu;
        setMDIAccel(state.defaultAccel);
        windowMenuItemId = static_cast<unsigned short>(state.info.windowMenuItemId);
    }
    SendMessageA(state.client, WM_MDISETMENU, reinterpret_cast<WPARAM>(menu),
                 reinterpret_cast<LPARAM>(windowMenuOf(menu, windowMenuItemId)));
    state.currentMenu = menu;
    if (state.frame) DrawMenuBar(state.frame);
    return 1;
}

HMENU MDI::getCurrentMenu() const {
    return state_->currentMenu;
}

HMENU MDI::getFrameMenu() const {
    return state_->frameMenu;
}

void MDI::setStatusBar(HWND strip) {
    state_->statusBar = strip;
    if (state_->frame) layOut(state_->frame);
}

HWND MDI::getStatusBar() const {
    // A handle may be given to another window when its own is gone.
    const HWND strip = state_->statusBar;
    return strip && state_->frame && IsChild(state_->frame, strip) ? strip : nullptr;
}

HWND MDI::getFrame() const {
    return state_->frame;
}

HWND MDI::getClient() const {
    return state_->client;
}

HINSTANCE MDI::getInstance() const {
    return state_->instance;
}

const MDI::ConstructInfo& MDI::getConstructInfo() const {
    return state_->info;
}

int MDI::isFirstInstance() const {
    return state_->isFirstInstance;
}

MDIApplication* MDI::getApplication() const {
    return state_->application;
}
