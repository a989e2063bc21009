// What tools of every kind have in common.
#include "toolbox/command_manager.h"
#include "toolbox/commands.h"

namespace {

GCOMMBase* current = nullptr;

}  // namespace

void Tool::setGCOMMBase(GCOMMBase* manager) {
    current = manager;
}

GCOMMBase* Tool::getGCOMMBase() {
    return current;
}

Tool::Tool(unsigned long id) : id_(id) {}

Tool::~Tool() {
    removeAll();
    // Not unmanage(), which asks for the class that this object no longer is.
    GCOMMBase::forgetEverywhere(this);
}

int Tool::add(Command* command) {
    if (!commands_.add(command)) return 0;
    if (command->addTool(this)) return 1;
    commands_.remove(command);
    return 0;
}

int Tool::remove(Command* command) {
    if (!command || !commands_.remove(command)) return 0;
    command->removeTool(this);
    return 1;
}

void Tool::removeAll() {
    while (commands_.nItem() > 0) remove(commands_[0]);
}

int Tool::showCommands() {
    const toolbox::detail::Watch<> self(life_);
    int all = 1;
    const bool stays = tellEach(commands(), self, [&](Command* command) {
        if (!command) return;  // add() takes none, but a set can hold any pointer
        const int id = command->getID();
        const int checked = command->isChecked();
        const int enabled = command->isEnabled();
        all &= setCommandCheckStatus(id, checked);
        if (!self.gone()) all &= setCommandEnableStatus(id, enabled);
    });
    return stays ? all : 0;
}
