// Draggers: rubber-band feedback while the user picks geometry with the mouse (Windows only).
//
// A Dragger holds the two points of a gesture and draws its shape so that drawing it once more
// removes it: the picture underneath is restored exactly, as long as nobody paints over the shape
// meanwhile. A MouseDragger drives one from the messages of a window:
//     RectDragger rubber(nullptr);
//     MouseDragger mouse(rubber);
//     // in the window procedure, for every message:
//     TarvMess m(window, message, wParam, lParam, 0);
//     switch (mouse.drag(m, start, end)) {
//         case MouseDragger::Dragging: show(start, end); break;
//         case MouseDragger::Finished: take(start, end); break;
//         ...
//
// Points are in pixels of the window's client area. Cursors and device contexts are borrowed; a
// null device context means: nothing is drawn. All calls come from the window's thread.
#pragma once

#if !defined(_WIN32)
#error "toolbox/graphics.h needs windows: it exists on Windows only (toolbox/transform.h does not)"
#endif

#include <cstdint>

#include "toolbox/detail/mouse_button.h"
#include "toolbox/detail/watch.h"
#include "toolbox/export.h"
#include "toolbox/transform.h"
#include "toolbox/win_types.h"
#include "toolbox/window_message.h"

/// The base of all draggers. A derived class draws its shape.
class TB_API Dragger {
  public:
    /// Points at (0, 0), nothing drawn. `ortho`: the dragged point stays on the horizontal or the
    /// vertical through the origin, whichever is nearer. `cursorPosMode`: the mouse cursor then
    /// goes to that point. `cursor` is shown while dragging; null leaves the cursor.
    Dragger(int ortho, HICON cursor, int cursorPosMode);
    Dragger(const Dragger&) = default;
    Dragger& operator=(const Dragger&) = default;
    virtual ~Dragger();

    /// Where the orthogonal mode measures from.
    virtual void setOrthoOrigin(const POINT& origin);
    [[nodiscard]] virtual POINT getOrthoOrigin();
    /// Orthogonal mode on (non-zero) or off, for the next gestures and the rest of this one.
    virtual void setMode(int ortho);
    /// 2 in orthogonal mode, else 0.
    [[nodiscard]] virtual int isModeOrtho();
    /// Cursor-position mode on (non-zero) or off.
    virtual void setCursorPosMode(int on);

    /// Removes the shape where it is drawn.
    virtual void erase(HDC dc);
    /// Starts a gesture at `point`, which becomes the origin too. A shape that is drawn is removed
    /// first. Without a device context both points are `point` and nothing is drawn.
    virtual void anchor(const POINT& point, HDC dc);
    /// Moves the end to `point`, as the mode allows, and redraws; a move that changes nothing draws
    /// nothing. The shape counts as drawn afterwards without a device context too.
    virtual void drag(HDC dc, POINT point);
    /// Non-zero while the shape is drawn.
    [[nodiscard]] virtual int isVisible();
    /// Copies the gesture's two points.
    virtual void getPoints(POINT& start, POINT& end);

    // The cursor that is shown while dragging; null leaves the cursor. Borrowed.
    void setCursor(HICON cursor) { cursor_ = cursor; }
    [[nodiscard]] HICON getCursor() const { return cursor_; }
    /// 4 in cursor-position mode, else 0.
    [[nodiscard]] int getCursorPosMode() const;

  protected:
    /// Moves a dragged point to where the mode allows it.
    virtual void modifyDraggedPoint(POINT& point);
    // Draw the shape between two points, or draw it once more so that it is gone. The device
    // context is null when drag() or erase() was called without one: there is nothing to draw then.
    virtual void drawVisible(HDC dc, const POINT& start, const POINT& end) = 0;
    virtual void drawInvisible(HDC dc, const POINT& start, const POINT& end) = 0;
    /// anchor() without a change of the origin.
    virtual void anchorOnly(const POINT& point, HDC dc);

    // For shapes whose start is set beforehand.
    void presetStart(const POINT& start) { start_ = start; }
    /// Starts a gesture at the preset start: `point` is dragged to. Without a device context the
    /// end is what the mode makes of the start.
    void anchorAtPreset(const POINT& point, HDC dc);

  private:
    void setFlag(std::uint32_t flag, bool on) { flags_ = on ? flags_ | flag : flags_ & ~flag; }

    POINT orthoOrigin_{};
    POINT start_{};
    POINT end_{};
    std::uint32_t flags_;
    HICON cursor_;
};

/// Shows nothing: only the points count.
class TB_API VoidDragger : public Dragger {
  public:
    /// Neither mode.
    explicit VoidDragger(HICON cursor);

  protected:
    // Draw nothing.
    void drawVisible(HDC dc, const POINT& start, const POINT& end) override;
    void drawInvisible(HDC dc, const POINT& start, const POINT& end) override;
};

/// A rectangle between two corners. Never orthogonal.
class TB_API RectDragger : public Dragger {
  public:
    /// Neither mode.
    explicit RectDragger(HICON cursor);
    /// Never orthogonal, whatever the argument.
    void setMode(int ortho) override;
    /// Always 0.
    [[nodiscard]] int getMode() const { return 0; }
    /// Does nothing.
    void setCursorPosMode(int on) override;

  protected:
    // Draws the outline, inverting what is under it.
    void drawVisible(HDC dc, const POINT& start, const POINT& end) override;
    void drawInvisible(HDC dc, const POINT& start, const POINT& end) override;
};

/// A line.
class TB_API VectDragger : public Dragger {
  public:
    /// See Dragger.
    VectDragger(int ortho, HICON cursor, int cursorPosMode);

  protected:
    // Draws the line, inverting what is under it.
    void drawVisible(HDC dc, const POINT& start, const POINT& end) override;
    void drawInvisible(HDC dc, const POINT& start, const POINT& end) override;
};

/// A line from a point that is set beforehand.
class TB_API VectIniDragger : public VectDragger {
  public:
    /// Starts at (0, 0) until setDims().
    VectIniDragger(int ortho, HICON cursor, int cursorPosMode);
    /// The start, also of the orthogonal mode.
    void setDims(const POINT& start);
    void anchor(const POINT& point, HDC dc) override;
};

/// Two sides of a triangle: from a start set beforehand to the end to a third point. The
/// side between the preset points is not drawn.
class TB_API TriangleIniDragger : public VectIniDragger {
  public:
    /// Starts at (0, 0) until setDims().
    TriangleIniDragger(int ortho, HICON cursor, int cursorPosMode);
    /// The point where the gesture starts, and the one that the second side leads to.
    void setDims(const POINT& start, const POINT& third);

  protected:
    // Draws both sides, inverting what is under them.
    void drawVisible(HDC dc, const POINT& start, const POINT& end) override;
    void drawInvisible(HDC dc, const POINT& start, const POINT& end) override;

  private:
    POINT third_{};
};

/// A line of fixed length and direction that follows the mouse.
class TB_API StickDragger : public Dragger {
  public:
    /// A stick without length until setDims().
    StickDragger(int ortho, HICON cursor, int cursorPosMode);
    /// `stick` leads from the dragged point to the line's other end.
    void setDims(const POINT& origin, const POINT& stick);
    void anchor(const POINT& point, HDC dc) override;

  protected:
    // Draws the stick, inverting what is under it.
    void drawVisible(HDC dc, const POINT& start, const POINT& end) override;
    void drawInvisible(HDC dc, const POINT& start, const POINT& end) override;

  private:
    POINT stick_{};
};

/// An ellipse and a line from its center to the dragged point, which is moved onto the ellipse,
/// mirrored about the horizontal through the center. Its distance from the
/// center is rounded to single precision, which decides on which side of a pixel it falls.
class TB_API ThetaDragger : public Dragger {
  public:
    /// An ellipse without size until setDims().
    ThetaDragger(int ortho, HICON cursor);
    /// The ellipse: its center and half its width and height.
    void setDims(const POINT& center, int radiusX, int radiusY);
    void anchor(const POINT& point, HDC dc) override;
    /// Does nothing.
    void setCursorPosMode(int on) override;

  protected:
    void modifyDraggedPoint(POINT& point) override;
    // Draws the ellipse and the line, inverting what is under them.
    void drawVisible(HDC dc, const POINT& start, const POINT& end) override;
    void drawInvisible(HDC dc, const POINT& start, const POINT& end) override;

  private:
    POINT center_{};
    std::int32_t radiusX_ = 0;
    std::int32_t radiusY_ = 0;
};

/// The same with a start that is set beforehand.
class TB_API ThetaIniDragger : public ThetaDragger {
  public:
    /// An ellipse without size until setDims().
    ThetaIniDragger(int ortho, HICON cursor);
    /// The ellipse and the point where the gesture starts.
    void setDims(const POINT& center, int radiusX, int radiusY, const POINT& start);
    void anchor(const POINT& point, HDC dc) override;
};

/// Drives a dragger from the messages of a window, which it is given one by one.
///
/// The gesture starts with a button's going down or double click, follows the mouse while it has
/// the capture, and ends when the button goes up. The other button, or the command Cancel, abandons
/// it, and so does the loss of the capture: WM_CANCELMODE, WM_CAPTURECHANGED, or a move without it.
/// The capture of another window is left alone. The orthogonal mode is decided when the gesture
/// starts and holds for its whole length. Without a window nothing is drawn.
class TB_API MouseDragger {
  public:
    // How far the gesture is, what it begins with, and which button makes it.
    enum State : int { Idle = 0, Dragging = 1, Finished = 2, Cancelled = 3 };
    enum AnchorEvent : int { OnDown = 0, OnDoubleClick = 1 };
    enum Button : int { LeftButton = 0, RightButton = 1 };
    /// Bits.
    enum DragMode : unsigned int {
        NoMode = 0,
        AlwaysOrtho = 1,
        ShiftOrtho = 2,    ///< orthogonal when the Shift key is held at the start
        CursorPosMode = 8  ///< that of the dragger
    };
    /// The messages of the gesture's button.
    using ParametricButton = toolbox::ParametricButton;

    /// Left button, from its going down, ShiftOrtho. The dragger is borrowed.
    explicit MouseDragger(Dragger& dragger);
    MouseDragger(const MouseDragger&) = delete;
    MouseDragger& operator=(const MouseDragger&) = delete;
    virtual ~MouseDragger();

    /// Takes the mode over in any case; a button other than the two leaves event and button alone.
    void setAnchorEvent(AnchorEvent event, Button button, DragMode mode);
    /// What was set last.
    void getAnchorEvent(AnchorEvent& event, Button& button, DragMode& mode) const;

    /// Takes one message and returns the state after it. `start` and `end` are set when the state
    /// becomes or stays Dragging by it and when it becomes Finished; the shape is removed by then.
    /// The points of a finished gesture are those of the last move, not of the message that ended
    /// it. A message that was the gesture's is marked as handled; the Cancel command and the loss
    /// of the capture are not. Finished and Cancelled last until the next message. What it calls,
    /// window procedures and the dragger's drawing, may delete this object: the result is Cancelled
    /// then.
    State drag(TarvMess& message, POINT& start, POINT& end);
    /// The state after the last message.
    [[nodiscard]] State getState() const { return state_; }

    /// Shows the menu of tag objects (the library's resource "M_WTAGOBJECT", in the language of the
    /// message service) at a point of the window, which gets the chosen item as WM_COMMAND with one
    /// of toolbox::TagCommand. 0 when there is no such menu.
    int handlePopupMenu(HWND window, POINT point);

  protected:
    /// Describes a button's messages. 0 for a button other than the two; `out` is untouched then.
    int setParametricButton(Button button, AnchorEvent event, ParametricButton& out);

  private:
    void begin(TarvMess& message, POINT& start, POINT& end);
    void move(TarvMess& message, POINT& start, POINT& end);
    void finish(TarvMess& message, POINT& start, POINT& end);
    void cancel(TarvMess& message);
    void lose(const TarvMess& message);
    void letGo(State state);

    Dragger& dragger_;
    State state_ = Idle;
    DragMode mode_ = ShiftOrtho;
    ParametricButton button_;
    HWND window_ = nullptr;  // borrowed: the gesture's
    bool hasCapture_ = false;
    toolbox::detail::Watched<> life_;
};

namespace toolbox {

/// Commands of the menu of tag objects. The alignment along the text and that across it are set one
/// by one: together there are nine.
enum TagCommand : UINT {
    TagEdit = 12100,
    TagDelete = 12101,
    TagAlignLeft = 12102,
    TagAlignCenter = 12103,
    TagAlignRight = 12104,
    TagNoBorder = 12105,
    TagBorder = 12106,
    TagRoundedBorder = 12107,
    TagUnderline = 12108,
    TagAlignTop = 12109,
    TagAlignMiddle = 12110,
    TagAlignBottom = 12111,
    TagFilled = 12112,
    TagLeader = 12113,
    TagLocked = 12114,
    TagToFront = 12115,
    TagToBack = 12116,
    // Not in the library's menu; an application's may have them.
    TagCut = 12117,
    TagCopy = 12118,
    TagPaste = 12119,
    TagSelectAll = 12120
};

}  // namespace toolbox

/// Both modes.
inline MouseDragger::DragMode operator|(MouseDragger::DragMode a, MouseDragger::DragMode b) {
    return static_cast<MouseDragger::DragMode>(static_cast<unsigned int>(a) |
                                               static_cast<unsigned int>(b));
}
