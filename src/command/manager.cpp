#include <cstdint>
#include <memory>
#include <new>

#include "toolbox/command_manager.h"

namespace {

template <class Object, class Id>
Object* withId(const SetPointer<Object>& set, Id id) {
    for (int i = 0; i < set.nItem(); ++i)
        if (static_cast<Id>(set[i]->getID()) == id) return set[i];
    return nullptr;
}

/// On purpose 1 only for what is owned as well.
template <class Object>
int manageIn(SetPointer<Object>& all, SetPointer<Object>& owned, Object* object, int own) {
    return all.add(object) && own ? owned.add(object) : 0;
}

}  // namespace

GCOMMBase::GCOMMBase(HWND frame, HINSTANCE instance) : frame_(frame), instance_(instance) {
    Tool::setGCOMMBase(this);
}

GCOMMBase::~GCOMMBase() {
    for (int i = 0; i < contexts_.nItem(); ++i) contexts_[i]->setSel(nullptr);
    while (commands_.nItem() > 0) unmanage(commands_[0]);
    // What is left in tools and contexts are commands that were never managed.
    while (tools_.nItem() > 0) {
        tools_[0]->removeAll();
        unmanage(tools_[0]);
    }
    while (contexts_.nItem() > 0) {
        contexts_[0]->removeAll();
        unmanage(contexts_[0]);
    }
    if (Tool::getGCOMMBase() == this) Tool::setGCOMMBase(nullptr);
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
    if (context && !context->add(command)) return 0;
    if (!commands_.add(command)) return 0;
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
        if (!manage(command.get(), tools, contextId, 1)) return 0;
        static_cast<void>(command.release());
    }
    return 1;
}

int GCOMMBase::manage(Context* context, int own) {
    return manageIn(contexts_, ownedContexts_, context, own);
}

int GCOMMBase::manage(Tool* tool, int own) {
    return manageIn(tools_, ownedTools_, tool, own);
}

int GCOMMBase::manage(const SetPointer<Context>& contexts, int own) {
    contexts_ += contexts;
    if (own) ownedContexts_ += contexts;
    return 1;
}

int GCOMMBase::manage(const SetPointer<Tool>& tools, int own) {
    tools_ += tools;
    if (own) ownedTools_ += tools;
    return 1;
}

Context* GCOMMBase::createAndManageContext(int id) {
    std::unique_ptr<Context> context(new (std::nothrow) Context(id));
    return manage(context.get(), 1) ? context.release() : nullptr;
}

int GCOMMBase::unmanage(Command* command) {
    if (!command) return 0;
    for (int i = 0; i < contexts_.nItem(); ++i) contexts_[i]->remove(command);
    for (int i = 0; i < tools_.nItem(); ++i) tools_[i]->remove(command);
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
    if (owned) destroyWindow(tool);
#else
    static_cast<void>(owned);
#endif
    return 1;
}

void GCOMMBase::forget(Command* command) {
    for (int i = 0; i < contexts_.nItem(); ++i) contexts_[i]->remove(command);
    commands_.remove(command);
    ownedCommands_.remove(command);
}

void GCOMMBase::forget(Context* context) {
    contexts_.remove(context);
    ownedContexts_.remove(context);
}

void GCOMMBase::forget(Tool* tool) {
    tools_.remove(tool);
    ownedTools_.remove(tool);
}

void GCOMMBase::setCommandEnableStatusByAttribute(int status, unsigned short attribute) {
    for (int i = commands_.nItem() - 1; i > 0; --i)
        if (commands_[i]->getAttribute(attribute) == 1) commands_[i]->setEnableStatus(status);
}
