// The application: the frame with its commands, the open documents, and what they share.
#pragma once

#include <memory>
#include <vector>

#include "document.h"
#include "project_keys.h"
#include "toolbox/command_manager.h"
#include "toolbox/messages.h"
#include "toolbox/recent_files.h"
#include "toolbox/tools.h"
#include "toolbox/windowing.h"

/// What the command line asks for.
struct Settings {
    CString folder;  ///< of the settings, the changed keys and the log; ends without backslash
    CString file;    ///< the profile file in it
};

/// The number of a menu, accelerator table or dialog in the program's language.
[[nodiscard]] inline int inLanguage(int french) {
    return GMSG::language == GMSG::French ? french : french + 1;
}

/// A text of the program, printed with its arguments.
template <class... Args>
[[nodiscard]] CString text(unsigned short id, const Args&... args) {
    RWCString out;
    GMSG::getString(id, out, args...);
    return out;
}

class Workbench : public MDIApplication {
  public:
    Workbench(HINSTANCE instance, const Settings& settings);
    ~Workbench() override;

    [[nodiscard]] HINSTANCE instance() const { return instance_; }
    [[nodiscard]] MDI& frame() const { return *MDIApplication::getPMDI(); }
    [[nodiscard]] ProjectKeys& keys() { return keys_; }
    [[nodiscard]] const Settings& settings() const { return settings_; }

    [[nodiscard]] const std::vector<Section>& sections() const { return sections_; }
    /// Null when the table has none of that designation.
    [[nodiscard]] const Section* section(const CString& designation) const;

    /// The command of the drawing mode in force: CMD_SELECT_MODE...
    [[nodiscard]] int drawingMode() const;
    /// The document of the active window, or null.
    [[nodiscard]] Document* activeDocument() const;

    /// Opens a document for a file and shows it. False, and the user was told, when it was refused.
    bool openFile(const CString& file);
    /// A file was opened or saved under this name.
    void noteRecent(const CString& file);

    /// Reports an error: into the list and the log, and in a box. Returns the user's answer.
    template <class... Args>
    int report(unsigned short textId, unsigned short flags, const Args&... args) {
        GMSG::errorMsg(textId, flags, args...);
        return showLastError(flags);
    }

    /// Opens the format dialog of a key over a window; saves and shows what the user changed.
    void editFormat(HWND parent, UINT key);
    /// The columns or formats of the keys changed: every view shows them.
    void keysChanged();
    /// Enables and checks the commands as the active document allows.
    void refreshCommands();
    /// The line above the documents.
    void showHint(const CString& hint);
    /// A view is gone: documents without views go too, once the message at hand is done.
    void viewClosed();

    // What the frame asks and tells.
    int canClose() override;
    void frameDestroyed() override;
    int frameCreated(HWND frame, HINSTANCE instance) override;
    void classRegistered(HINSTANCE instance) override;
    int command(HWND child, WPARAM wParam, LPARAM lParam) override;
    int privateMessage(HWND child, UINT message, WPARAM wParam, LPARAM lParam) override;
    void systemCommand(HWND frame, WPARAM wParam, LPARAM lParam) override;
    void childActivated(HWND child) override;
    void frameMoved(int reserved) override;
    void childClosed(HWND child) override;

  private:
    int showLastError(unsigned short flags);
    void createCommands(HWND frame);
    void newDocument();
    void openSample();
    void askAndOpen();
    void closeDocument();
    void showLanguage(GMSG::Language language);
    bool documentCommand(Document& document, int id);
    bool viewCommand(int id);
    void restorePlacement(HWND frame);
    void savePlacement(HWND frame);

    HINSTANCE instance_;
    Settings settings_;
    std::vector<Section> sections_;
    ProjectKeys keys_;
    HistoricMenuFile recent_;
    std::unique_ptr<GCOMMBase> commands_;
    std::unique_ptr<MenuTool> menu_;
    std::unique_ptr<ToolDlg> palette_;
    std::vector<std::unique_ptr<Document>> documents_;
};
