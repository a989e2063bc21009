// The application: the frame with its commands, the open documents, and what they share.
#pragma once

#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "project/document.h"
#include "project/project_keys.h"
#include "resources/workbench_texts.h"
#include "settings/settings.h"
#include "toolbox/command_manager.h"
#include "toolbox/dialogs.h"
#include "toolbox/messages.h"
#include "toolbox/meter.h"
#include "toolbox/recent_files.h"
#include "toolbox/tools.h"
#include "toolbox/undo.h"
#include "toolbox/windowing.h"

/// The number of a menu in the program's language.
[[nodiscard]] inline int inLanguage(int french) {
    return GMSG::language == GMSG::French ? french : french + 1;
}

class Workbench : public MDIApplication {
  public:
    Workbench(HINSTANCE instance, const Settings& settings);
    ~Workbench() override;

    [[nodiscard]] HINSTANCE instance() const { return instance_; }
    [[nodiscard]] static MDI& frame() { return *MDIApplication::getPMDI(); }
    [[nodiscard]] ProjectKeys& keys() { return keys_; }
    [[nodiscard]] const Settings& settings() const { return settings_; }

    [[nodiscard]] const std::vector<Section>& sections() const { return sections_; }
    /// Null when the table has none of that designation.
    [[nodiscard]] const Section* section(const CString& designation) const;

    /// The command of the current drawing mode: CMD_SELECT_MODE...
    [[nodiscard]] int drawingMode() const;
    /// The document of the active window, or null.
    [[nodiscard]] Document* activeDocument() const;

    /// The document of a file, given by its full name; null when it is not open.
    [[nodiscard]] Document* documentOf(const CString& fullName) const;
    /// Opens a document for a file and shows it. False, and the user was told, when it was refused.
    bool openFile(const CString& file);
    /// Offers what a program that ended badly has left unsaved.
    void offerRecovery();
    /// Nothing else is to be done: documents keep the state of unsaved work.
    void idle();
    /// The program or a window of it was activated: what others did to the document's file is told,
    /// once the current message is done.
    void lookAtDisk();
    /// A file was opened or saved under this name.
    void noteRecent(const CString& file);

    /// Reports an error: into the list and the log, and in a box. Returns the user's answer.
    template <class... Args>
    int report(unsigned short textId, unsigned short flags, const Args&... args) {
        const int answer = GMSG::errorMsg(textId, flags, args...);
        return dialogs_ > 0 ? answer : showBox(GMSG::getLastErrorMsg(), flags);
    }
    /// A message box over the frame. Returns the user's answer.
    int showBox(const CString& message, unsigned short flags);

    /// Takes the errors out of the message service's list, which a change of its reporting option
    /// would empty.
    void collectErrors();

    /// Opens the format dialog of a key over a window; saves and shows what the user changed.
    void editFormat(HWND parent, UINT key);
    /// The columns or formats of the keys changed: every view shows them.
    void keysChanged();
    /// Enables and checks the commands as the active document allows.
    void refreshCommands();
    /// What the status bar says.
    void showHint(const CString& hint);
    /// The session was to end and goes on: the user is asked again about what is not saved.
    void sessionGoesOn();
    /// A dialog, a box or a meter is up: its callers need the documents and their windows.
    [[nodiscard]] bool isModal() const { return modalPhases_ > 0; }
    /// The meter that is up, null for none; it is cancelled when the frame is to close. Returns the
    /// one before.
    TarvMeter* showsMeter(TarvMeter* meter) { return std::exchange(meter_, meter); }
    /// A view is gone: documents without views go too, once the current message is done and no
    /// modal phase is left, whose callers may still work on them.
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
    friend class ModalPhase;
    friend class DialogPhase;

    void createCommands(HWND frame);
    bool documentCommand(Document& document, int id);
    bool programCommand(int id);
    void showDocument(std::unique_ptr<Document> document);
    void showPalette();
    [[nodiscard]] int isPaletteVisible() const;
    void openSample();
    void closeDocument(Document& document);
    void editSelected(Document& document);
    void reviewErrors();
    void openLog();
    void setLanguage(GMSG::Language language);

    HINSTANCE instance_;
    Settings settings_;
    std::vector<Section> sections_;
    ProjectKeys keys_;
    HistoricMenuFile recent_;
    std::unique_ptr<GCOMMBase> commands_;
    std::unique_ptr<MenuTool> menu_;
    UndoCommands undo_;
    CToolDialog palette_;
    TvWindowPlace palettePlace_{"Palette"};
    TvWindowPlace framePlace_{"Frame"};
    int paletteWanted_ = 1;
    std::vector<std::unique_ptr<Document>> documents_;
    CString errors_;  // collected from the message service
    int modalPhases_ = 0;
    int dialogs_ = 0;  // dialog phases among them
    TarvMeter* meter_ = nullptr;
};

/// While it lives the program takes no input but that of the modal dialog or meter on top: other
/// dialogs are disabled, accelerators frozen, and nothing closes.
class [[nodiscard]] ModalPhase {
  public:
    explicit ModalPhase(Workbench& workbench)
        : workbench_(workbench), accelerators_(workbench.frame()), dialogs_(workbench.frame()) {
        ++workbench_.modalPhases_;
        if (workbench_.commands_) tools_.emplace(*workbench_.commands_);
    }
    ~ModalPhase() {
        if (--workbench_.modalPhases_ == 0) workbench_.viewClosed();
    }
    ModalPhase(const ModalPhase&) = delete;
    ModalPhase& operator=(const ModalPhase&) = delete;

  private:
    Workbench& workbench_;
    toolbox::AcceleratorFreeze accelerators_;
    toolbox::ModelessOff dialogs_;
    std::optional<toolbox::FrozenTools> tools_;  // none before the frame is created and after
};

/// A modal phase of a dialog: what the message service reports meanwhile, a number beyond its
/// limits say, is shown in boxes over it rather than kept in the list of errors.
class [[nodiscard]] DialogPhase {
  public:
    explicit DialogPhase(Workbench& workbench) : workbench_(workbench), phase_(workbench) {
        if (workbench_.dialogs_++ > 0) return;
        workbench_.collectErrors();
        GMSG::setErrorReportingOption(GMSG::ReportInBox);
    }
    ~DialogPhase() {
        GMSG::setParent(parent_);
        if (--workbench_.dialogs_ == 0) GMSG::setErrorReportingOption(GMSG::ReportInList);
    }
    DialogPhase(const DialogPhase&) = delete;
    DialogPhase& operator=(const DialogPhase&) = delete;

  private:
    Workbench& workbench_;
    ModalPhase phase_;
    HWND parent_ = GMSG::getParent();  // dialogs take its place
};
