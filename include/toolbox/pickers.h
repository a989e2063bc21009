// Choosing files and folders: the system's own dialogs, with what applications need around them
// (Windows only).
//
//     TvFileDialog dialog("project");                     // the purpose: remembers its folder
//     dialog.setFilter(IDS_PROJECT_FILES);                // "Projects|*.tbf|All files|*.*"
//     dialog.setDefaultExtension("tbf");
//     if (dialog.save(frame.getFrame())) project.saveAs(dialog.getFile());
//
// While a dialog is open its owner is disabled, and so are the frame's modeless dialogs and
// accelerators when there is a frame. The current folder of the process is as before afterwards.
// Names may be as long as the system allows; they are given in Windows-1252, and one that it cannot
// write is told to the user, who chooses again.
//
// A dialog that cannot be shown is reported through the message service. An application's test
// answers dialogs by a PickHandler: then no window opens.
//
// Int results are 1 for chosen, 0 for not; getOutcome() tells a dialog that was cancelled from one
// that could not be shown. Names with their folders are whole names, as the system gives them.
#pragma once

#include <memory>
#include <vector>

#include "toolbox/export.h"
#include "toolbox/messages.h"
#include "toolbox/strings.h"
#include "toolbox/win_types.h"

namespace toolbox {

/// How choosing ended.
enum class PickOutcome {
    chosen,     ///< something was chosen
    cancelled,  ///< the user left without choosing; also before the first dialog
    notShown    ///< no dialog could be shown
};

/// One line of the list of file types.
struct FileFilter {
    CString name;                   ///< what the user reads
    std::vector<CString> patterns;  ///< "*.tbf"; at least one
};

/// What a dialog is opened for and with.
struct PickQuestion {
    /// What is asked for.
    enum class Kind { open, openSeveral, save, folder };
    Kind kind = Kind::open;           ///< what is asked for
    CString purpose;                  ///< the dialog's purpose; may be empty
    CString title;                    ///< empty: the system's
    CString folder;                   ///< where it starts; exists, or is empty: the system chooses
    CString file;                     ///< the name that it starts with; without a folder
    CString extension;                ///< added where a name has none, without point; or empty
    std::vector<FileFilter> filters;  ///< may be empty
    int filterIndex = 0;              ///< the filter it starts with, counted from 0
    bool newFolder = true;            ///< of a folder dialog: a folder can be made in it
};

/// What came of it.
struct PickAnswer {
    PickOutcome outcome = PickOutcome::cancelled;  ///< how it ended
    std::vector<CString> names;                    ///< what was chosen, with folders
    CString reason;                                ///< why no dialog could be shown
    int filterIndex = 0;                           ///< the filter chosen, counted from 0
};

/// Answers dialogs instead of the user. A name that it gives is treated like one that was typed:
/// it gets the extension, the folder is remembered. Where the user would be asked again, as for a
/// file to open that is not there, the dialog ends as cancelled.
class TB_API PickHandler {
  public:
    virtual ~PickHandler();
    /// The answer. "Chosen" without a name counts as cancelled.
    virtual PickAnswer answer(const PickQuestion& question) = 0;
    /// Whether a file that is there may be replaced; if not, the dialog ends as cancelled. The
    /// default agrees.
    virtual bool replaces(const CString& file);

    /// Answers every dialog of the process from now on; null: dialogs are shown. Borrowed: it has
    /// to be taken out before it ends. Returns the handler before.
    static PickHandler* install(PickHandler* handler);
    /// Null when dialogs are shown.
    [[nodiscard]] static PickHandler* installed();
};

/// Has a handler installed for as long as it lives.
class [[nodiscard]] PickHandlerScope {
  public:
    /// Installs it.
    explicit PickHandlerScope(PickHandler& handler) : before_(PickHandler::install(&handler)) {}
    ~PickHandlerScope() { PickHandler::install(before_); }
    PickHandlerScope(const PickHandlerScope&) = delete;
    PickHandlerScope& operator=(const PickHandlerScope&) = delete;

  private:
    PickHandler* before_;
};

}  // namespace toolbox

#if defined(_WIN32)

/// Asks for files to open, or for the name to save a file under. One object may ask any number of
/// times; what is set stays, and each answer is what the next dialog starts with. A dialog of an
/// object that has one open is not shown. The object may be deleted while its dialog is open.
class TB_API TvFileDialog {
  public:
    /// `purpose` names the setting that remembers the folder ("project", "import"...), in the
    /// section "Folders" of GMSG's settings; empty: nothing is remembered.
    explicit TvFileDialog(const CString& purpose = CString());
    ~TvFileDialog();
    TvFileDialog(const TvFileDialog&) = delete;
    TvFileDialog& operator=(const TvFileDialog&) = delete;

    /// The caption; empty, as at first: the system's.
    void setTitle(const CString& title);
    /// The file types: names and patterns in turn, with bars between them, several patterns of a
    /// type with semicolons: "Drawings|*.dwg;*.dxf|All files|*.*". Bars at the end are ignored. 0
    /// for a text without types, with a name that has no pattern, or with an empty part: the types
    /// stay, and the trace tells, with every category.
    int setFilter(const CString& filter);
    int setFilter(const char* filter) { return setFilter(CString(filter)); }
    /// The text of a resource, in the program's language.
    template <toolbox::ResourceId Id>
    int setFilter(Id text) {
        return setFilterText(static_cast<unsigned short>(text));
    }
    /// The type that the dialog starts with, counted from 0. One that is not there counts as 0.
    void setFilterIndex(int index);
    /// The type that was chosen last, counted from 0.
    [[nodiscard]] int getFilterIndex() const;
    /// Without its point; empty for none, as at first. When saving, a name that does not match one
    /// of the types gets the extension of the type chosen, or this one where that has none of its
    /// own. When opening it is tried where the name is no file's.
    void setDefaultExtension(const CString& extension);
    /// The name to start with. With a folder it decides where the dialog starts, too.
    void setFile(const CString& name);
    /// Where the dialog starts while the purpose has nothing remembered. Of a folder that is gone,
    /// remembered or not, the nearest one above it that is there.
    void setFolder(const CString& folder);

    // Each shows the dialog; 1 when something was chosen. A null owner is the frame's window, or
    // the active one where there is no frame.

    /// One file that exists.
    int open(HWND owner);
    /// Files that exist, of one folder unless the user typed others.
    int openSeveral(HWND owner);
    /// A name to save under. Asks before a file is replaced.
    int save(HWND owner);

    /// Of the dialog that ended last.
    [[nodiscard]] toolbox::PickOutcome getOutcome() const;
    /// Why it could not be shown, in the program's language; else empty.
    [[nodiscard]] CString getReason() const;
    /// The name chosen, with its folder; of several the first. What setFile() gave while nothing
    /// was chosen.
    [[nodiscard]] CString getFile() const;
    /// All names chosen, with their folder; empty while nothing was.
    [[nodiscard]] std::vector<CString> getFiles() const;

  private:
    struct State;
    int setFilterText(unsigned short id);

    std::shared_ptr<State> state_;  ///< never null; shared for a call only
};

/// Asks for a folder. As TvFileDialog in all that both have.
class TB_API TvFolderDialog {
  public:
    /// As TvFileDialog's; folders of files and folders chosen share the purposes.
    explicit TvFolderDialog(const CString& purpose = CString());
    ~TvFolderDialog();
    TvFolderDialog(const TvFolderDialog&) = delete;
    TvFolderDialog& operator=(const TvFolderDialog&) = delete;

    /// The line above the folders; empty for none.
    void setTitle(const CString& title);
    /// Where it starts; without one, where the purpose was the last time.
    void setFolder(const CString& folder);
    /// 0: no folder can be made in the dialog.
    void setNewFolder(int allowed);

    /// Shows the dialog; 1 when a folder was chosen.
    int run(HWND owner);

    /// Of the dialog that ended last.
    [[nodiscard]] toolbox::PickOutcome getOutcome() const;
    /// Why it could not be shown, in the program's language; else empty.
    [[nodiscard]] CString getReason() const;
    /// The folder chosen, without a separator at its end but for a root; else what setFolder()
    /// gave.
    [[nodiscard]] CString getFolder() const;

  private:
    struct State;
    std::shared_ptr<State> state_;  ///< never null; shared for a call only
};

#endif
