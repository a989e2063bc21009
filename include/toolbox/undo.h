// Undo and redo: the steps that were done to a document, those that can be done again, and whether
// the document is as it was saved.
//
//     class MoveLoad : public Edit {
//       public:
//         MoveLoad(Beam& beam, int load, double to) ...
//         Outcome apply() override;      // remembers where the load was, and moves it
//         int revert() override;         // moves it back
//         CString text() const override;                    // "Move load"
//         std::size_t size() const override { return sizeof *this; }
//         Merging merge(Edit& later) override;   // takes over where the later one moved it
//     };
//     UndoStack stack;
//     stack.perform(std::make_unique<MoveLoad>(beam, 3, 1.25));
//     stack.undoText();                  // "Undo Move load"
//     stack.undo();
//
// Every change of the document goes through an Edit, and through the document's one stack: an edit
// relies on finding the document as it left it. A step is what one undo() takes back: an edit,
// several that were merged, or a group.
//
// One thing at a time: while the stack calls an edit or a listener, everything that would change
// the stack is refused with 0. What it calls may delete the stack; the operation then touches
// nothing any more and returns 0. Edits are deleted by the stack, and their destructors may do the
// same.
//
// Nothing is lost: what fails leaves the document, the stack and what can be redone as they were.
// std::bad_alloc from an edit, and memory that the stack itself does not get, count as a failure;
// nothing else may be thrown by edits and listeners. Int results are 1 for done or yes and 0 for
// refused or no. Everything runs on one thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <list>
#include <memory>
#include <vector>

#include "toolbox/detail/watch.h"
#include "toolbox/export.h"
#include "toolbox/sets.h"
#include "toolbox/strings.h"
#include "toolbox/win_types.h"

class UndoStack;

namespace toolbox::undo {
struct Entry;
class History;
}  // namespace toolbox::undo

/// One change of a document, which can be carried out and taken back any number of times, by turns.
/// Derived classes hold what they need for both.
class TB_API Edit {
  public:
    /// What became of carrying it out.
    enum Outcome : int {
        Failed = 0,    ///< not done, though there was something to do; the document is as before
        Done = 1,      ///< the document has changed
        Pointless = 2  ///< there is nothing to do; the document is as before
    };
    /// What became of taking another one in.
    enum Merging : int {
        Apart = 0,    ///< neither has changed: they stay two
        Merged = 1,   ///< this one does and takes back what both did
        Annulled = 2  ///< together they change nothing, to the last bit: both can go
    };

    Edit() = default;
    virtual ~Edit();
    Edit(const Edit&) = delete;
    Edit& operator=(const Edit&) = delete;

    /// Carries it out, for the first time or again. It is done whole or not at all.
    virtual Outcome apply() = 0;
    /// Takes back what apply() did: the document is then exactly as it was before. 0 when it
    /// could not; the document is then as apply() left it.
    virtual int revert() = 0;
    /// What the user did, as a menu says it after "Undo": "Move load". Asked each time it is
    /// shown, so that it may follow the language.
    [[nodiscard]] virtual CString text() const = 0;
    /// Bytes that it holds, for the limit by memory. Asked after each apply(), revert() and
    /// merge().
    [[nodiscard]] virtual std::size_t size() const = 0;
    /// Takes in `later`, which was carried out directly after this one, by the same gesture. Asks
    /// first whether it is of a kind that it knows, and speaks of the same thing. What is merged is
    /// emptied at will and deleted. The default leaves them apart.
    virtual Merging merge(Edit& later);
};

/// Is told when what a stack answers may have changed: what can be undone and redone, the texts,
/// whether the document is changed.
class TB_API UndoListener {
  public:
    UndoListener(const UndoListener&) = delete;
    UndoListener& operator=(const UndoListener&) = delete;
    virtual ~UndoListener();

    /// Listens to `stack` instead of the one before; null: to none. 0 when there is no memory, and
    /// for a stack that is being destroyed; it then listens to the one before.
    int listenTo(UndoStack* stack);
    /// Null when it listens to none, or that was destroyed.
    [[nodiscard]] UndoStack* stack() const { return stack_; }

  protected:
    UndoListener() = default;

  private:
    friend class UndoStack;

    /// stack() has changed, or was destroyed. It may delete and ask anything, and leave; the others
    /// are still told. The stack refuses changes meanwhile.
    virtual void undoChanged() = 0;

    UndoStack* stack_ = nullptr;
};

/// The steps of one document.
class TB_API UndoStack {
  public:
    /// For setLimits().
    static constexpr std::size_t kNoLimit = static_cast<std::size_t>(-1);

    /// Without steps, clean, without limits.
    UndoStack();
    /// Deletes the steps and leaves the document as it is. Tells the listeners, whose stack() is
    /// null by then.
    ~UndoStack();
    UndoStack(const UndoStack&) = delete;
    UndoStack& operator=(const UndoStack&) = delete;

    /// Carries an edit out and keeps it; what could be redone is dropped. Whatever is not done is
    /// deleted and changes nothing but the open group, if there is one: see closeGroup(). Failed
    /// for null, and when the call is refused.
    ///
    /// Edits with the same gesture other than 0, one directly after the other, are merged when the
    /// former agrees. Nothing is merged with the step that ends where the document was saved, with
    /// a group, or with what stood before the group opened.
    Edit::Outcome perform(std::unique_ptr<Edit> edit, unsigned gesture = 0);
    /// A number for one gesture, from the button's press to its release.
    [[nodiscard]] unsigned newGesture();

    // Take the last step back, and do the next one again: a whole step or nothing. 0 when there is
    // none, a group is open, or an edit failed or, done again, had nothing to do. When an edit can
    // then not be brought back either, the step stays where it got stuck and can be taken on from
    // there, either way.
    int undo();
    int redo();
    // 1 when there is such a step and no group is open; 0 while an edit is being called.
    [[nodiscard]] int canUndo() const;
    [[nodiscard]] int canRedo() const;

    // How many steps there are.
    [[nodiscard]] std::size_t undoCount() const;
    [[nodiscard]] std::size_t redoCount() const;

    // What the menu says, in the language of GMSG: "Undo Move load", "Redo Move load"; "Undo" and
    // "Redo" when that cannot be done.
    [[nodiscard]] CString undoText() const;
    [[nodiscard]] CString redoText() const;

    // Groups: the edits from opening to closing are one step. They nest; the outermost is the step
    // and has the text. Nothing can be undone or redone while one is open, and what could be redone
    // is kept until it closes. UndoGroup, below, never forgets to close.

    /// Opens a group, inside the one that is open. An empty text: the menu says "Undo" alone. One
    /// for which there is no memory is open and failed.
    int openGroup(const CString& text);
    /// Closes the group that was opened last. 1 when its edits stand; without edits it leaves no
    /// step.
    ///
    /// An edit that fails rolls its group back: the group takes no further edits, and closing it
    /// gives 0 and makes the group around it fail too, unless it is cancelled instead. What cannot
    /// be rolled back, for an edit refuses to, stays in the step.
    int closeGroup();
    /// Takes back the group that was opened last, and closes it. 0 when an edit could not be taken
    /// back, or there is no group.
    int cancelGroup();
    /// How many groups are open.
    [[nodiscard]] std::size_t groupDepth() const;

    // The clean point.

    /// 1 when the document is as it was at the last setClean() or, before that, at first. When that
    /// step was dropped by a limit or by a new one, 0 until the next setClean().
    [[nodiscard]] int isClean() const;
    /// The document was saved. Keeps all steps.
    int setClean();
    /// The document differs from what is saved, in another way than by edits: changed until the
    /// next setClean().
    int setChanged();

    /// At most so many steps, and so many bytes of Edit::size(), those to be redone included; the
    /// oldest go first, then those that would be redone last. 0 steps: nothing can be undone. The
    /// last step stays even when it alone has more bytes.
    int setLimits(std::size_t steps, std::size_t bytes);
    /// Bytes of all steps.
    [[nodiscard]] std::uint64_t bytes() const;

    /// Forgets all steps; the document and whether it is clean stay. Refused while a group is open.
    int clear();

  private:
    friend class UndoGroup;
    friend class UndoListener;

    enum class Phase { Idle, Editing, Telling, Ending };
    class Operation;

    static constexpr std::uint64_t kUnreachable = static_cast<std::uint64_t>(-1);

    static void tell(UndoListener* listener);
    void keep(Operation& operation, std::list<toolbox::undo::Entry>& made);
    int step(bool back);
    bool move(Operation& operation, bool back);
    void failGroup(Operation& operation);
    bool rollBack(Operation& operation);
    void endLeftGroups();
    [[nodiscard]] static CString nameOf(const toolbox::undo::Entry& entry);

    std::unique_ptr<toolbox::undo::History> history_;
    SetPointer<UndoListener> listeners_;
    Phase phase_ = Phase::Idle;
    std::uint64_t clean_ = 0;  // state that was saved
    unsigned lastGesture_ = 0;
    std::size_t leftGroup_ = 0;  // depth of a group whose scope ended while nothing could change
    toolbox::detail::Watched<> life_;
};

/// A group that ends with its scope, and is cancelled there unless it was closed.
///
///     UndoGroup group(stack, "Delete selection");
///     for (Beam* beam : selection)
///         if (!stack.perform(std::make_unique<DeleteBeam>(*beam))) return 0;
///     return group.close();
class TB_API UndoGroup {
  public:
    /// Opens it, as UndoStack::openGroup() does.
    UndoGroup(UndoStack& stack, const CString& text);
    /// Cancels it, when it is still open. The stack may be gone.
    ~UndoGroup();
    UndoGroup(const UndoGroup&) = delete;
    UndoGroup& operator=(const UndoGroup&) = delete;

    // As those of the stack, with the groups inside that are still open. 0 also when the group was
    // never opened or is closed already.
    int close();
    int cancel();

  private:
    [[nodiscard]] bool isOpen() const;
    int end(int (UndoStack::*endOne)());

    UndoStack& stack_;
    toolbox::detail::Watch<> watch_;
    std::size_t depth_;  // 0: not open
};

/// Undo and redo as two commands of the command manager (toolbox/command_manager.h): enabled when
/// the stack can, and in menus with the text of the step.
///
///     UndoCommands commands(CMD_UNDO, CMD_REDO);    // after the command manager and its commands
///     commands.showIn(frame.getFrameMenu());        // Windows
///     commands.follow(&document.undoStack());       // and when another document becomes active
///     ...
///     if (commands.command(id)) return 1;           // in MDIApplication::command()
///
/// The commands are those of the manager that Tool::getGCOMMBase() names, as long as it has them.
/// Without a stack they are disabled. At its end they stay as they are. Tools that are told may
/// delete it, the stack and the manager.
class TB_API UndoCommands : private UndoListener {
  public:
    /// The numbers of the two commands. Nothing is shown yet.
    UndoCommands(int undoId, int redoId);

    /// Follows a stack instead of the one before; null: none. Shows its state. 0 when there is no
    /// memory, for a stack that is being destroyed, and when this object was deleted meanwhile.
    int follow(UndoStack* stack);
    using UndoListener::stack;
    /// Undoes or redoes when `id` is one of the two. 1 when it is, also when nothing could be done.
    int command(int id);
    /// Shows the state that the stack has now: after commands were managed, menus changed or the
    /// language was chosen. 0 when this object was deleted meanwhile.
    int refresh();

#if defined(_WIN32)
    /// Sets the texts of the menu's items with the two numbers too, also in submenus. What follows
    /// a tab in an item ("\tCtrl+Z") stays; where it underlines a letter, the new text underlines
    /// its first. The menu is borrowed; one that was destroyed is forgotten. `owner` is the window
    /// whose menu bar is drawn again, for items of the bar itself; or null. 0 for a menu that has
    /// no such item, and when there is no memory.
    int showIn(HMENU menu, HWND owner = nullptr);
#endif

  private:
    void undoChanged() override;
    [[nodiscard]] int wanted(int id) const;

    int undoId_;
    int redoId_;
#if defined(_WIN32)
    struct Shown {
        HMENU menu;
        HWND owner;
    };
    int showMenus();
    std::vector<Shown> menus_;
#endif
    toolbox::detail::Watched<> life_;
};
