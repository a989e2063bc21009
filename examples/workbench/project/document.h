// A project that is open: its file, its steps, what is selected in it, and the windows that show
// it.
#pragma once

#include <memory>

#include "project/open_project.h"
#include "toolbox/document_files.h"
#include "toolbox/links.h"

class View;
class Workbench;

class Document : private UndoListener {
  public:
    /// What changed, for the views: bits.
    enum Change : unsigned {
        Content = 1,     ///< beams, labels, results
        Selected = 2,    ///< the selection
        KeysChanged = 4  ///< columns, formats or descriptions of the keys
    };

    explicit Document(Workbench& workbench);
    ~Document() override;

    [[nodiscard]] Workbench& workbench() const { return workbench_; }
    [[nodiscard]] const Project& project() const { return work_.project(); }
    /// With its results and steps.
    [[nodiscard]] const OpenProject& work() const { return work_; }
    [[nodiscard]] UndoStack& steps() { return work_.steps(); }
    /// Makes the keys' values those of a beam: see OpenProject.
    bool setCurrentKeys(std::size_t index);

    [[nodiscard]] const Selection& selection() const { return selection_; }
    void select(const Selection& selection);

    // Changes by the user: see OpenProject. The views are told. 0 or false: refused, nothing
    // changed.
    std::uint32_t put(Beam beam, unsigned short step = 0);
    Edit::Outcome change(ProjectChange change, StepName name, unsigned gesture);
    bool put(std::vector<Label> labels, unsigned short step);
    bool moveBeam(std::uint32_t id, double x, double y);
    bool removeSelected();

    /// Computes every beam anew, under a meter that the user can cancel when they are many; what
    /// is not reached has no results. False when it was cancelled.
    bool recompute();

    // Files. Each tells the user what went wrong; false: it did not happen.
    /// By its full name. Where somebody else has it, or cannot be written, it is read-only.
    bool open(const CString& file);
    /// Unsaved work of a program that ended badly.
    bool recover(const TvRecoverable& work);
    bool save();
    /// Under a name that the user chooses.
    bool saveAs();
    /// Not under the name of a file that another document has.
    bool saveAs(const CString& file);
    void setProject(Project project);
    /// True when the document may go: it is saved, or the user does not want it to be. Such a No
    /// holds until the next change.
    bool mayClose();
    /// The session goes on after all: mayClose() asks again.
    void keepAsking() { discarded_ = false; }

    /// Keeps the state of unsaved work where it is due: for when nothing else is to be done.
    void idle();
    /// Asks or tells about a file that another program has changed.
    void lookAtDisk();

    [[nodiscard]] bool isModified() const { return !work_.steps().isClean(); }
    [[nodiscard]] CString fileName() const;  ///< empty: never saved
    /// The file's name without folder, or "Project 1".
    [[nodiscard]] CString name() const;
    /// The name, followed by a star when it is modified, and whether it is read-only.
    [[nodiscard]] CString title() const;

    void tellViews(unsigned changes);

    Many<Document, View> views;

  private:
    class Stored;
    class Questions;

    void undoChanged() override;
    bool opened(const TvDocumentResult& result);
    bool saved(const TvDocumentResult& result);

    Workbench& workbench_;
    OpenProject work_;
    Selection selection_;
    CString untitled_;
    bool discarded_ = false;
    std::unique_ptr<Stored> content_;
    std::unique_ptr<Questions> questions_;
    std::unique_ptr<TvDocumentFile> file_;
    TvDocumentFile::DiskState told_ = TvDocumentFile::SameOnDisk;  // what the user knows of it
};
