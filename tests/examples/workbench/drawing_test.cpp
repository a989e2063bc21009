// A project drawn without any window.
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>

#include "drawing/drawing_page.h"
#include "drawing/label_drawing.h"
#include "project/project_keys.h"
#include "resources/workbench_texts.h"
#include "support/temp_folder.h"

namespace {

/// Notes how far paths and texts reach, and which texts there are.
class Reach : public TvCanvas {
  public:
    Reach(double width, double height) : TvCanvas(width, height) {}

    bool holdsAll() const { return least_ >= -1 && beyond_ <= 1; }
    bool has(const std::string& text) const { return texts_.find(text) != std::string::npos; }

  protected:
    void onPath(const TvPath& path, const TvPen*, const TvBrush*) override {
        for (const TvPoint& point : path.points()) include(point);
    }
    void onText(TvPoint at, const TvText& text, const TvFont& font,
                const TvTextPlace& place) override {
        texts_ += text.windows1252() + '\n';
        for (const TvPlacedRun& run : tvPlaceText(at, text, font, place)) {
            include(run.at);
            include({run.at.x + run.width, run.at.y - run.size / 2});
        }
    }
    void onClip(const TvPath&) override {}
    void onUnclip() override {}

  private:
    void include(const TvPoint& point) {
        least_ = std::min({least_, point.x, point.y});
        beyond_ = std::max({beyond_, point.x - width(), point.y - height()});
    }
    double least_ = 0, beyond_ = 0;
    std::string texts_;
};

class ProjectDrawing : public ::testing::Test {
  protected:
    ProjectDrawing() {
        GMSG::initStaticVars();
        UDManager::initStaticVars();
        GMSG::language = GMSG::English;
        registerWorkbenchTexts();
        keys = std::make_unique<ProjectKeys>(folder / "workbench.ini");
        section.iY = 8356.11;
        section.welY = 557.07;
    }
    ~ProjectDrawing() override {
        keys.reset();
        UDManager::destroyStaticVars();
        GMSG::destroyStaticVars();
    }
    void show(const Project& project) {
        work.setProject(project);
        for (std::size_t i = 0; i < project.beams().size(); ++i) work.compute(i);
    }

    GMSG service;
    TempFolder folder;
    std::unique_ptr<ProjectKeys> keys;
    Section section;
    OpenProject work{[this](const CString&) { return &section; }};
};

TEST_F(ProjectDrawing, LiesOnAPageThatIsAsLargeAsItself) {
    Project labelled = sampleProject(7, {"IPE 300"});
    labelled.put(Label{.beam = 2, .tag = labelTag("$NAME$: $L$ m, $XX$", -30, 12)});
    for (const Project& project : {Project(), labelled, sampleProject(2000, {"IPE 80"})}) {
        show(project);
        const DrawingPage page = pageOf(work);
        Reach reach(page.width, page.height);
        drawPage(reach, work, page);
        EXPECT_TRUE(reach.holdsAll()) << project.beams().size();
        EXPECT_EQ(reach.faultCount(), 0u);
        EXPECT_EQ(reach.has("\nIPE 300\n"), project == labelled);
        EXPECT_EQ(reach.has("P2: 3.50 m, $XX$"), project == labelled);
    }
}

TEST_F(ProjectDrawing, ArrangesItsLabelsInOneStep) {
    show(sampleProject(3, {"IPE 300"}));
    std::vector<Label> crowd;
    for (const double x : {1.0, 1.1, 1.2, 13.0})
        crowd.push_back({.beam = 1, .tag = labelTag("$NAME$: $M$ kNm", x, 0)});
    work.put(crowd, kStepArrangeLabels);
    const Project before = work.project();
    DrawingLayout layout(depthIn(work));
    layout.fit(work.project(), {0, 0, 1000, 600});
    const Scene scene{work, layout, {0, 0, 1000, 600}};
    ASSERT_TRUE(work.put(arrangedLabels(scene), kStepArrangeLabels));
    const TvTagLayout labels = layOutLabels(scene);
    ASSERT_EQ(labels.tags().size(), 4u);
    for (const TvTagOnPage& label : labels.tags()) {
        EXPECT_FALSE(label.tag->unplaced);
        for (const Beam& beam : work.project().beams()) {
            const BeamPlace place = layout.place(beam);
            EXPECT_FALSE(pixelsOf(label.box).meets(
                {place.left + 2, place.top + 2, place.right - 2, place.bottom - 2}));
        }
        for (const TvTagOnPage& other : labels.tags())
            EXPECT_TRUE(other.id == label.id || other.box.right <= label.box.left + 0.01 ||
                        label.box.right <= other.box.left + 0.01 ||
                        other.box.bottom <= label.box.top + 0.01 ||
                        label.box.bottom <= other.box.top + 0.01);
    }
    EXPECT_TRUE(arrangedLabels(scene).empty()) << "they stay";
    work.steps().undo();
    EXPECT_TRUE(work.project() == before);
}

}  // namespace
