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
    const SetPointer<Tool> tools = tools_;
    for (int i = 0; i < tools.nItem(); ++i) tools[i]->remove(this);
    if (context_) context_->remove(this);
    if (GCOMMBase* manager = Tool::getGCOMMBase()) manager->forget(this);
}

const CRuntimeClass* Command::GetRuntimeClass() const {
    return &classCommand;
}

Command::operator int() const {
    return 1;
}

int Command::setCheckStatus(int status) {
    if (status == checkStatus_) return 1;
    if (context_) {
        const bool selected = context_->getSel() == this;
        if (status && !selected) return context_->setSel(this);
        if (!status && selected) return context_->setSel(nullptr);
    }
    for (int i = 0; i < tools_.nItem(); ++i) tools_[i]->setCommandCheckStatus(id_, status);
    checkStatus_ = status;
    return 1;
}

int Command::setEnableStatus(int status) {
    if (status == enableStatus_) return 1;
    for (int i = 0; i < tools_.nItem(); ++i) tools_[i]->setCommandEnableStatus(id_, status);
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
