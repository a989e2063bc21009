// The labels of a drawing under mouse and keyboard (Windows only).
#pragma once

#include <memory>
#include <optional>

#include "project/label_keys.h"
#include "project/open_project.h"
#include "toolbox/tag_tools.h"

class DrawingView;

/// Exists before the tool that works on it.
struct LabelTags {
    TvTagSet tags;
};

/// The library's tool on the tags of the project's labels. What it does to them is a step of the
/// project; what becomes of the project comes back with follow(). One of the labels that are
/// selected is the document's selection.
class LabelTool : private LabelTags, public TvTagTool, private TvTagListener {
  public:
    /// For a view whose window is there.
    explicit LabelTool(DrawingView& view);

    /// The project or the document's selection has changed.
    void follow();
    /// A label is put where the button is pressed next; its text is asked for.
    void placeNew();

  protected:
    TokenizerUDManager* keysOf(TvTagId id, const TvTag& tag) override;
    Edit::Outcome perform(std::unique_ptr<Edit> edit, unsigned gesture) override;
    int edit(TvTag& tag) override;
    void report(const CString& why) override;
    void reveal(const TvTagOnPage& tag) override;

  private:
    void tagsChanged() override;
    void followSelection();
    /// The beam of a label; of a new one the nearest, null where there is none.
    [[nodiscard]] const Beam* beamOf(TvTagId id, const TvTag& tag) const;
    /// What makes the project's labels those of the set; nothing when one of them is not sound.
    [[nodiscard]] std::optional<ProjectChange> difference() const;
    [[nodiscard]] const Project& project() const;

    DrawingView& view_;
    std::shared_ptr<LabelKeys> keys_;
    bool isBusy_ = false;  // the set and the project are being made the same
};
