// The frame and the key manager of the process.
#include "toolbox/windowing.h"

namespace {

MDI* theFrame = nullptr;
UDManager* activeManager = nullptr;

}  // namespace

MDIApplication::~MDIApplication() = default;

int MDIApplication::canClose() {
    return 1;
}

void MDIApplication::setPMDI(MDI* frame) {
    theFrame = frame;
}

MDI* MDIApplication::getPMDI() {
    return theFrame;
}

void MDI::setActiveUDM(UDManager* manager) {
    activeManager = manager;
}

UDManager* MDI::getActiveUDM() {
    return activeManager;
}
