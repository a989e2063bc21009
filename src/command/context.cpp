// Contexts. Every context that holds a command, as a member or as its selection, is in the
// command's set of contexts, so that none is left pointing to a command that is gone.
#include "toolbox/command_manager.h"
#include "toolbox/commands.h"

using toolbox::detail::Watch;

Context::Context(int id) : id_(id) {}

Context::~Context() {
    while (commands_.nItem() > 0) forget(commands_[0]);
    if (selection_) forget(selection_);
    GCOMMBase::forgetEverywhere(this);
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
    command->contexts_.add(this);
    if (!command->contexts_.isInSet(this)) {  // no memory
        commands_.remove(command);
        return 0;
    }
    command->context_ = this;
    const Watch self(life_);
    const Watch there(command->life_);
    if (command->isChecked()) setSel(command);
    return !self.gone() && !there.gone();
}

int Context::remove(Command* command) {
    if (!command || !commands_.isInSet(command)) return 0;
    const Watch self(life_);
    const Watch there(command->life_);
    if (selection_ == command) setSel(nullptr);
    if (self.gone() || there.gone()) return 1;
    // A disabled context refuses to clear its selection, but must not go on pointing to it.
    forget(command);
    command->context_ = nullptr;
    return 1;
}

void Context::removeAll() {
    const Watch self(life_);
    tellEach(commands_, self, [this](Command* command) { remove(command); });
}

/// Without a word to anybody.
void Context::forget(Command* command) {
    commands_.remove(command);
    if (selection_ == command) selection_ = nullptr;
    command->contexts_.remove(this);
    if (command->context_ == this) command->context_ = nullptr;
}

/// Makes it the selection, null for none, without a word to anybody.
void Context::select(Command* command) {
    if (selection_ && !commands_.isInSet(selection_)) selection_->contexts_.remove(this);
    selection_ = command;
    if (command) command->contexts_.add(this);
}

int Context::setSel(Command* command) {
    const auto refuses = [&] { return !enabled_ || (command && !command->isEnabled()); };
    if (refuses()) return 0;
    const Watch self(life_);
    if (Command* old = selection_) {
        const Watch<> there(command ? command->life_ : old->life_);
        // No selection any more when the former one asks, so that it tells its tools.
        select(nullptr);
        old->setCheckStatus(0);
        if (self.gone() || (command && there.gone())) return 0;
        if (selection_) return selection_ == command;
        if (refuses()) return 0;
    }
    select(command);
    if (!command) return 1;
    const Watch<> there(command->life_);
    command->setCheckStatus(1);
    return !self.gone() && !there.gone();
}

int Context::setEnableStatus(int status) {
    const Watch self(life_);
    if (!tellEach(commands_, self, [=](Command* each) { each->setEnableStatus(status); })) return 0;
    enabled_ = status;
    return 1;
}
