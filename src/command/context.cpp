#include "toolbox/command_manager.h"
#include "toolbox/commands.h"

Context::Context(int id) : id_(id) {}

Context::~Context() {
    for (int i = 0; i < commands_.nItem(); ++i)
        if (commands_[i]->getContext() == this) commands_[i]->setContext(nullptr);
    if (GCOMMBase* manager = Tool::getGCOMMBase()) manager->forget(this);
}

int Context::getSelID() const {
    return selection_ ? selection_->getID() : 0;
}

Command* Context::getEnabledSel() const {
    return selection_ && selection_->isEnabled() ? selection_ : nullptr;
}

int Context::getEnabledSelID() const {
    const Command* selection = getEnabledSel();
    return selection ? selection->getID() : 0;
}

int Context::add(Command* command) {
    if (!commands_.add(command)) return 0;
    command->setContext(this);
    if (command->isChecked()) setSel(command);
    return 1;
}

int Context::remove(Command* command) {
    if (!command || !commands_.isInSet(command)) return 0;
    if (selection_ == command) {
        setSel(nullptr);
        // A disabled context refuses that, but must not go on pointing to what may be gone soon.
        if (selection_ == command) selection_ = nullptr;
    }
    command->setContext(nullptr);
    return commands_.remove(command);
}

void Context::removeAll() {
    while (commands_.nItem() > 0) remove(commands_[0]);
}

int Context::setSel(Command* command) {
    if (!enabled_ || (command && !command->isEnabled())) return 0;
    if (Command* old = selection_) {
        // No selection any more when the old command asks, so that it tells its tools.
        selection_ = nullptr;
        old->setCheckStatus(0);
    }
    selection_ = command;
    if (command) command->setCheckStatus(1);
    return 1;
}

int Context::setEnableStatus(int status) {
    for (int i = 0; i < commands_.nItem(); ++i) commands_[i]->setEnableStatus(status);
    enabled_ = status;
    return 1;
}
