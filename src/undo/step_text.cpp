// Texts of the resources around the text of a step.
#include "undo/step_text.h"

#include "toolbox/messages.h"

namespace toolbox::undo {
namespace {

constexpr unsigned short kUndoStep = 1420, kRedoStep = 1421, kUndo = 1422, kRedo = 1423;

CString textOf(unsigned short with, unsigned short without, const CString& step) {
    RWCString text;
    if (step.IsEmpty())
        GMSG::getString(without, text);
    else if (GMSG::getString(with, text, step) == 0)
        return step;
    return text;
}

}  // namespace

CString undoTextOf(const CString& step) {
    return textOf(kUndoStep, kUndo, step);
}

CString redoTextOf(const CString& step) {
    return textOf(kRedoStep, kRedo, step);
}

}  // namespace toolbox::undo
