// The texts of undo and redo in menus.
#include <algorithm>
#include <new>
#include <string>

#include "toolbox/undo.h"
#include "undo/menu_label.h"
#include "undo/step_text.h"

using toolbox::undo::redoTextOf;
using toolbox::undo::undoTextOf;

namespace {

bool hasItem(HMENU menu, int id) {
    return GetMenuState(menu, static_cast<UINT>(id), MF_BYCOMMAND) != static_cast<UINT>(-1);
}

std::string itemText(HMENU menu, UINT id) {
    const int length = GetMenuStringA(menu, id, nullptr, 0, MF_BYCOMMAND);
    std::string text(static_cast<std::size_t>(std::max(length, 0)) + 1, '\0');
    const int copied =
        GetMenuStringA(menu, id, text.data(), static_cast<int>(text.size()), MF_BYCOMMAND);
    text.resize(static_cast<std::size_t>(std::max(copied, 0)));
    return text;
}

CString textOf(const UndoStack* stack, bool undo) {
    if (!stack) return undo ? undoTextOf("") : redoTextOf("");
    return undo ? stack->undoText() : stack->redoText();
}

/// True when the item has another text than before.
bool setItemText(HMENU menu, int id, const CString& text) {
    if (text.IsEmpty() || !hasItem(menu, id)) return false;
    const std::string former = itemText(menu, static_cast<UINT>(id));
    std::string label = toolbox::undo::menuLabel(text, former).str();
    if (label == former) return false;
    MENUITEMINFOA info{};
    info.cbSize = sizeof info;
    info.fMask = MIIM_STRING;
    info.dwTypeData = label.data();
    return SetMenuItemInfoA(menu, static_cast<UINT>(id), FALSE, &info) != 0;
}

}  // namespace

int UndoCommands::showIn(HMENU menu, HWND owner) {
    if (!hasItem(menu, undoId_) && !hasItem(menu, redoId_)) return 0;
    std::erase_if(menus_, [=](const Shown& each) { return each.menu == menu; });
    try {
        menus_.push_back({menu, owner});
    } catch (const std::bad_alloc&) {
        return 0;
    }
    return refresh();
}

int UndoCommands::showMenus() {
    const toolbox::detail::Watch<> self(life_);
    std::erase_if(menus_, [](const Shown& each) { return !IsMenu(each.menu); });
    try {
        // By index: what draws a menu bar may name further menus.
        for (std::size_t i = 0; i < menus_.size(); ++i) {
            const Shown shown = menus_[i];
            bool changed = false;
            for (const bool undo : {true, false}) {
                const CString text = textOf(stack(), undo);
                if (self.gone()) return 0;  // an edit that is asked for its text may do anything
                changed |= setItemText(shown.menu, undo ? undoId_ : redoId_, text);
            }
            if (changed && shown.owner) DrawMenuBar(shown.owner);
            if (self.gone()) return 0;
        }
    } catch (const std::bad_alloc&) {
        // Items keep the texts that they have.
    }
    return 1;
}
