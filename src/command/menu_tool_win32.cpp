// A menu as a tool: ticks and greys of its items.
#include "toolbox/tools.h"

const int MenuTool::classType = 0;

MenuTool::MenuTool(unsigned long id, HMENU menu, HWND owner)
    : Tool(id), menu_(menu), owner_(owner) {}

int MenuTool::setVisibleStatus(int, int) {
    return 0;
}

int MenuTool::isVisible() const {
    return owner_ && GetMenu(owner_) == menu_ && IsWindowVisible(owner_);
}

int MenuTool::setCommandCheckStatus(int commandId, int status) {
    const UINT tick = status ? MF_CHECKED : MF_UNCHECKED;
    return change(static_cast<int>(CheckMenuItem(menu_, static_cast<UINT>(commandId), tick)));
}

int MenuTool::setCommandEnableStatus(int commandId, int status) {
    const UINT grey = status ? MF_ENABLED : MF_GRAYED;
    return change(EnableMenuItem(menu_, static_cast<UINT>(commandId), grey));
}

int MenuTool::change(int before) {
    if (before == -1) return 0;
    if (owner_) DrawMenuBar(owner_);
    return 1;
}

int MenuTool::refresh() {
    return showCommands();
}
