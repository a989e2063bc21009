// The parts of the editor of labels.
#pragma once

#include <array>
#include <vector>

#include "tag/editor/picture_button_win32.h"
#include "tag/editor/tag_entries_win32.h"
#include "toolbox/controls.h"
#include "toolbox/tag_layout.h"
#include "toolbox/tag_tools.h"

struct TvTagDialog::State {
    State(TvTagDialog& owner, const TvTag& edited, TokenizerUDManager* values)
        : dialog(owner), keys(values), tag(edited), draft(edited), entries(edited) {}

    void attach();
    void showPictures();
    /// Shows what stands in the controls, and what is wrong with it. The dialog may be gone then.
    void show();
    void showProblems(const CString& text);
    void selectProblem();
    void chooseColor(int button);
    void insertKeys();
    void drawSample(const DRAWITEMSTRUCT& item) const;
    /// Of the button with that number.
    [[nodiscard]] TvColor& colorOf(int button);

    TvTagDialog& dialog;
    TokenizerUDManager* keys;
    TvTag tag;                         // as it was confirmed
    TvTag draft;                       // with the colours that were chosen
    toolbox::tag::TagEntries entries;  // what was read last
    bool isFilled = false;             // the fields tell of changes while they are filled, too
    std::vector<toolbox::TemplateProblem> problems;
    TvTagLayout sample;

    std::array<toolbox::tag::PictureRadioButton, 9> places;
    std::array<toolbox::tag::PictureRadioButton, 4> borders;
    std::array<toolbox::tag::PictureButton, 3> colors;
    TvComboBox font;
    TvEdit size, width;
    toolbox::detail::Watched<> life;
};
