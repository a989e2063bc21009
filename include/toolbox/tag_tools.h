// Labels with mouse and keyboard, and their editor (Windows only).
//
//     TvTagTool tool(window, labels, &keys);             // a member of the view's object
//     tool.setUndo(&document.undoStack());               // what changes can be undone
//     // whenever the view scrolls, zooms or has another drawing:
//     tool.setView(drawingToPage, pageToWindow);
//     // in the window procedure, for every message:
//     TarvMess m(window, message, wParam, lParam, 0);
//     if (tool.handle(m)) return m.handled;
//     // when it paints, on the context of BeginPaint():
//     tool.layout()->draw(canvas);
//     tool.paint(dc);                                    // on top
//
// With the left button:
// - A click selects a tag; with Ctrl or Shift it adds one or takes one out; on nothing, it ends the
//   selection. A rectangle drawn from nothing selects what lies in it.
// - A tag is dragged with all others that are selected. One with a leader keeps its anchor, unless
//   it is taken by the leader; one without takes it along. Its anchor is dragged apart from it by
//   the anchor's handle, and its width changes by the handle at its side.
// - Shift keeps the gesture on its axis; Escape, or the right button, cancels it.
// - A double click opens the editor.
// The right button shows the menu of tags (toolbox::TagCommand), which acts on the selection.
//
// The keys: arrows move by a point of the page, with Shift by ten; Tab and Shift+Tab go from tag to
// tag; Enter opens the editor; Delete removes; Escape ends the selection; Ctrl+A, X, C and V are
// select all, cut, copy and paste. A locked tag is not moved, but edited, deleted and unlocked.
//
// Window, set, keys and stack are borrowed. Window, set and stack may end first; then there is
// nothing to do any more, or no undo. Everything that is called may delete the tool, the set and
// the window. Int results are 1 for done or yes and 0 for refused or no.
#pragma once

#include <memory>

#include "toolbox/dialogs.h"
#include "toolbox/export.h"
#include "toolbox/graphics.h"
#include "toolbox/keys.h"
#include "toolbox/strings.h"
#include "toolbox/tag_layout.h"
#include "toolbox/tags.h"
#include "toolbox/transform.h"
#include "toolbox/undo.h"
#include "toolbox/window_message.h"

#if !defined(_WIN32)
#error "toolbox/tag_tools.h needs windows: it exists on Windows only (tag_edits.h does not)"
#endif

/// What the user does with the tags of a window. See the head of this file.
class TB_API TvTagTool {
  public:
    /// Tokens are expanded by `keys`, unless keysOf() says otherwise; null: they stand as they are.
    TvTagTool(HWND window, TvTagSet& tags, TokenizerUDManager* keys);
    virtual ~TvTagTool();
    TvTagTool(const TvTagTool&) = delete;
    TvTagTool& operator=(const TvTagTool&) = delete;

    /// How the drawing lies on the page, in points, and the page in the window, in pixels. Without
    /// inverse there is nothing for the mouse. Another view than before cancels a gesture that is
    /// under way.
    void setView(const TransMatrix2D& toPage, const TransMatrix2D& toWindow);
    /// Where changes go, instead of the stack before; null: they cannot be undone.
    void setUndo(UndoStack* stack);
    /// Null while there is none.
    [[nodiscard]] UndoStack* getUndo() const;
    /// 0: a press on nothing is left to the window, which may have other things there.
    void setRubberBand(int on);

    /// The tags as they lie on the page now; never null. It is made anew when they, the view or the
    /// values changed.
    std::shared_ptr<const TvTagLayout> layout();
    /// The values of keys have changed.
    void refresh();
    /// Draws what shows the selection, and the gesture that is under way, on top of all. The
    /// context's units are pixels of the window; that of WM_PAINT takes the gesture's figure where
    /// it was painted over.
    void paint(HDC dc);

    /// Takes one message of the window. 1 when it was the tool's; `message.handled` is then the
    /// answer. 0 for messages that concern others, be they, like WM_COMMAND of another number, or
    /// WM_CAPTURECHANGED, looked at.
    int handle(TarvMess& message);
    /// A tag like this one is put where the left button is pressed next: its anchor there, its box
    /// where the button is released, or at its own offset after a click. An empty one is edited
    /// first. Escape ends it.
    void place(const TvTag& pattern);
    /// 1 while place() waits for the button.
    [[nodiscard]] int isPlacing() const;
    /// Cancels a gesture, or place(). 0 when there is neither.
    int cancel();

    /// Carries out a command of the menu on the selection: toolbox::TagCommand. 1 when it is one of
    /// them, also when there was nothing to do.
    int command(UINT id);
    /// What a menu shows of it: MF_ENABLED or MF_GRAYED, and MF_CHECKED when all that is selected
    /// has it already.
    [[nodiscard]] UINT state(UINT id);

  protected:
    /// Whose values the tokens of a tag stand for, as TvTagKeys (tag_layout.h); asked when tags are
    /// laid out, copied as text, placed and edited. Those of an edited tag must live as long as its
    /// editor. The default gives the keys of the constructor while they live.
    virtual TokenizerUDManager* keysOf(TvTagId id, const TvTag& tag);
    /// Every change of a tag comes by here. The default gives it to the stack or, without one,
    /// carries it out. Edits with the same gesture other than 0 may be merged.
    virtual Edit::Outcome perform(std::unique_ptr<Edit> edit, unsigned gesture);
    /// Lets the user edit a tag, over the window; the default with TvTagDialog. 1 when it was
    /// changed and shall be kept.
    virtual int edit(TvTag& tag);
    /// The user shall see why something was not done; the default shows a box.
    virtual void report(const CString& why);
    /// The window shall show tags and selection anew; the default invalidates it.
    virtual void changed();
    /// A tag was selected by a key; a window that scrolls may bring it into sight.
    virtual void reveal(const TvTagOnPage& tag);

  private:
    struct State;
    std::unique_ptr<State> state_;
};

/// The editor of one tag. Its text is shown as it is expanded while it is typed, with what is wrong
/// in it; so is everything else that it has. An application may have a template DLG_TAG of its own
/// (tag_dialog.rc), in which any control may lack but the text.
///
///     TvTagDialog editor(tag, &keys);
///     if (editor.run(frame)) tag = editor.getTag();
class TB_API TvTagDialog : public TvDialog {
  public:
    /// For a copy of the tag. `keys` is borrowed; null: tokens stand as they are.
    TvTagDialog(const TvTag& tag, TokenizerUDManager* keys);
    ~TvTagDialog() override;

    /// The tag as it was confirmed; before, as it came.
    [[nodiscard]] const TvTag& getTag() const;

  protected:
    // What the dialog does itself. A derived class that replaces one calls it for what it leaves.
    void opened() override;
    void exchange(TvExchange& fields) override;
    int command(int control, int notification) override;
    int confirmed() override;
    int handleMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override;
    void destroyed() override;

  private:
    struct State;
    std::unique_ptr<State> state_;
};
