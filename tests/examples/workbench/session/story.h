// The session: what a user of the workbench does on a first day and on the next morning, chapter by
// chapter. Each chapter leaves the program where the next one begins.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "workbench_window.h"

namespace session {

class Story {
  public:
    /// The workbench's program, and the folder for everything that is written: full names.
    Story(std::string program, std::string folder)
        : program_(std::move(program)), folder_(std::move(folder)) {}

    /// Throws Failure when something is not as it should be.
    void tell();
    /// What is on the screen, for the report of a failure.
    [[nodiscard]] std::string describe() const;

  private:
    void start(const std::string& more = {});
    void newProject();
    void drawBeam();
    void addLoads();
    void addLabel();
    void editBeam();
    void changeFormat();
    void saveAs();
    void closeAndReopen();
    void restartInEnglish();

    /// Takes the windows of a project and puts one over the other.
    void showViews(const std::string& title);
    [[nodiscard]] HWND palette() const;
    [[nodiscard]] CopiedTable copyTable() const;
    [[nodiscard]] std::string projectFile() const;
    /// A place in the drawing, as parts of its width and height.
    [[nodiscard]] POINT inDrawing(double x, double y) const;
    void takePicture(const std::string& name, HWND window) const;

    std::string program_;
    std::string folder_;
    std::unique_ptr<WorkbenchWindow> workbench_;
    HWND table_ = nullptr;
    HWND drawing_ = nullptr;
    POINT leftEnd_{}, rightEnd_{};  // of the beam, on the screen
    CopiedTable results_;           // as the table showed them last
};

}  // namespace session
