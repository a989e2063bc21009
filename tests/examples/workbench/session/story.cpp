#include "story.h"

#include <algorithm>
#include <fstream>

#include "format_dialogs.h"
#include "hands.h"
#include "meter_dialog.h"
#include "resource.h"
#include "screen.h"

namespace session {
namespace {

constexpr const char* kFirstTitle = "Projet 1";
constexpr const char* kBeamName = "Trav\u00e9e 1";
constexpr const char* kSection = "IPE 220";

// Where the mouse goes in the drawing: parts of its width and height, and pixels above the beam.
constexpr double kLeft = 0.2, kRight = 0.5, kSecondLeft = 0.58, kSecondRight = 0.75, kHeight = 0.45;
constexpr double kLabelX = 0.2, kLabelY = 0.85;
constexpr LONG kForceDrag = 70, kUniformDrag = 30;

void expect(bool condition, const std::string& what) {
    if (!condition) throw Failure("not so: " + what);
}

void expectSame(const CopiedTable& table, const CopiedTable& wanted, const std::string& what) {
    if (table != wanted)
        throw Failure("not so: " + what + "; the table shows\n" + table.text() + "\ninstead of\n" +
                      wanted.text());
}

/// Puts a text into an edit field, as a user does who comes with the mouse.
void enter(HWND dialog, int field, const std::string& text) {
    const HWND edit = control(dialog, field);
    doubleClick(middleOf(areaOf(edit)));
    press(VK_HOME);
    press(VK_END, {VK_SHIFT});
    type(text);
    waitFor("\"" + text + "\" in a field", [&] { return textOf(edit) == text; });
}

/// Opens a list of choices and goes down it.
void pick(HWND list, const std::string& choice) {
    const auto isOpen = [&] { return SendMessageW(list, CB_GETDROPPEDSTATE, 0, 0) != 0; };
    click(list);
    waitFor("the open list", isOpen);
    press(VK_HOME);
    std::string before;
    waitFor("the choice " + choice, [&] {
        const std::string now = textOf(list);
        if (now == choice) return true;
        if (now != before) press(VK_DOWN);
        before = now;
        return false;
    });
    press(VK_RETURN);
    waitFor("the end of the list", [&] { return !isOpen(); });
}

}  // namespace

void Story::tell() {
    start();
    newProject();
    drawBeams();
    addLoads();
    addLabel();
    editBeam();
    changeFormat();
    recompute();
    saveAs();
    closeAndReopen();
    if (!plan_.isShort) {
        recoverDamagedFile();
        computeLargeSample();
        restartInEnglish();
    }
    workbench_->quit();
    say("ended the workbench with Alt+F4");
}

std::string Story::describe() const {
    return workbench_ ? workbench_->program().describe() : "";
}

std::filesystem::path Story::pathOf(const std::string& name) const {
    return std::filesystem::path(wide(plan_.folder)) / wide(name);
}

POINT Story::inDrawing(double x, double y) const {
    const RECT area = clientOf(drawing_);
    return {area.left + static_cast<LONG>(x * (area.right - area.left)),
            area.top + static_cast<LONG>(y * (area.bottom - area.top))};
}

void Story::takePicture(const std::string& name, HWND window,
                        const std::vector<Sight>& sights) const {
    const RECT shown = areaOf(window);
    savePicture(shown, plan_.folder + "\\" + name + ".bmp");
    std::ofstream notes(pathOf("pictures.txt"), std::ios::app);
    for (const auto& [what, area] : sights)
        notes << name << ' ' << what << ' ' << area.left - shown.left << ' ' << area.top - shown.top
              << ' ' << area.right - area.left << ' ' << area.bottom - area.top << '\n';
}

void Story::takeResultsPicture() const {
    const POINT load = middleOf({leftEnd_.x, leftEnd_.y, rightEnd_.x, rightEnd_.y});
    const POINT label = inDrawing(kLabelX, kLabelY);
    // Above the uniform load only the arrow of the point load is left.
    const LONG top = load.y - kForceDrag + 8, bottom = load.y - kUniformDrag - 4;
    const RECT list = clientOf(childrenOf(table_).front());
    const RECT first = workbench_->headerItem(table_, 0),
               last = workbench_->headerItem(table_, results_.lines[0].size() - 1);
    const LONG row = first.bottom - first.top;
    takePicture(
        "workbench", workbench_->frame(),
        {{"text", {first.left, first.top, last.right, first.bottom}},
         {"text", {first.left, first.bottom, last.right, first.bottom + 2 * row}},
         {"empty", {first.left, first.bottom + 4 * row, last.right, list.bottom}},
         {"beam", {leftEnd_.x + 12, load.y - 1, rightEnd_.x - 12, load.y + 2}},
         {"uniform", {leftEnd_.x + 12, load.y - kUniformDrag + 6, load.x - 12, load.y - 20}},
         {"arrow", {load.x - 6, top, load.x + 7, bottom}},
         {"paper", {load.x - 60, top, load.x - 40, bottom}},
         {"text", {label.x, label.y - 6, label.x + 120, label.y + 18}}});
}

void Story::start(const std::string& more) {
    workbench_ =
        std::make_unique<WorkbenchWindow>(plan_.program, plan_.folder + "\\settings", more);
    say("started the workbench: \"" + textOf(workbench_->frame()) + "\", " + workbench_->hint());
}

void Story::newProject() {
    workbench_->waitForHint("Ouvrez un projet");
    workbench_->choose('F', 'N');
    showViews(kFirstTitle);
    say("began a project and put its windows one over the other");
}

void Story::showViews(const std::string& title) {
    table_ = workbench_->waitForDocument(title + " - r\u00e9sultats");
    drawing_ = workbench_->waitForDocument(title + " - dessin");
    workbench_->choose('N', 'H');
    waitFor("the windows one over the other", [&] {
        const RECT above = areaOf(table_), below = areaOf(drawing_);
        return above.left == below.left && above.right == below.right &&
               (above.bottom <= below.top || below.bottom <= above.top);
    });
}

void Story::drawBeams() {
    workbench_->activate(VK_F7, drawing_);
    workbench_->enterMode('2', "Poutre");
    leftEnd_ = inDrawing(kLeft, kHeight);
    rightEnd_ = inDrawing(kRight, kHeight);
    drag(leftEnd_, rightEnd_);
    (void)workbench_->waitForDocument(std::string(kFirstTitle) + "* - dessin");
    drag(inDrawing(kSecondRight, kHeight), inDrawing(kSecondLeft, kHeight));
    results_ = copyTable();
    expect(results_.rows() == 2, "the table has the beams that were drawn");
    say("drew two beams with the mouse: spans " + results_.cell(1, "L") + " m and " +
        results_.cell(2, "L") + " m");
}

HWND Story::palette() const {
    const auto find = [&]() -> HWND {
        for (const HWND window : workbench_->program().windows())
            if (classOf(window) == "#32770" && textOf(window) == "Dessin") return window;
        return nullptr;
    };
    const HWND shown = waitFor("the palette", find);
    // Where no window manager keeps it above the frame, showing it again brings it there.
    if (workbench_->program().windows().front() != shown) {
        workbench_->command(VK_F8);
        waitFor("the end of the palette", [&] { return !find(); });
        workbench_->command(VK_F8);
        waitFor("the palette in front",
                [&] { return workbench_->program().windows().front() == shown; });
    }
    return shown;
}

CopiedTable Story::copyTable() const {
    workbench_->activate(VK_F6, table_);
    CopiedTable table = workbench_->copyTable(childrenOf(table_).front());
    workbench_->activate(VK_F7, drawing_);
    return table;
}

void Story::addLoads() {
    click(control(palette(), CMD_POINT_LOAD_MODE));
    workbench_->waitForHint("Charge ponctuelle");
    const POINT middle = middleOf({leftEnd_.x, leftEnd_.y, rightEnd_.x, rightEnd_.y});
    drag(middle, {middle.x, middle.y - kForceDrag});
    CopiedTable loaded = copyTable();
    expect(loaded.cell(1, "P") != results_.cell(1, "P"), "the beam has the load that was drawn");
    say("added a point load with the mouse: " + loaded.cell(1, "P") + " kN, moment " +
        loaded.cell(1, "M") + " kNm");

    workbench_->enterMode('4', "Charge uniforme");
    drag({leftEnd_.x, leftEnd_.y - kUniformDrag}, {rightEnd_.x, rightEnd_.y + 2});
    const POINT second = inDrawing(kSecondLeft, kHeight), end = inDrawing(kSecondRight, kHeight);
    drag({end.x, end.y - kUniformDrag}, {second.x, second.y + 2});
    results_ = copyTable();
    expect(results_.cell(1, "q") != loaded.cell(1, "q"), "the beam has the uniform load");
    expect(results_.cell(2, "q") != loaded.cell(2, "q"), "and so has the other");
    say("added uniform loads: " + results_.cell(1, "q") + " kN/m and " + results_.cell(2, "q") +
        " kN/m");
}

void Story::addLabel() {
    const std::string words = "$NAME$ : fl\u00e8che $F$ mm";
    workbench_->enterMode('5', "\u00c9tiquette");
    click(inDrawing(kLabelX, kLabelY));
    const HWND dialog = workbench_->program().waitForDialog("the label's dialog");
    enter(dialog, IDC_LABEL_TEXT, words);
    const HWND preview = control(dialog, IDC_LABEL_PREVIEW);
    waitFor("the label with the deflection in the preview",
            [&] { return textOf(preview).find(results_.cell(1, "f")) != std::string::npos; });
    say("wrote a label: " + words + " reads " + textOf(preview));
    workbench_->answer(dialog, IDOK);
}

void Story::editBeam() {
    workbench_->enterMode('1', "S\u00e9lection");
    click({leftEnd_.x + 30, leftEnd_.y});
    workbench_->command(VK_F2);
    const HWND dialog = workbench_->program().waitForDialog("the beam's dialog");
    enter(dialog, IDC_BEAM_NAME, kBeamName);
    pick(control(dialog, IDC_BEAM_SECTION), kSection);
    workbench_->answer(dialog, IDOK);
    CopiedTable edited = copyTable();
    expect(edited.cell(1, "poutre") == kBeamName, "the beam has its new name");
    expect(edited.cell(1, "profil\u00e9") == kSection, "the beam has its new section");
    expect(edited.cell(1, "f") != results_.cell(1, "f"), "another section bends otherwise");
    results_ = std::move(edited);
    say("gave it a name and a section in its dialog: " + results_.cell(1, "poutre") + ", " +
        results_.cell(1, "profil\u00e9") + ", deflection " + results_.cell(1, "f") + " mm");
}

void Story::changeFormat() {
    workbench_->activate(VK_F6, table_);
    click(middleOf(workbench_->headerItem(table_, results_.column("f"))));
    workbench_->command(VK_F3);
    const HWND dialog = workbench_->program().waitForDialog("the format's dialog");
    enter(dialog, IDC_FORMAT_DECIMALS, "4");
    enter(dialog, IDC_FORMAT_WIDTH, "10");
    takePicture("format", dialog, {{"text", areaOf(dialog)}});
    workbench_->answer(dialog, IDOK);
    CopiedTable finer = copyTable();
    const std::string& deflection = finer.cell(1, "f");
    expect(deflection.size() - deflection.find('.') == 5, "the deflection has four decimals");
    results_ = std::move(finer);
    say("gave the deflection four decimals: " + deflection + " mm");
}

void Story::recompute() {
    workbench_->command(VK_F9);
    workbench_->waitForHint("2 sur 2");
    expectSame(copyTable(), results_, "recomputing gives the same");
    click(inDrawing(kLabelX, 0.1));  // selects nothing
    (void)palette();
    takeResultsPicture();
    say("recomputed with F9: the same results");
}

void Story::saveAs() {
    workbench_->choose('F', 'E');
    const HWND dialog = workbench_->program().waitForDialog("the dialog for the file's name");
    type(projectFile());
    waitFor("the name typed", [&] {
        const HWND focused = workbench_->program().focus();
        return focused && textOf(focused) == projectFile();
    });
    press(VK_RETURN);
    workbench_->program().waitUntilGone("the file dialog", dialog);
    (void)workbench_->waitForDocument(std::string(kName) + " - dessin");
    std::filesystem::copy_file(pathOf(kName), pathOf("saved.tbf"));
    say("saved it as " + projectFile());
}

void Story::closeProject() {
    workbench_->choose('F', 'F');
    workbench_->waitForNoDocument();
}

void Story::closeAndReopen() {
    closeProject();
    workbench_->choose('F', '1');
    showViews(kName);
    expectSame(copyTable(), results_, "the project opened is the one that was saved");
    say("closed it and opened it again from the list of recent files: the same results");
}

void Story::recoverDamagedFile() {
    closeProject();
    // Cut within the label, behind the beams.
    std::filesystem::resize_file(pathOf(kName), std::filesystem::file_size(pathOf(kName)) - 300);
    workbench_->choose('F', '1');
    const HWND box = workbench_->program().waitForDialog("the question about the damaged file");
    waitFor("what can be read in the question", [&] {
        return std::ranges::any_of(childrenOf(box), [](HWND child) {
            return textOf(child).find("2 \u00e9l\u00e9ments lisibles sur 3") != std::string::npos;
        });
    });
    workbench_->answer(box, IDYES);
    showViews(std::string(kName) + " (r\u00e9cup\u00e9r\u00e9)*");
    expectSame(copyTable(), results_, "the beams were recovered");
    workbench_->choose('F', 'F');
    workbench_->answer(workbench_->program().waitForDialog("the question about saving"), IDNO);
    workbench_->waitForNoDocument();
    std::filesystem::rename(pathOf(kName), pathOf("damaged.tbf"));
    std::filesystem::copy_file(pathOf("saved.tbf"), pathOf(kName));
    say("cut the file's end off: the workbench offered the beams without their label");
}

void Story::cancelMeter() {
    const HWND meter = workbench_->program().waitForDialog("the progress meter");
    const HWND line = control(meter, IDC_METER_LINE_1);
    waitFor("the meter to move on", [&] {
        const std::string done = textOf(line);
        return !done.empty() && !done.starts_with("0 ");
    });
    workbench_->answer(meter, IDCANCEL);
    waitFor("the hint of a part", [&] {
        const std::string hint = workbench_->hint();
        return hint.ends_with(" sur 10000") && !hint.starts_with("10000");
    });
}

void Story::computeLargeSample() {
    workbench_->choose('F', 'G');
    cancelMeter();
    const std::string part = workbench_->hint();
    const std::string title = workbench_->documents().at(0);
    showViews(title.substr(0, title.find(" - ")));
    CopiedTable all = copyTable();
    expect(all.rows() == 10000, "the table has 10000 rows");
    expect(!all.cell(1, "f").empty() && all.cell(10000, "f").empty(),
           "the first row has a result, the last one has none");
    say("opened the large sample and cancelled the meter: " + part);
    workbench_->command(VK_F9);
    if (plan_.isPatient) {
        workbench_->program().waitUntilGone(
            "the progress meter", workbench_->program().waitForDialog("the progress meter"));
        workbench_->waitForHint("10000 sur 10000");
        all = copyTable();
        say("computed it with F9: the last beam bends " + all.cell(10000, "f") + " mm");
    } else {
        cancelMeter();
        say("computed it with F9 and cancelled: " + workbench_->hint());
    }
    takePicture("sample", workbench_->frame(), {});
    workbench_->choose('F', 'F');
    workbench_->waitForNoDocument();
}

void Story::restartInEnglish() {
    const RECT before = areaOf(workbench_->frame());
    drag({before.left + 200, before.top + 8}, {before.left + 260, before.top + 50});
    RECT moved{};
    waitFor("the frame at another place", [&] {
        moved = areaOf(workbench_->frame());
        return moved.left == before.left + 60 && moved.top == before.top + 42;
    });
    workbench_->quit();
    start(" --lang en");
    waitFor("the English title", [&] { return textOf(workbench_->frame()) == "Workbench"; });
    workbench_->waitForHint("Open a project");
    const RECT found = areaOf(workbench_->frame());
    expect(EqualRect(&found, &moved), "the frame is where it was left");
    workbench_->choose('F', '1');
    table_ = workbench_->waitForDocument(std::string(kName) + " - results");
    drawing_ = workbench_->waitForDocument(std::string(kName) + " - drawing");
    const CopiedTable now = copyTable();
    expect(now.cell(1, "beam") == kBeamName, "the headers are English");
    expect(std::equal(now.lines.begin() + 1, now.lines.end(), results_.lines.begin() + 1,
                      results_.lines.end()),
           "columns and formats are as they were left");
    say("started it again in English: place, columns, formats and recent files are as they were");
}

}  // namespace session
