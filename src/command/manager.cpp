// The command manager: its registry. All managers that live are linked, the last one made first, so
// that what is destroyed can be taken out of each. What calls tools goes on only while the manager
// and what it works at are still there.
#include <cstdint>
#include <memory>
#include <new>

#include "toolbox/command_manager.h"

using toolbox::detail::Watch;

namespace {

GCOMMBase* newest = nullptr;

template <class Object, class Id>
Object* withId(const SetPointer<Object>& set, Id id) {
    for (int i = 0; i < set.nItem(); ++i)
        if (static_cast<Id>(set[i]->getID()) == id) return set[i];
    return nullptr;
}

/// 1 only for what is owned as well.
template <class Object>
int manageIn(SetPointer<Object>& all, SetPointer<Object>& owned, Object* object, int own) {
    return all.add(object) && own ? owned.add(object) : 0;
}

}  // namespace

GCOMMBase::GCOMMBase(HWND frame, HINSTANCE instance)
    : frame_(frame), instance_(instance), older_(newest) {
    newest = this;
    Tool::setGCOMMBase(this);
}

GCOMMBase::~GCOMMBase() {
    {
        const Watch self(life_);
        tellEach(contexts_, self, [](Context* context) { context->setSel(nullptr); });
    }
    // Commands that were never managed are left in tools and contexts.
    unmanageCommands();
    unmanageTools();
    unmanageContexts();
    GCOMMBase** link = &newest;
    while (*link != this) link = &(*link)->older_;
    *link = older_;
    if (Tool::getGCOMMBase() == this) Tool::setGCOMMBase(nullptr);
}

void GCOMMBase::unmanageCommands() {
    while (commands_.nItem() > 0) unmanage(commands_[0]);
}

void GCOMMBase::unmanageTools() {
    while (tools_.nItem() > 0) {
        tools_[0]->removeAll();
        unmanage(tools_[0]);
    }
}

void GCOMMBase::unmanageContexts() {
    while (contexts_.nItem() > 0) {
        Context* const context = contexts_[0];
        const Watch<> there(context->life_);
        context->removeAll();
        if (!there.gone()) unmanage(context);
    }
}

Command* GCOMMBase::find(int id) const {
    int low = 0;
    int high = commands_.nItem() - 1;
    while (low <= high) {
        const int mid = (low + high) / 2;
        Command* command = commands_[mid];
        if (command->id_ == id) return command;
        if (id < command->id_)
            high = mid - 1;
        else
            low = mid + 1;
    }
    return nullptr;
}

Command& GCOMMBase::operator[](int id) {
    Command* command = find(id);
    return command ? *command : voidCommand_.setID(id);
}

Context* GCOMMBase::getContext(int id) const {
    return withId(contexts_, id);
}

Tool* GCOMMBase::getTool(int id) const {
    return withId(tools_, static_cast<std::uint32_t>(id));
}

int GCOMMBase::manage(Command* command, const SetPointer<Tool>& tools, int contextId, int own) {
    if (!command) return 0;
    Context* context = contextId >= 0 ? getContext(contextId) : nullptr;
    if (contextId >= 0 && !context) return 0;
    if (find(command->getID())) return 0;
    for (int i = 0; i < tools.nItem(); ++i)
        if (!tools_.isInSet(tools[i])) return 0;
    for (int i = 0; i < tools.nItem(); ++i)
        if (!tools[i]->add(command)) return 0;
    const Watch self(life_);
    const Watch there(command->life_);
    if (context && !context->add(command)) return 0;
    if (self.gone() || there.gone() || !commands_.add(command)) return 0;
    sortLast();
    if (own) ownedCommands_.add(command);
    return 1;
}

void GCOMMBase::sortLast() {
    for (int i = commands_.nItem() - 1; i > 0 && commands_[i]->id_ < commands_[i - 1]->id_; --i)
        commands_.exchangeItem(i, i - 1);
}

int GCOMMBase::manage(int n, const CommRec records[], const SetPointer<Tool>& tools,
                      int contextId) {
    for (int i = 0; i < n; ++i) {
        std::unique_ptr<Command> command(new (std::nothrow)
                                             Command(records[i].id, records[i].attribute, 0, 1));
        if (!command) return 0;
        const Watch there(command->life_);
        const int managed = manage(command.get(), tools, contextId, 1);
        if (managed || there.gone()) static_cast<void>(command.release());
        if (!managed) return 0;
    }
    return 1;
}

int GCOMMBase::manage(Context* context, int own) {
    return manageIn(contexts_, ownedContexts_, context, own);
}

int GCOMMBase::manage(Tool* tool, int own) {
    const int isNew = tool && !tools_.isInSet(tool);
    const int managed = manageIn(tools_, ownedTools_, tool, own);
#if defined(_WIN32)
    if (isNew && freezeCount_ > 0) setFrozen(tool, 1);
#else
    static_cast<void>(isNew);
#endif
    return managed;
}

int GCOMMBase::manage(const SetPointer<Context>& contexts, int own) {
    contexts_ += contexts;
    if (own) ownedContexts_ += contexts;
    return 1;
}

int GCOMMBase::manage(const SetPointer<Tool>& tools, int own) {
    tools_ += tools;
    if (own) ownedTools_ += tools;
#if defined(_WIN32)
    const Watch self(life_);
    if (freezeCount_ > 0) tellEach(tools_, self, [this](Tool* tool) { setFrozen(tool, 1); });
#endif
    return 1;
}

Context* GCOMMBase::createAndManageContext(int id) {
    std::unique_ptr<Context> context(new (std::nothrow) Context(id));
    return manage(context.get(), 1) ? context.release() : nullptr;
}

int GCOMMBase::unmanage(Command* command) {
    if (!command) return 0;
    const Watch self(life_);
    const Watch there(command->life_);
    const auto leave = [&](auto* from) {
        // NOLINTNEXTLINE(clang-analyzer-core.CallAndMessage): a set holds no null
        if (!there.gone()) from->remove(command);
    };
    // A command that is deleted meanwhile, also with the manager, has left everything.
    if (!tellEach(contexts_, self, leave) || there.gone()) return 1;
    if (!tellEach(tools_, self, leave) || there.gone()) return 1;
    commands_.remove(command);
    if (ownedCommands_.remove(command)) delete command;
    return 1;
}

int GCOMMBase::unmanage(Context* context) {
    if (!context || context->getNumCommand() > 0) return 0;
    contexts_.remove(context);
    if (ownedContexts_.remove(context)) delete context;
    return 1;
}

int GCOMMBase::unmanage(Tool* tool) {
    if (!tool || tool->getNumCommand() > 0) return 0;
    tools_.remove(tool);
    const int owned = ownedTools_.remove(tool);
#if defined(_WIN32)
    if (owned)
        destroyWindow(tool);
    else if (freezeCount_ > 0)
        setFrozen(tool, 0);
#else
    static_cast<void>(owned);
#endif
    return 1;
}

void GCOMMBase::forgetEverywhere(Command* command) {
    for (GCOMMBase* each = newest; each; each = each->older_) {
        each->commands_.remove(command);
        each->ownedCommands_.remove(command);
    }
}

void GCOMMBase::forgetEverywhere(Context* context) {
    for (GCOMMBase* each = newest; each; each = each->older_) {
        each->contexts_.remove(context);
        each->ownedContexts_.remove(context);
    }
}

void GCOMMBase::forgetEverywhere(Tool* tool) {
    for (GCOMMBase* each = newest; each; each = each->older_) {
        each->tools_.remove(tool);
        each->ownedTools_.remove(tool);
    }
}

void GCOMMBase::unmanageEverywhere(Tool* tool) {
    // From the start again after each: destroying the window may end managers.
    for (GCOMMBase* each = newest; each;)
        each = each->tools_.isInSet(tool) && each->unmanage(tool) ? newest : each->older_;
}

void GCOMMBase::setCommandEnableStatusByAttribute(int status, unsigned short attribute) {
    const Watch self(life_);
    const SetPointer<Command> members = commands_;
    for (int i = members.nItem() - 1; i > 0 && !self.gone(); --i) {
        Command* const command = members[i];
        if (commands_[i] != command && !commands_.isInSet(command)) continue;
        if (command->getAttribute(attribute) == 1) command->setEnableStatus(status);
    }
}
