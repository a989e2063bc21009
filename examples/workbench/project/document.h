// An open project: its file, its results, what is selected in it, and the windows that show it.
#pragma once

#include <optional>
#include <vector>

#include "project/beam_results.h"
#include "project/project.h"
#include "toolbox/dates.h"
#include "toolbox/links.h"

class View;
class Workbench;

/// What the user has selected in a document: nothing, a beam, one of a beam's point loads, a label.
struct Selection {
    enum Kind { Nothing, OneBeam, OneLoad, OneLabel };
    Kind kind = Nothing;
    std::uint32_t id = 0;  ///< of the beam or the label
    std::size_t load = 0;  ///< index of a point load

    bool operator==(const Selection&) const = default;
};

class Document {
  public:
    /// What changed, for the views: bits.
    enum Change : unsigned {
        Content = 1,     ///< beams, labels, results
        Selected = 2,    ///< the selection
        KeysChanged = 4  ///< columns, formats or descriptions of the keys
    };

    explicit Document(Workbench& workbench);
    ~Document();

    [[nodiscard]] Workbench& workbench() const { return workbench_; }
    [[nodiscard]] const Project& project() const { return project_; }
    /// The results of the beam with this index in the project; null while they are not computed or
    /// the section is not in the table.
    [[nodiscard]] const BeamResults* results(std::size_t index) const;
    [[nodiscard]] std::size_t indexOf(std::uint32_t beam) const;

    /// Makes the keys' values those of a beam. False when it has no results: keys would print as
    /// nothing.
    bool setCurrentKeys(std::size_t index);
    /// A label as it is drawn, its tokens replaced.
    [[nodiscard]] CString textOf(const Label& label);

    [[nodiscard]] const Selection& selection() const { return selection_; }
    void select(const Selection& selection);

    // Changes by the user. They mark the document as modified, compute what depends on them and
    // tell the views. 0 or false: refused, nothing changed.
    std::uint32_t put(Beam beam);
    std::uint32_t put(Label label);
    bool removeSelected();

    /// Computes every beam anew, under a meter that the user can cancel when they are many; what
    /// is not reached has no results. False when it was cancelled.
    bool recompute();

    // Files. Each tells the user what went wrong; false: it did not happen.
    /// By its full name.
    bool open(const CString& file);
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

    [[nodiscard]] bool isModified() const { return modified_; }
    [[nodiscard]] const CString& fileName() const { return file_; }  ///< empty: never saved
    /// The file's name without folder, or "Project 1"; followed by a star when it is modified.
    [[nodiscard]] CString title() const;

    void tellViews(unsigned changes);

    Many<Document, View> views;

  private:
    void computeAt(std::size_t index);
    void changed();
    bool saveTo(const CString& file);
    [[nodiscard]] const Section* sectionOf(const Beam& beam) const;

    Workbench& workbench_;
    Project project_;
    BeamComputer computer_;
    std::vector<std::optional<BeamResults>> results_;
    Selection selection_;
    CString file_;
    CString untitled_;
    TarvDate created_;
    bool modified_ = false;
    bool discarded_ = false;
};
