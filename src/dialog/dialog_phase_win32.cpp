// The frame is looked at again at the end: it may have been closed from within the dialog.
#include "dialog/dialog_phase_win32.h"

namespace toolbox::dialog {
namespace {

std::wstring currentFolder() {
    std::wstring folder(GetCurrentDirectoryW(0, nullptr), L'\0');
    folder.resize(GetCurrentDirectoryW(static_cast<DWORD>(folder.size()), folder.data()));
    return folder;
}

}  // namespace

DialogPhase::DialogPhase(HWND owner) : frame_(MDIApplication::getPMDI()), folder_(currentFolder()) {
    const bool ownerTakesInput = owner && IsWindowEnabled(owner);
    if (frame_) {
        wasFrozen_ = frame_->isAcceleratorFrozen() != 0;
        frame_->freezeAccelerator();
        frame_->setModelessDispatch(0);
    }
    others_.switchOff();
    if (ownerTakesInput) EnableWindow(owner, TRUE);
}

DialogPhase::~DialogPhase() {
    if (!folder_.empty() && currentFolder() != folder_) SetCurrentDirectoryW(folder_.c_str());
    others_.switchOn();
    if (!frame_ || frame_ != MDIApplication::getPMDI()) return;
    frame_->setModelessDispatch(1);
    if (!wasFrozen_) frame_->thawAccelerator();
}

}  // namespace toolbox::dialog
