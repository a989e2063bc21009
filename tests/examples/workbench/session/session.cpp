// Drives the workbench from outside:
//
//     workbench_session WORKBENCH FOLDER
//
// The session is what a user does on a first day and on the next morning, chapter by chapter; each
// leaves the program where the next one begins. The mouse draws and the keyboard fills fields;
// commands are sent as the menu sends them. Details are tested inside the program.
//
// Everything that is written goes to FOLDER, which is made anew. Prints what it did, a line each;
// ends with 0. When something is not as it should be it says what, leaves a picture of the screen
// and ends with 1. Takes the mouse and the keyboard while it runs.
#include <iostream>
#include <memory>

#include "document_dialogs.h"
#include "hand.h"
#include "resources/resource.h"
#include "support/window_kit.h"
#include "tag_dialog.h"

namespace session {
namespace {

using toolbox::testing::pressKey;

constexpr const char* kFileName = "journ\u00e9e.tbf";
constexpr const char* kDrawingName = "journ\u00e9e.svg";

// Where the mouse goes in the drawing: parts of its width and height, and pixels above the beam.
constexpr double kLeft = 0.2, kRight = 0.6, kHeight = 0.45, kLabelX = 0.2, kLabelY = 0.85;
constexpr LONG kForceDrag = 70, kUniformDrag = 30;

void say(const std::string& line) {
    std::cout << line << std::endl;
}

bool isThere(const std::string& pattern) {
    WIN32_FIND_DATAW found;
    const HANDLE search = FindFirstFileW(wide(pattern).c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return false;
    bool isFile = false;
    do isFile = isFile || !(found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY);
    while (FindNextFileW(search, &found));
    FindClose(search);
    return isFile;
}

class Session {
  public:
    /// The workbench's program, and the folder for everything that is written: full names.
    Session(std::string program, std::string folder)
        : program_(std::move(program)), folder_(std::move(folder)) {}

    /// Throws Failure when something is not as it should be.
    void run() {
        // The state of unsaved work is kept after a second.
        CreateDirectoryW(wide(folder_ + "\\settings").c_str(), nullptr);
        WritePrivateProfileStringW(L"Autosave", L"Seconds", L"1",
                                   wide(folder_ + "\\settings\\workbench.ini").c_str());
        start("", "Ouvrez un projet");
        newProject();
        drawBeam();
        addLoads();
        addLabel();
        saveAs();
        restartInEnglish();
        openTwice();
        beKilledAndRecover();
        quit();
    }

  private:
    void command(int id) const { PostMessageW(frame_, WM_COMMAND, static_cast<WPARAM>(id), 0); }
    /// Enters a drawing mode, in which the line above the documents begins so.
    void enterMode(int id, const std::string& beginning) const {
        command(id);
        waitForHint(beginning);
    }
    void waitForHint(const std::string& beginning) const {
        waitFor("the hint \"" + beginning + "...\"", [&] {
            return textOf(FindWindowExW(frame_, nullptr, L"msctls_statusbar32", nullptr))
                .starts_with(beginning);
        });
    }
    /// The window of a document, by its title.
    [[nodiscard]] HWND waitForDocument(const std::string& title) const {
        return waitFor("the window \"" + title + '"', [&]() -> HWND {
            for (const HWND child : childrenOf(frame_))
                if (isShown(child) && textOf(child) == title) return child;
            return nullptr;
        });
    }
    /// Opens a dialog.
    [[nodiscard]] HWND dialogOf(int id, const std::string& what) const {
        command(id);
        return workbench_->waitForDialog(what);
    }
    void answer(HWND dialog, int button) const {
        const std::string title = textOf(dialog);
        click(middleOf(areaOf(control(dialog, button))));
        workbench_->waitUntilGone("\"" + title + '"', dialog);
    }
    /// A place in the drawing, as parts of its width and height.
    [[nodiscard]] POINT inDrawing(double x, double y) const {
        const RECT area = clientOf(drawing_);
        return {area.left + static_cast<LONG>(x * (area.right - area.left)),
                area.top + static_cast<LONG>(y * (area.bottom - area.top))};
    }
    void takePicture(const std::string& name, HWND window) const {
        savePicture(window, folder_ + "\\" + name + ".ppm");
    }

    void start(const std::string& more, const std::string& hint) {
        workbench_ = std::make_unique<Program>('"' + program_ + "\" --settings \"" + folder_ +
                                               "\\settings\"" + more);
        frame_ = waitFor("the frame", [&] { return workbench_->find("MDIFrame"); });
        waitForHint(hint);
        say("started the workbench: \"" + textOf(frame_) + '"');
    }

    void quit() {
        PostMessageW(frame_, WM_CLOSE, 0, 0);
        if (const DWORD code = workbench_->exitCode())
            throw Failure("the workbench has ended with " + std::to_string(code));
        say("ended the workbench");
    }

    void newProject() {
        command(CMD_NEW);
        const HWND table = waitForDocument("Projet 1 - r\u00e9sultats");
        drawing_ = waitForDocument("Projet 1 - dessin");
        command(CMD_DRAWING);
        command(CMD_TILE_HORIZONTALLY);
        waitFor("the windows one over the other", [&] {
            const RECT results = areaOf(table), drawing = areaOf(drawing_);
            return results.left == drawing.left && drawing.bottom <= results.top;
        });
        say("began a project and put its windows one over the other");
    }

    void drawBeam() {
        enterMode(CMD_BEAM_MODE, "Poutre");
        leftEnd_ = inDrawing(kLeft, kHeight);
        rightEnd_ = inDrawing(kRight, kHeight);
        drag(leftEnd_, rightEnd_);
        (void)waitForDocument("Projet 1* - dessin");
        command(CMD_UNDO);
        (void)waitForDocument("Projet 1 - dessin");
        command(CMD_REDO);
        (void)waitForDocument("Projet 1* - dessin");
        say("drew a beam, took it back and again");
    }

    void addLoads() {
        enterMode(CMD_POINT_LOAD_MODE, "Charge ponctuelle");
        const POINT middle = middleOf({leftEnd_.x, leftEnd_.y, rightEnd_.x, rightEnd_.y});
        drag(middle, {middle.x, middle.y - kForceDrag});
        enterMode(CMD_UNIFORM_LOAD_MODE, "Charge uniforme");
        drag({leftEnd_.x, leftEnd_.y - kUniformDrag}, {rightEnd_.x, rightEnd_.y + 2});
        say("put a point load and a uniform load on it");
    }

    void addLabel() {
        enterMode(CMD_LABEL_MODE, "\u00c9tiquette");
        click(inDrawing(kLabelX, kLabelY));
        const HWND dialog = workbench_->waitForDialog("the label's dialog");
        enter(dialog, IDC_TAG_TEXT, "$NAME$ : fl\u00e8che $F$ mm");
        const HWND preview = control(dialog, IDC_TAG_SAMPLE);
        waitFor("the name and the deflection in the sample", [&] {
            const std::string shown = textOf(preview);
            return shown.starts_with("P1 : fl\u00e8che ") && shown.find('$') == std::string::npos;
        });
        takePicture("label", dialog);
        say("wrote a label, which reads " + textOf(preview));
        answer(dialog, IDOK);
        takePicture("workbench", frame_);
    }

    /// Gives a file its name.
    void save(int id, const std::string& file) {
        const HWND dialog = dialogOf(id, "the dialog for the file's name");
        type(file);
        waitFor("the name typed", [&] {
            const HWND focused = workbench_->focus();
            return focused && textOf(focused) == file;
        });
        pressKey(VK_RETURN);
        workbench_->waitUntilGone("the file dialog", dialog);
    }

    void saveAs() {
        const std::string file = folder_ + "\\" + kFileName;
        save(CMD_SAVE_AS, file);
        (void)waitForDocument(std::string(kFileName) + " - dessin");
        say("saved it as " + file);
        save(CMD_EXPORT, folder_ + "\\" + kDrawingName);
        waitForHint("Dessin enregistr\u00e9");
        say("saved the drawing");
    }

    void restartInEnglish() {
        const RECT before = areaOf(frame_);
        const auto isMoved = [&] {
            const RECT now = areaOf(frame_);
            return now.left == before.left + 60 && now.top == before.top + 42;
        };
        drag({before.left + 200, before.top + 8}, {before.left + 260, before.top + 50});
        waitFor("the frame at another place", isMoved);
        quit();
        start(" --lang en", "Open a project");
        if (!isMoved()) throw Failure("the frame is not where it was left");
        command(CMD_RECENT);
        (void)waitForDocument(std::string(kFileName) + " - results");
        (void)waitForDocument(std::string(kFileName) + " - drawing");
        takePicture("english", frame_);
        const HWND keys = dialogOf(CMD_KEY_LIST, "the list of keys");
        takePicture("keys", keys);
        answer(keys, IDCANCEL);
        say("started it again in English: place and recent files are as they were");
    }

    /// A second copy gets the project read-only.
    void openTwice() const {
        const Program second('"' + program_ + "\" --lang en --settings \"" + folder_ +
                             "\\second\" \"" + folder_ + "\\" + kFileName + '"');
        const HWND asked = second.waitForDialog("who has the project");
        takePicture("in_use", asked);
        answer(asked, IDC_DOCUMENT_ANSWER);
        const HWND frame = waitFor("the second frame", [&] { return second.find("MDIFrame"); });
        waitFor("the project read-only", [&] {
            for (const HWND child : childrenOf(frame))
                if (textOf(child) == std::string(kFileName) + " [read-only] - drawing") return true;
            return false;
        });
        say("opened the project in a second copy: read-only");
    }

    /// What was not saved when the program is ended from outside is offered at the next start.
    void beKilledAndRecover() {
        command(CMD_DRAWING);
        drawing_ = waitForDocument(std::string(kFileName) + " - drawing");
        enterMode(CMD_BEAM_MODE, "Beam");
        drag(inDrawing(0.2, 0.15), inDrawing(0.5, 0.15));
        (void)waitForDocument(std::string(kFileName) + "* - drawing");
        // What is being written has a longer name.
        waitFor("the state of the project beside it", [&] {
            return isThere(folder_ + "\\" + kFileName + ".autosave-????????") &&
                   isThere(folder_ + "\\settings\\recovery\\*");
        });
        workbench_.reset();
        say("ended the workbench from outside, with a beam that was not saved");
        start(" --lang en", "Open a project");
        const HWND list = workbench_->waitForDialog("the unsaved work");
        takePicture("recovery", list);
        answer(list, IDC_RECOVERY_RECOVER);
        (void)waitForDocument(std::string(kFileName) + "* - drawing");
        waitForHint("Project created");
        command(CMD_SAVE);
        (void)waitForDocument(std::string(kFileName) + " - drawing");
        say("recovered it, and saved it");
    }

    std::string program_;
    std::string folder_;
    std::unique_ptr<Program> workbench_;
    HWND frame_ = nullptr;
    HWND drawing_ = nullptr;
    POINT leftEnd_{}, rightEnd_{};  // of the beam, on the screen
};

}  // namespace
}  // namespace session

int main(int count, char** words) {
    if (count == 3)
        return session::drive(words[1], words[2], [](const auto& program, const auto& folder) {
            session::Session(program, folder).run();
        });
    std::cerr << "usage: workbench_session WORKBENCH FOLDER\n";
    return 2;
}
