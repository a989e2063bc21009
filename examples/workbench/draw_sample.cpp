// Draws a sample project, without any window:
//
//     workbench_drawing SECTIONS FILE...
//
// SECTIONS is the table of sections; each FILE is written as SVG or, when its name ends so, as PDF.
// Formats of keys that workbench_drawing.ini in the current folder holds are heeded.
// Exit status: 0 all are written; 1 one is not, or the table has no section; 2 wrong arguments.
#include <cstdio>

#include "drawing/drawing_page.h"
#include "project/project_keys.h"
#include "resources/workbench_texts.h"
#include "section_csv.h"
#include "services.h"

namespace {

/// A floor: what is strained, what breaks, and why.
Project floorProject() {
    Project project;
    project.put(Beam{.name = "P1",
                     .section = "IPE 300",
                     .span = 6,
                     .uniform = 12.5,
                     .loads = {{2, 24}, {4.5, 15}}});
    project.put(
        Beam{.name = "P2", .section = "IPE 240", .x = 8.5, .span = 5, .uniform = 8, .loads = {}});
    project.put(Beam{
        .name = "P3", .section = "IPE 200", .y = -4.6, .span = 4.5, .loads = {{1.5, 18}, {3, 18}}});
    project.put(Beam{.name = "P4",
                     .section = "IPE 220",
                     .x = 6.5,
                     .y = -4.6,
                     .span = 7,
                     .uniform = 6,
                     .loads = {{3.5, 22}, {6, -9}}});
    const auto label = [&](std::uint32_t beam, double x, double y, const char* text) {
        Label each{.beam = beam, .tag = labelTag(text, x, y)};
        each.tag.align = TvAlign::center;
        project.put(std::move(each));
    };
    label(1, 3, -1.5, "$NAME$: M = $M$ kNm at $X$ m, f = $F$ mm");
    label(2, 11, -1.5, "$NAME$: RA = $RA$ kN, RB = $RB$ kN");
    label(4, 10, -6.1, "$NAME$, $SECTION$: $USE$ % of the elastic limit");
    return project;
}

int drawInto(int count, char** files, const std::vector<Section>& sections) {
    OpenProject work([&sections](const CString& designation) -> const Section* {
        for (const Section& section : sections)
            if (section.designation == designation) return &section;
        return nullptr;
    });
    work.setProject(floorProject());
    for (std::size_t i = 0; i < work.project().beams().size(); ++i) work.compute(i);
    const ProjectKeys keys("workbench_drawing.ini");
    for (int i = 0; i < count; ++i) {
        CString why;
        if (writeDrawing(work, "Beams of a floor", files[i], &why)) continue;
        std::fprintf(stderr, "%s: %s\n", files[i], why.c_str());
        return 1;
    }
    return 0;
}

}  // namespace

int main(int count, char** words) {
    if (count < 3) {
        std::fputs("usage: workbench_drawing SECTIONS FILE...\n", stderr);
        return 2;
    }
    const Services services(GMSG::English, registerWorkbenchTexts);
    const std::vector<Section> sections = readSections(words[1]);
    if (!sections.empty()) return drawInto(count - 2, words + 2, sections);
    std::fputs(GMSG::getLstErrorsInString().c_str(), stderr);
    return 1;
}
