// The frame of a multiple-document application and objects bound to windows (Windows only).
//
// MDI is the application's one frame: its window, the client window that holds the documents, the
// message loop, accelerators, menus and the standard window commands. The application plugs in
// through an MDIApplication, or replaces MDI's virtual operations in a frame class of its own.
// WindowObject binds an object to a window; MDIWindowObject does so for a document.
//
//     Application application;                       // derives from MDIApplication
//     MDI frame(instance, nullptr, {.title = "Bridges", .menuId = 10}, &application);
//     if (!frame.initMainWindow(SW_SHOW)) return 1;
//     return frame.run(SW_SHOW);
//
// Everything belongs to the user-interface thread. Int results are 1 for done or yes, 0 for refused
// or no. Handles are borrowed unless said otherwise.
#pragma once

#include <cstdint>
#include <memory>

#include "toolbox/export.h"
#include "toolbox/win_types.h"
#include "toolbox/window_message.h"

#if !defined(_WIN32)
#error "toolbox/windowing.h needs windows: it exists on Windows only"
#endif

class MDI;
class UDManager;

/// What the frame asks and tells the application. It must outlive the frame's window or
/// frameDestroyed(). Each operation may close documents and dialogs, destroy the frame's window and
/// delete the frame object, which then leaves the message to the system.
class TB_API MDIApplication {
  public:
    virtual ~MDIApplication();

    /// Asked when the user closes the frame, before the documents are. The frame closes on exactly
    /// 1; the default is 1.
    virtual int canClose();
    /// The frame's window is being destroyed, or the session ends. Called once, also when it
    /// destroys the window itself; the frame knows no application afterwards.
    virtual void frameDestroyed() = 0;
    /// Asked by initMainWindow() when the frame stands and is shown; 0 refuses it.
    virtual int frameCreated(HWND frame, HINSTANCE instance) = 0;
    /// The frame's class was registered: the moment to register those of documents.
    virtual void classRegistered(HINSTANCE instance) = 0;
    /// A command that is not the frame's own; non-zero when it was handled. `child` is the active
    /// document, or null. A command that was not handled goes to that document.
    virtual int command(HWND child, WPARAM wParam, LPARAM lParam) = 0;
    /// One of the messages 0x3E0 to 0x3E8; non-zero when it was handled. One that was not goes to
    /// the active document.
    virtual int privateMessage(HWND child, UINT message, WPARAM wParam, LPARAM lParam) = 0;
    /// A system command of the frame: before it takes effect for SC_MINIMIZE, after it for others.
    virtual void systemCommand(HWND frame, WPARAM wParam, LPARAM lParam) = 0;
    /// For the application's documents, which say here that one of them became the active one. The
    /// frame does not call it.
    virtual void childActivated(HWND child) = 0;
    /// The frame moved. The argument is always 0.
    virtual void frameMoved(int reserved) = 0;
    /// For the application's documents, which say here that one of them is being closed. The frame
    /// does not call it.
    virtual void childClosed(HWND child) = 0;

    /// The process's one frame; each MDI sets itself here and its destructor takes it out.
    static void setPMDI(MDI* frame);
    [[nodiscard]] static MDI* getPMDI();
};

/// The frame.
class TB_API MDI {
  public:
    /// How a frame is made: ten words, copied by the constructor together with the title's text.
    struct ConstructInfo {
        const char* title = "";               ///< of the frame's window; null counts as empty
        std::uint32_t registerClass = 1;      ///< non-zero: initMainWindow() registers the class
        std::uint32_t menuId = 0;             ///< resource of the frame's menu; 0: none
        std::uint32_t acceleratorId = 0;      ///< resource of its accelerators; 0: none
        std::uint32_t iconId = 0;             ///< resource of its icon; 0: none
        std::uint32_t windowMenuItemId = 0;   ///< a command in the menu that lists the documents
        std::uint32_t firstChildId = 0xD000;  ///< commands from here on are entries of that list
        std::uint32_t own[3] = {};            ///< the application's own; kept, never looked at
    };

    /// Loads menu, accelerators and icon from module `instance` and becomes the process's frame;
    /// there is no window yet. `other` is the handle of an earlier instance of the program. A null
    /// application agrees to everything.
    MDI(void* instance, void* other, const ConstructInfo& info, MDIApplication* application);
    /// The frame's window must already be destroyed: what it receives later gets the system's
    /// default processing. Frees the frame's menu unless that is the current one, which the window
    /// owns.
    virtual ~MDI();
    MDI(const MDI&) = delete;
    MDI& operator=(const MDI&) = delete;

    /// Creates and shows the frame's window, which creates the client window. 0 when it could not
    /// be created, exists already, its object was deleted meanwhile, or it was refused by the
    /// application's frameCreated(): the user is then told string 2 of the frame's module (at most
    /// 80 characters), and the window destroyed, which posts the quit message as always.
    int initMainWindow(int showCommand);

    /// The message loop, until the quit message; returns that one's word parameter. It asks in this
    /// order: the documents' system accelerators, the current accelerators, the registered modeless
    /// dialogs; none of them when the frame object was deleted meanwhile. The argument is not used:
    /// the frame is shown already.
    int run(int showCommand);

    // Accelerators. Freezing does not nest: one thaw ends it.

    // Switch accelerators off and on again.
    void freezeAccelerator();
    void thawAccelerator();
    [[nodiscard]] int isAcceleratorFrozen() const;
    /// 1 when the message was an accelerator's and has become its command; 0 while frozen, and for
    /// a key that the window it goes to, or one that this is a child of, keeps for itself: a dialog
    /// with a field keeps those that edit its text.
    int translateAccelerator(HWND window, HACCEL table, MSG* message);
    /// The message by which windows are asked whether they keep a key; lParam points to its MSG.
    /// One that answers other than 0 does.
    [[nodiscard]] static UINT getKeyQuestion();
    /// Makes a table the current one, null for none. Always 1.
    int setMDIAccel(HACCEL table);

    // Modeless dialogs that get their keyboard messages from run().

    /// 0 for null or a window that is registered already.
    int registerModeless(HWND dialog);
    /// 0 for null or a window that is not registered.
    int unregisterModeless(HWND dialog);
    /// 0 switches the registered dialogs off, which disables them; as many calls with 1 as with 0
    /// switch them on again. Those that were disabled before stay so.
    void setModelessDispatch(int on);
    [[nodiscard]] int getModelessDispatch() const;

    // Documents: children of the client window.

    /// What createMDIChild() takes for the system's default position or size.
    static constexpr short kDefaultPlace = -32768;
    /// Returns the child, null when it was not created. The class belongs to the frame's module.
    HWND createMDIChild(const char* className, const char* title, unsigned long style, short x,
                        short y, short cx, short cy, LPARAM param);
    /// Destroys a child without asking it.
    void destroyMDIChild(HWND child);
    /// Null when there is none.
    [[nodiscard]] HWND getActiveMDIChild() const;
    /// A child's object is gone: its window is no registered dialog any more.
    void notifyMDIChildDestruction(HWND child);
    /// Arranges the children of a client window that are not minimized in rows of equal height, at
    /// least five captions high; later rows hold one more where they do not come out even. A
    /// maximized active child is restored first. Room for the icons stays at the bottom.
    static void tileVertically(HWND client);

    // Menus.

    /// Makes a menu the current one, with the list of documents in its last submenu that holds the
    /// command. Null: the frame's own menu, with its own accelerators and window menu. The menu
    /// replaced stays the caller's. Always 1.
    int setMDIMenu(HMENU menu, unsigned short windowMenuItemId);
    // The current menu, and the frame's own, which may be null. Borrowed.
    [[nodiscard]] HMENU getCurrentMenu() const;
    [[nodiscard]] HMENU getFrameMenu() const;

    /// Keeps room for a strip at the frame's bottom, below the client window, for as long as it is
    /// visible; its height is the strip's own. A child of the frame, borrowed: it is forgotten when
    /// it is destroyed. Null for none; the one before stays where it is.
    void setStatusBar(HWND strip);
    [[nodiscard]] HWND getStatusBar() const;

    /// Null before the window is created and after it is destroyed, as the client is.
    [[nodiscard]] HWND getFrame() const;
    /// The client window, which holds the documents.
    [[nodiscard]] HWND getClient() const;
    /// The module of the frame.
    [[nodiscard]] HINSTANCE getInstance() const;
    /// The copy; its title lives as long as the frame.
    [[nodiscard]] const ConstructInfo& getConstructInfo() const;
    /// 1 when the program was started without an earlier instance.
    [[nodiscard]] int isFirstInstance() const;

    /// The key manager that the application works with now. Borrowed, one for the process.
    static void setActiveUDM(UDManager* manager);
    [[nodiscard]] static UDManager* getActiveUDM();

    /// The window procedure of frame windows: hands every message to frameWndProc() of the
    /// process's frame.
    static LRESULT CALLBACK WinFrameWndProc(HWND window, UINT message, WPARAM wParam,
                                            LPARAM lParam);

  protected:
    /// Registers the class that getClassFrame() names. Returns its atom, 0 on failure.
    virtual unsigned short registerFrameClass();
    /// The commands of the window menu, and of the keys that stand for them: 1 closes the frame, 6
    /// the document, 7 and 10 tile vertically and horizontally, 8 cascades, 9 arranges the icons;
    /// the document's system commands stand for themselves. 0 when the command is another. A
    /// document is asked with WM_QUERYENDSESSION before it is closed, not with WM_CLOSE:
    /// it refuses by answering 0. SC_NEXTWINDOW and SC_PREVWINDOW show a minimized
    /// neighbour and do not raise one that is shown.
    ///
    /// Commands from firstChildId on do not come here, so a document's system commands do only in a
    /// frame that sets it above them, to 0xF161 or more. Otherwise the system hands them to the
    /// document while that is maximized, and SC_CLOSE, the close button in the menu bar, is a
    /// WM_CLOSE to it.
    virtual int doFrameCommand(HWND child, UINT id, LPARAM lParam);
    /// Creates the pane above the client window, which the frame keeps room for while it is
    /// visible. Called when the client stands; the default has none and returns null.
    virtual HWND createFramePane();
    /// Every message of the frame's window. Frame classes that replace it pass on what they leave.
    /// WM_QUERYENDSESSION asks the documents. None of them hears WM_ENDSESSION when the
    /// session ends; those that agreed hear it, with 0, when a later one refused.
    virtual LRESULT frameWndProc(TarvMess& message);
    /// "MDIFrame".
    virtual const char* getClassFrame() const;

    /// Null when there is none, or it was told that the frame is destroyed.
    [[nodiscard]] MDIApplication* getApplication() const;

  private:
    struct State;

    int dispatchModeless(MSG& message);
    void closeChild(HWND child, UINT id);
    int queryChildren(WPARAM wParam);
    LRESULT defaultProcessing(const TarvMess& message);
    LRESULT moved(const TarvMess& message);
    LRESULT created(const TarvMess& message);
    LRESULT resized(const TarvMess& message);
    void layOut(HWND frame);
    LRESULT childEnded(const TarvMess& message);
    LRESULT closing(const TarvMess& message);
    LRESULT commanded(const TarvMess& message, HWND child);
    LRESULT systemCommanded(const TarvMess& message);
    LRESULT privateMessage(const TarvMess& message, HWND child);
    void applicationActivated(const TarvMess& message);
    void leaveApplication();
    void refuseFrame();

    std::unique_ptr<State> state_;
};

/// An object bound to a window of its own. It is made with new, create() gives it its window, and
/// it is deleted with that window: it lives as long as the window does. Deleting it earlier leaves
/// the window to the system's default processing. The window's class has StdWinProc for procedure.
class TB_API WindowObject {
  public:
    WindowObject() = default;
    virtual ~WindowObject();
    WindowObject(const WindowObject&) = delete;
    WindowObject& operator=(const WindowObject&) = delete;

    /// Creates the window; its class belongs to getLibraryInstance(). 0 when there is none, or no
    /// WindowDict. An object whose window refused itself (answering WM_NCCREATE or
    /// WM_CREATE so) is deleted by then, as at any end of its window; one that never had a window
    /// is still the caller's.
    int create(const char* className, const char* title, unsigned long style, int x, int y, int cx,
               int cy, HWND parent, HMENU menu, void* param);
    /// Null before the window receives its first message.
    [[nodiscard]] HWND getHWND() const { return window_; }

    /// The module of this library.
    [[nodiscard]] static HINSTANCE getLibraryInstance();
    /// The window procedure of window objects.
    static LRESULT CALLBACK StdWinProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

  protected:
    /// Every message of the window; what is returned is its result. It may destroy the window, and
    /// with it the object, as its last act. The default leaves messages to the system.
    virtual LRESULT handleMessage(UINT message, WPARAM wParam, LPARAM lParam);

    /// As create(), with an extended style. For classes that have a create() of their own.
    int createWindow(unsigned long extendedStyle, const char* className, const char* title,
                     unsigned long style, int x, int y, int cx, int cy, HWND parent, HMENU menu,
                     void* param);

  private:
    HWND window_ = nullptr;
};

/// A window object with an extended style.
class TB_API WindowObjectEx : public WindowObject {
  public:
    /// As WindowObject::create().
    int create(unsigned long extendedStyle, const char* className, const char* title,
               unsigned long style, int x, int y, int cx, int cy, HWND parent, HMENU menu,
               void* param);
};

/// A document: a window object in the client window of the process's frame. The frame and its
/// commands ask it by WM_QUERYENDSESSION whether it may be closed, and it refuses by answering 0.
/// Its close button, its system menu and Ctrl+F4 send it WM_CLOSE: a document that has something to
/// save answers both, and WM_CLOSE by passing it on or not.
class TB_API MDIWindowObject : public WindowObject {
  public:
    ~MDIWindowObject() override;

    /// As WindowObject::create(), by MDI::createMDIChild(): the class belongs to the frame's
    /// module. 0 also without frame.
    int create(const char* className, const char* title, unsigned long style, short x, short y,
               short cx, short cy, LPARAM param);
    /// Destroys the window without asking, and with it this object.
    void destroy();

  protected:
    LRESULT handleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
};

/// Which object belongs to which window, for the whole process. The application creates the
/// dictionary before the first window object and destroys it after the last; objects of windows
/// that still live then are not deleted any more.
class TB_API WindowDict {
  public:
    // Create and destroy the dictionary. One that was there before is replaced by an empty one.
    static void initStaticVars();
    static void destroyStaticVars();

    /// The object of a window; null when it has none.
    [[nodiscard]] static WindowObject* find(HWND window);
    /// The handle's own value.
    [[nodiscard]] static unsigned int hashHWND(HWND window);
};

namespace toolbox {

/// Freezes the accelerators of a frame for as long as it lives. Inside another freeze it changes
/// nothing, at its end neither.
class [[nodiscard]] AcceleratorFreeze {
  public:
    /// Freezes them.
    explicit AcceleratorFreeze(MDI& frame) : frame_(frame), was_(frame.isAcceleratorFrozen()) {
        frame_.freezeAccelerator();
    }
    ~AcceleratorFreeze() {
        if (!was_) frame_.thawAccelerator();
    }
    AcceleratorFreeze(const AcceleratorFreeze&) = delete;
    AcceleratorFreeze& operator=(const AcceleratorFreeze&) = delete;

  private:
    MDI& frame_;
    int was_;
};

/// Switches the registered modeless dialogs of a frame off for as long as it lives.
class [[nodiscard]] ModelessOff {
  public:
    /// Switches them off.
    explicit ModelessOff(MDI& frame) : frame_(frame) { frame_.setModelessDispatch(0); }
    ~ModelessOff() { frame_.setModelessDispatch(1); }
    ModelessOff(const ModelessOff&) = delete;
    ModelessOff& operator=(const ModelessOff&) = delete;

  private:
    MDI& frame_;
};

}  // namespace toolbox
