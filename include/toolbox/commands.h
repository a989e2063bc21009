// Commands: every action that an application offers its user is a Command with a number, which may
// be enabled or not and checked or not. Tools (palettes, menus) show commands and are told of every
// change; a Context groups commands of which at most one is checked, as radio buttons.
//
//     Command line(ID_LINE, 0, 0, 1), circle(ID_CIRCLE, 0, 0, 1);
//     Context mode(1);
//     mode.add(&line);
//     mode.add(&circle);
//     line.setCheckStatus(1);
//     circle.setCheckStatus(1);     // unchecks the line; tools that show them follow
//
// The command manager (command_manager.h) knows them all. Commands, contexts and tools never own
// each other: whichever is destroyed takes itself out of the others and of every manager.
//
// A tool that is told of a change may change, remove and delete anything: commands (the one it is
// told about too), contexts, tools, the manager. What it does stands; the operation under way tells
// each tool and reaches each command that is still there, once, and then goes on with what it has
// left. A setter whose own object was deleted returns 0.
//
// Int results are 1 for done or yes and 0 for refused or no, without a message. Statuses are 0 or
// not 0. Everything runs on the user-interface thread.
#pragma once

#include "toolbox/detail/watch.h"
#include "toolbox/export.h"
#include "toolbox/runtime_class.h"
#include "toolbox/sets.h"

class Context;
class GCOMMBase;
class Tool;

/// An action of the application, with its number. It tells its tools of every change; setters
/// return 1 when the command has the status afterwards.
class TB_API Command : public CObject {
  public:
    /// `attribute` is a set of bits of the application's own.
    Command(int id, unsigned short attribute, int checkStatus, int enableStatus);

    const CRuntimeClass* GetRuntimeClass() const override;  ///< "Command"
    ~Command() override;

    /// 1 for a real command, 0 for the one that stands for an undefined number.
    virtual operator int() const;

    /// Tells the command's tools that it is checked or unchecked, and then it is: who asks it
    /// meanwhile gets the old status. Does nothing when it is so already. In a context, checking
    /// makes it the selection, with the rules of Context::setSel(), and unchecking the selection
    /// clears it. Returns 1, or what setSel() returns; 0 when the command was deleted meanwhile.
    virtual int setCheckStatus(int status);
    /// Tells the command's tools that it is enabled or disabled, and then it is. Does nothing when
    /// it is so already. A disabled command stays its context's selection. Returns 1; 0 when the
    /// command was deleted meanwhile.
    virtual int setEnableStatus(int status);
    // The statuses and the number, as they are.
    virtual int isChecked() const;
    virtual int isEnabled() const;
    virtual int getID() const;
    /// Those bits of `mask` that the command has, not 0 or 1.
    virtual int getAttribute(unsigned short mask) const;

    /// What GetRuntimeClass() answers, for CObject::IsKindOf().
    static const CRuntimeClass classCommand;

  protected:
    // Called by the tools that begin or cease to show the command.
    virtual int addTool(Tool* tool);
    virtual int removeTool(Tool* tool);

  private:
    friend class Context;
    friend class GCOMMBase;
    friend class Tool;
    friend class VoidCommand;

    int id_;
    int checkStatus_;
    int enableStatus_;
    unsigned short attribute_;
    SetPointer<Tool> tools_;
    Context* context_ = nullptr;    // the one it belongs to
    SetPointer<Context> contexts_;  // those that hold it, as a member or as the selection
    toolbox::detail::Watched<> life_;
};

/// Stands for a number that no command has. Every use of it but `operator int` is a
/// programming error: it shows a box "Commande #%d n'est pas définie (command)" and ends the
/// process. Only a replaced prompt comes back from that; the result is 0 then.
class TB_API VoidCommand : public Command {
  public:
    VoidCommand();

    const CRuntimeClass* GetRuntimeClass() const override;  ///< "VoidCommand"

    /// The number that the box will name. Returns the command itself.
    VoidCommand& setID(int id);

    operator int() const override;
    int setCheckStatus(int status) override;
    int setEnableStatus(int status) override;
    int isChecked() const override;
    int isEnabled() const override;
    int getID() const override;
    int getAttribute(unsigned short mask) const override;

    /// What GetRuntimeClass() answers, for CObject::IsKindOf().
    static const CRuntimeClass classVoidCommand;
};

/// Commands that exclude one another. The selection is the one that is checked.
class TB_API Context {
  public:
    /// Enabled, without commands.
    explicit Context(int id);
    Context(const Context&) = delete;
    Context& operator=(const Context&) = delete;
    virtual ~Context();

    // The context's number, how many commands it has, and whether it is enabled.
    [[nodiscard]] int getID() const { return id_; }
    [[nodiscard]] int getNumCommand() const { return commands_.nItem(); }
    [[nodiscard]] int isEnabled() const { return enabled_; }

    /// The selection, or null.
    [[nodiscard]] Command* getSel() const { return selection_; }
    /// Its id, 0 when there is none.
    [[nodiscard]] int getSelID() const;
    // The selection when it is enabled, otherwise null and 0.
    [[nodiscard]] Command* getEnabledSel() const;
    [[nodiscard]] int getEnabledSelID() const;

    /// Refuses null and members. A command that is checked becomes the selection. A command belongs
    /// to one context, the one that it was added to last: its own status changes that one's
    /// selection. The one that it was added to before keeps it as a member all the same.
    int add(Command* command);
    /// Refuses null and what is no member. The selection is cleared first. The command belongs to
    /// no context afterwards.
    int remove(Command* command);

    /// Unchecks the selection and checks `command` in its stead; null for none. Refused while the
    /// context or the command is disabled, and given up with 0 when a tool that is told of the
    /// former selection chooses another one or deletes the command or the context. Callers pass
    /// members; what is none is checked too, and stays the selection until another one follows.
    int setSel(Command* command);
    /// Enables or disables each of the commands, then the context, also when it has that status
    /// already. 1; 0 when the context was deleted meanwhile.
    int setEnableStatus(int status);

  private:
    friend class GCOMMBase;

    friend class Command;

    void removeAll();
    void forget(Command* command);
    void select(Command* command);

    int id_;
    int enabled_ = 1;
    SetPointer<Command> commands_;
    Command* selection_ = nullptr;
    toolbox::detail::Watched<> life_;
};

/// Shows commands: a palette window, a menu. Derived classes say how.
class TB_API Tool {
  public:
    /// Shows no command yet. `id` is the application's own number.
    explicit Tool(unsigned long id);
    Tool(const Tool&) = delete;
    Tool& operator=(const Tool&) = delete;

    /// Takes the tool out of its commands and of the managers.
    virtual ~Tool();
    /// Address of a tag that the tools of one class share, to tell classes apart.
    virtual const int* getClassType() const = 0;
    /// Shows or hides the tool; `activate` asks to make it the active window. 1 when it is done.
    virtual int setVisibleStatus(int visible, int activate) = 0;
    /// 1 when the user can see it.
    virtual int isVisible() const = 0;
    // Show a command that the tool holds as checked or enabled.
    virtual int setCommandCheckStatus(int commandId, int status) = 0;
    virtual int setCommandEnableStatus(int commandId, int status) = 0;

    // The tool's number, and how many commands it shows.
    [[nodiscard]] unsigned long getID() const { return id_; }
    [[nodiscard]] int getNumCommand() const { return commands_.nItem(); }

    /// Refuses null and commands that it shows already. Nothing is shown before the command
    /// changes.
    int add(Command* command);
    /// Refuses null and commands that it does not show.
    int remove(Command* command);

    /// The command manager; null while there is none. It sets itself.
    static void setGCOMMBase(GCOMMBase* manager);
    [[nodiscard]] static GCOMMBase* getGCOMMBase();

  protected:
    /// The commands that it shows, in the order in which they were added.
    [[nodiscard]] const SetPointer<Command>& commands() const { return commands_; }
    /// Shows the states of all commands. 0 when one could not be shown, or the tool was deleted
    /// meanwhile.
    int showCommands();
    /// Ceases to show every command.
    void removeAll();

  private:
    friend class GCOMMBase;

    unsigned long id_;
    SetPointer<Command> commands_;
    toolbox::detail::Watched<> life_;
};
