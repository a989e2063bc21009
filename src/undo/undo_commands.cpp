// Two commands that follow a stack. Each is set to what the stack says at that moment, and asked
// again at the end: a tool that is told of one may change the stack.
#include "toolbox/command_manager.h"
#include "toolbox/undo.h"

namespace {

/// Null when the manager has none with that number.
Command* commandWith(int id) {
    GCOMMBase* const manager = Tool::getGCOMMBase();
    Command* const command = manager ? &(*manager)[id] : nullptr;
    return command && *command ? command : nullptr;
}

}  // namespace

UndoCommands::UndoCommands(int undoId, int redoId) : undoId_(undoId), redoId_(redoId) {}

int UndoCommands::follow(UndoStack* stack) {
    return listenTo(stack) ? refresh() : 0;
}

int UndoCommands::command(int id) {
    if (id != undoId_ && id != redoId_) return 0;
    if (UndoStack* const followed = stack()) id == undoId_ ? followed->undo() : followed->redo();
    return 1;
}

void UndoCommands::undoChanged() {
    refresh();
}

int UndoCommands::wanted(int id) const {
    if (!stack()) return 0;
    return id == undoId_ ? stack()->canUndo() : stack()->canRedo();
}

int UndoCommands::refresh() {
    constexpr int kTries = 4;  // tools that always change it back do not win
    for (int tries = 0; tries < kTries; ++tries) {
        int changes = 0;
        const toolbox::detail::Watch<> self(life_);
        for (const int id : {undoId_, redoId_}) {
            Command* const command = commandWith(id);
            if (!command || command->isEnabled() == wanted(id)) continue;
            ++changes;
            command->setEnableStatus(wanted(id));
            if (self.gone()) return 0;
        }
        if (changes == 0) break;
    }
#if defined(_WIN32)
    return showMenus();
#else
    return 1;
#endif
}
