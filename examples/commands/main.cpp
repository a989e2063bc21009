// Commands: drawing modes that exclude one another, and a tool that shows them on a terminal.
//
//     commands_sample [<number> ...]        chooses the modes with these numbers, one by one
#include <charconv>
#include <cstring>
#include <iostream>

#include "toolbox/command_manager.h"

namespace {

enum Id : int { kLine = 1001, kCircle = 1002, kText = 1003, kModes = 1, kTerminal = 2 };

/// Prints what a palette would show. A tool with windows differs in these operations only.
class TerminalTool : public Tool {
  public:
    TerminalTool() : Tool(kTerminal) {}
    const int* getClassType() const override {
        static const int type = 0;
        return &type;
    }
    int setVisibleStatus(int, int) override { return 0; }
    int isVisible() const override { return 1; }
    int setCommandCheckStatus(int id, int status) override {
        std::cout << "  " << id << (status ? " pressed\n" : " released\n");
        return 1;
    }
    int setCommandEnableStatus(int id, int status) override {
        std::cout << "  " << id << (status ? " enabled\n" : " greyed\n");
        return 1;
    }
};

void choose(GCOMMBase& manager, int id) {
    std::cout << "choose " << id << '\n';
    Command& command = manager[id];
    // Any other use of a command that is not there would end the program.
    if (!command)
        std::cout << "  there is no such command\n";
    else if (!command.setCheckStatus(1))
        std::cout << "  refused\n";
}

}  // namespace

int main(int argc, char** argv) {
    GCOMMBase manager(nullptr, nullptr);  // an application with windows names its frame here
    TerminalTool terminal;
    manager.manage(&terminal, 0);
    const Context* modes = manager.createAndManageContext(kModes);

    SetPointer<Tool> tools;
    tools.add(&terminal);
    const GCOMMBase::CommRec table[] = {{kLine, 0}, {kCircle, 0}, {kText, 0}};
    if (!modes || !manager.manage(3, table, tools, kModes)) return 1;
    manager[kText].setEnableStatus(0);

    if (argc < 2)
        for (const int id : {1001, 1002, 1003, 1004}) choose(manager, id);
    for (int i = 1; i < argc; ++i) {
        int id = 0;
        const char* end = argv[i] + std::strlen(argv[i]);
        const auto [after, error] = std::from_chars(argv[i], end, id);
        if (after != end || error != std::errc{}) {
            std::cerr << argv[i] << " is not a number\n";
            return 2;
        }
        choose(manager, id);
    }
    std::cout << "chosen: " << modes->getSelID() << '\n';
}
