// A command tells its tools. Each operation that tells goes through a copy of the set and looks
// after each call whether the command is still there.
#include "base/template_text.h"
#include "toolbox/command_manager.h"
#include "toolbox/commands.h"
#include "toolbox/platform.h"

namespace {

constexpr char kUndefined[] = "Commande #%d n'est pas d\351finie (command)";

int reportUndefined(int id) {
    char text[sizeof kUndefined + 16];
    toolbox::base::printTemplate(text, sizeof text, kUndefined, id);
    toolbox::platform::UserPrompt& prompt = *toolbox::platform::current().prompt;
    prompt.messageBox(nullptr, text, "Erreur de programmation", MB_ICONSTOP);
    prompt.fatalExit("Bye");
    return 0;
}

}  // namespace

constinit const CRuntimeClass Command::classCommand{"Command", &CObject::classCObject};
constinit const CRuntimeClass VoidCommand::classVoidCommand{"VoidCommand", &Command::classCommand};

Command::Command(int id, unsigned short attribute, int checkStatus, int enableStatus)
    : id_(id), checkStatus_(checkStatus), enableStatus_(enableStatus), attribute_(attribute) {}

Command::~Command() {
    while (tools_.nItem() > 0) {
        Tool* const tool = tools_[0];
        tools_.remove(tool);
        tool->remove(this);
    }
    while (contexts_.nItem() > 0) contexts_[0]->forget(this);
    GCOMMBase::forgetEverywhere(this);
}

const CRuntimeClass* Command::GetRuntimeClass() const {
    return &classCommand;
}

Command::operator int() const {
    return 1;
}

int Command::setCheckStatus(int status) {
    if (status == checkStatus_) return 1;
    const toolbox::detail::Watch self(life_);
    if (context_ && (status != 0) != (context_->getSel() == this)) {
        const int done = context_->setSel(status ? this : nullptr);
        return self.gone() ? 0 : done;
    }
    const int id = id_;
    if (!tellEach(tools_, self, [=](Tool* tool) { tool->setCommandCheckStatus(id, status); }))
        return 0;
    checkStatus_ = status;
    return 1;
}

int Command::setEnableStatus(int status) {
    if (status == enableStatus_) return 1;
    const toolbox::detail::Watch self(life_);
    const int id = id_;
    if (!tellEach(tools_, self, [=](Tool* tool) { tool->setCommandEnableStatus(id, status); }))
        return 0;
    enableStatus_ = status;
    return 1;
}

int Command::isChecked() const {
    return checkStatus_;
}

int Command::isEnabled() const {
    return enableStatus_;
}

int Command::getID() const {
    return id_;
}

int Command::getAttribute(unsigned short mask) const {
    return attribute_ & mask;
}

int Command::addTool(Tool* tool) {
    return tools_.add(tool);
}

int Command::removeTool(Tool* tool) {
    return tools_.remove(tool);
}

VoidCommand::VoidCommand() : Command(0, 0, 0, 1) {}

const CRuntimeClass* VoidCommand::GetRuntimeClass() const {
    return &classVoidCommand;
}

VoidCommand& VoidCommand::setID(int id) {
    id_ = id;
    return *this;
}

VoidCommand::operator int() const {
    return 0;
}

int VoidCommand::setCheckStatus(int) {
    return reportUndefined(id_);
}

int VoidCommand::setEnableStatus(int) {
    return reportUndefined(id_);
}

int VoidCommand::isChecked() const {
    return reportUndefined(id_);
}

int VoidCommand::isEnabled() const {
    return reportUndefined(id_);
}

int VoidCommand::getID() const {
    return reportUndefined(id_);
}

int VoidCommand::getAttribute(unsigned short) const {
    return reportUndefined(id_);
}
