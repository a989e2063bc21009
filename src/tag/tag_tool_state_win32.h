// The parts of the tool for tags.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tag/tag_dragger_win32.h"
#include "tag/tag_moves.h"
#include "tag/template_text.h"
#include "toolbox/tag_edits.h"
#include "toolbox/tag_tools.h"

/// What it does is spread over files: the mouse, the keys, the commands.
struct TvTagTool::State : TvTagListener {
    State(TvTagTool& owner, HWND shown, TvTagSet& tags, TokenizerUDManager* values);

    // The mouse.
    int mouse(TarvMess& message);
    int press(TarvMess& message);
    int doubleClick(TarvMess& message);
    int follow(TarvMess& message);
    int showCursor(const TarvMess& message);
    int showMenu(TarvMess& message);
    void finish();

    // Keys.
    int key(TarvMess& message);
    int editKey(WPARAM key);
    bool nudge(WPARAM key, bool coarse);
    bool walk(bool back);
    void turnAxis();

    // Commands.
    void run(UINT id);
    void editOne();
    void copy(bool cut);
    void paste();
    void pasteText();
    void change(UINT id);
    void removeSelected(TvTagEdit::Action action);
    void order(bool front);
    void showStates(HMENU menu);
    bool cancelGesture();

    /// The tag, or the handle of the one that is selected, at a pixel.
    struct Hit {
        toolbox::tag::Grip grip = toolbox::tag::Grip::none;
        TvTagId id = 0;
    };
    [[nodiscard]] Hit hit(POINT at);
    [[nodiscard]] TvPoint onPage(POINT at) const;
    [[nodiscard]] TvPoint stepOnPage(POINT from, POINT to) const;
    [[nodiscard]] POINT inWindow(TvPoint point) const;
    [[nodiscard]] RECT inWindow(const toolbox::PlaneRect& box) const;
    /// Half the side of a handle, in pixels.
    [[nodiscard]] int handleSize() const;

    /// Null when it is not shown.
    [[nodiscard]] const TvTagOnPage* shown(TvTagId id);
    /// The tag that is selected alone; null when none is, or several are.
    [[nodiscard]] const TvTagOnPage* alone();
    void makeLayout();
    void tagsChanged() override;
    Edit::Outcome perform(std::unique_ptr<TvTagEdit> edit, unsigned gesture = 0);

    TvTagTool& tool;
    HWND window;
    TvTagKeys usualKeys;  // of the constructor
    bool hasRubberBand = true;

    TransMatrix2D toPage;
    TransMatrix2D toWindow;
    TransMatrix2D fromWindow;
    bool isVisible = true;  // both views have an inverse
    toolbox::tag::PageView view;
    std::shared_ptr<const TvTagLayout> layout;
    std::uint64_t layoutOf = 0;  // the set's changes when it was made

    /// Where changes go; null when the stack has ended.
    struct Stack : UndoListener {
        void undoChanged() override {}
    } stack;
    unsigned nudges = 0;  // the gesture of arrow keys that follow each other
    std::string pasted;   // what was pasted last
    int timesPasted = 0;  // and how often

    toolbox::tag::TagDragger dragger;
    MouseDragger gesture{dragger};
    POINT from{}, to{};
    Hit taken;                     // by the gesture
    bool adds = false;             // the press had Ctrl or Shift
    bool wasSelected = false;      // what is taken was selected before
    std::optional<TvTag> pattern;  // to be placed
    TvTagId edited = 0;            // the tag that edit() is about; 0: a new one
    bool swallowsMenu = false;     // the right button cancelled a gesture

    toolbox::detail::Watched<> life;

  private:
    [[nodiscard]] toolbox::tag::TagDragger::Shape shape();
    void finishRubberBand();
    void finishClick();
    void finishPlacing();
    [[nodiscard]] TvTag dragged(const TvTagOnPage& place) const;
};
