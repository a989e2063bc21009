// The session: what a user of the workbench does on a first day, chapter by chapter. Each chapter
// leaves the program where the next one begins.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "workbench_window.h"

namespace session {

struct Plan {
    std::string program;     ///< the workbench
    std::string folder;      ///< of everything that is written; full name without backslash behind
    bool isShort = false;    ///< leaves out what a demonstration would tire with
    bool isPatient = false;  ///< waits for the computation of ten thousand beams
};

class Story {
  public:
    explicit Story(Plan plan) : plan_(std::move(plan)) {}

    /// Throws Failure when something is not as it should be.
    void tell();
    /// What is on the screen, and a picture of it, for the report of a failure.
    [[nodiscard]] std::string describe() const;

  private:
    void start(const std::string& more = {});
    void newProject();
    void drawBeams();
    void addLoads();
    void addLabel();
    void editBeam();
    void changeFormat();
    void recompute();
    void saveAs();
    void closeAndReopen();
    void recoverDamagedFile();
    void computeLargeSample();
    void cancelMeter();
    void restartInEnglish();

    /// Takes the windows of a project and puts one over the other.
    void showViews(const std::string& title);
    [[nodiscard]] HWND palette() const;
    [[nodiscard]] CopiedTable copyTable() const;
    void closeProject();

    [[nodiscard]] std::string projectFile() const { return plan_.folder + "\\" + kName; }
    [[nodiscard]] std::filesystem::path pathOf(const std::string& name) const;
    /// A place in the drawing, as parts of its width and height.
    [[nodiscard]] POINT inDrawing(double x, double y) const;
    /// What is to be seen somewhere on the screen.
    struct Sight {
        const char* what;
        RECT area;
    };
    /// Takes a picture of a window and notes for those who look at it what is where.
    void takePicture(const std::string& name, HWND window, const std::vector<Sight>& sights) const;
    void takeResultsPicture() const;

    static constexpr const char* kName = "journ\u00e9e.tbf";

    Plan plan_;
    std::unique_ptr<WorkbenchWindow> workbench_;
    HWND table_ = nullptr;
    HWND drawing_ = nullptr;
    POINT leftEnd_{}, rightEnd_{};  // of the first beam, in the drawing
    CopiedTable results_;           // as the table showed them last
};

}  // namespace session
