// The command manager: the application's registry of commands, contexts and tools, and the way from
// a command to the message that the frame window gets.
//
//     GCOMMBase manager(frame, instance);            // after the frame, destroyed before it
//     manager.createAndManageContext(MODES);
//     ToolDlg* palette = manager.createAndManageToolDlg(PALETTE, IDD_PALETTE);   // Windows
//     SetPointer<Tool> tools;
//     tools.add(palette);
//     manager.manage(count, records, tools, MODES);  // creates the commands
//     manager[ID_LINE].setCheckStatus(1);
//
// The manager owns what it was asked to own: commands and contexts are deleted when they are
// unmanaged, of dialog tools the window is destroyed. Tool objects themselves are the
// application's. What is destroyed takes itself out of every manager. A tool that is told of a
// change may delete the manager and all that it manages (commands.h): an operation that lost its
// manager stops. Int results are 1 for done or yes and 0 for refused or no, without a message.
#pragma once

#include "toolbox/commands.h"
#include "toolbox/win_types.h"

class ToolDlg;

namespace toolbox {
class FrozenTools;
}

/// The registry of an application. One is enough; the last one made is the one that tools name and
/// whose frame the clicks in tool dialogs go to.
class TB_API GCOMMBase {
  public:
    /// One command of a table.
    struct CommRec {
        int id;                    ///< the command's number
        unsigned short attribute;  ///< bits of the application's own: Command::getAttribute()
    };

    /// Becomes the manager that Tool::getGCOMMBase() names. Both handles are borrowed.
    GCOMMBase(HWND frame, HINSTANCE instance);
    GCOMMBase(const GCOMMBase&) = delete;
    GCOMMBase& operator=(const GCOMMBase&) = delete;
    /// Clears the selections and unmanages everything.
    virtual ~GCOMMBase();

    /// The window that gets the commands.
    [[nodiscard]] HWND getFrame() const { return frame_; }
    /// The module that holds the dialog templates.
    [[nodiscard]] HINSTANCE getInstance() const { return instance_; }

    /// The managed command with that id. When there is none, the undefined command: asking whether
    /// it is one (`operator int`) is fine, any other use ends the process. That command is one
    /// object; it names the id asked for last.
    Command& operator[](int id);
    // Null when there is none with that id.
    [[nodiscard]] Context* getContext(int id) const;
    [[nodiscard]] Tool* getTool(int id) const;

    /// Manages a command, shows it in the tools and puts it in the context; a negative `contextId`
    /// means none. Refuses null, an id that is managed already, a context or tool that is not
    /// managed. A tool or the context refuses a command that it holds already: the result is 0, and
    /// the tools before it keep the command. 0 too when a tool that is told that the context's
    /// former selection gives way deletes the command, which is then not managed, or the manager.
    int manage(Command* command, const SetPointer<Tool>& tools, int contextId, int own);
    /// Creates the commands of a table, unchecked, enabled and owned, and manages them one by one.
    /// Stops with 0 at the first that is refused; those before it stay.
    int manage(int n, const CommRec records[], const SetPointer<Tool>& tools, int contextId);
    // Refuse null and what is managed already. The result is 1 only when the object was managed and
    // is owned: with `own` 0 it is managed and the result is 0. A dialog tool that is managed while
    // all are frozen is frozen too.
    int manage(Context* context, int own);
    int manage(Tool* tool, int own);
    /// Those of the set that are not managed yet. Always 1.
    int manage(const SetPointer<Context>& contexts, int own);
    int manage(const SetPointer<Tool>& tools, int own);

    /// A new context, managed and owned; null when there is no memory for it.
    Context* createAndManageContext(int id);

    /// Takes the command out of every managed context and tool; deletes it when it is owned. 0 only
    /// for null. Contexts that are not managed keep it, unless it is deleted.
    int unmanage(Command* command);
    /// Refuses null and a context that has commands; deletes it when it is owned.
    int unmanage(Context* context);
    /// Refuses null and a tool that shows commands. Destroys the window of an owned dialog tool;
    /// the tool itself is never deleted. A window that is not owned is frozen no longer.
    int unmanage(Tool* tool);

    /// Enables or disables the commands whose getAttribute(attribute) is 1: those that of these
    /// bits have bit 0 alone. No other bit selects commands, and the command with the smallest id
    /// is left as it is.
    void setCommandEnableStatusByAttribute(int status, unsigned short attribute);

#if defined(_WIN32)
    /// A new dialog tool, managed, its window owned and hidden. `dialogId` is the integer id of
    /// the template in the manager's module; with 0 the tool has no window. Null when the window
    /// cannot be created (no such template) or there is no memory. The caller deletes the tool.
    ToolDlg* createAndManageToolDlg(unsigned long toolId, int dialogId);
    /// The dialog procedure of ToolDlg, for dialogs that the application creates itself.
    static DLGPROC getStdToolDlgProc();

    // Sends the frame WM_COMMAND with the id, or puts it in its queue. `lParam` is ignored: the
    // message always has 0. With `check` an unknown or disabled command is not sent.
    // sendCommand() returns the frame's answer, 0 when nothing was sent.
    LRESULT sendCommand(unsigned short id, long lParam, int check);
    void postCommand(unsigned short id, long lParam, int check);

    /// Disables the windows of all dialog tools until thawAllToolDlg() was called as many times;
    /// that does nothing when they are not frozen.
    void freezeAllToolDlg();
    /// Ends one freezeAllToolDlg().
    void thawAllToolDlg();
    /// 1 from the first freezeAllToolDlg() on until as many thaws.
    [[nodiscard]] int isAllToolDlgFrozen() const {
        return freezeCount_ > 0;
    }
#endif

  private:
    friend class Command;
    friend class Context;
    friend class Tool;

    friend class ToolDlg;
    friend class toolbox::FrozenTools;

    // For what is being destroyed: it leaves the sets of every manager, nothing else is done to it.
    static void forgetEverywhere(Command* command);
    static void forgetEverywhere(Context* context);
    static void forgetEverywhere(Tool* tool);
    /// For dialog tools, while they still are some.
    static void unmanageEverywhere(Tool* tool);
    void unmanageCommands();
    void unmanageTools();
    void unmanageContexts();

    [[nodiscard]] Command* find(int id) const;
    void sortLast();
#if defined(_WIN32)
    void destroyWindow(Tool* tool);
    void setFrozen(Tool* tool, int frozen);
    bool maySend(unsigned short id, int check);
    void freezeEach(int frozen);
#endif

    HWND frame_;
    HINSTANCE instance_;
    int freezeCount_ = 0;
    SetPointer<Command> commands_;  // ascending ids
    SetPointer<Context> contexts_;
    SetPointer<Tool> tools_;
    VoidCommand voidCommand_;
    SetPointer<Command> ownedCommands_;
    SetPointer<Context> ownedContexts_;
    SetPointer<Tool> ownedTools_;
    GCOMMBase* older_;  // the manager made before this one, while it lives
    toolbox::detail::Watched<> life_;
};

#if defined(_WIN32)
namespace toolbox {

/// Freezes the dialog tools for its lifetime. The manager may end before it.
class FrozenTools {
  public:
    /// Freezes them.
    explicit FrozenTools(GCOMMBase& manager) : manager_(manager), watch_(manager.life_) {
        manager_.freezeAllToolDlg();
    }
    ~FrozenTools() {
        if (!watch_.gone()) manager_.thawAllToolDlg();
    }
    FrozenTools(const FrozenTools&) = delete;
    FrozenTools& operator=(const FrozenTools&) = delete;

  private:
    GCOMMBase& manager_;
    detail::Watch<> watch_;
};

}  // namespace toolbox
#endif
