// Real mouse and keyboard throughout: what a click or a key does is seen in the windows, in the
// table that is copied, and in the end in the file. Details are tested inside the program.
#include "story.h"

#include <algorithm>

#include "format_dialogs.h"
#include "hands.h"
#include "resources/resource.h"
#include "screen.h"

namespace session {
namespace {

constexpr const char* kFirstTitle = "Projet 1";
constexpr const char* kFileName = "journ\u00e9e.tbf";
constexpr const char* kBeamName = "Trav\u00e9e 1";
constexpr const char* kSection = "IPE 220";

// Where the mouse goes in the drawing: parts of its width and height, and pixels above the beam.
constexpr double kLeft = 0.2, kRight = 0.6, kHeight = 0.45, kLabelX = 0.2, kLabelY = 0.85;
constexpr LONG kForceDrag = 70, kUniformDrag = 30;

void expect(bool condition, const std::string& what) {
    if (!condition) throw Failure("not so: " + what);
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
    click(middleOf(areaOf(list)));
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
    drawBeam();
    addLoads();
    addLabel();
    editBeam();
    changeFormat();
    saveAs();
    closeAndReopen();
    restartInEnglish();
    workbench_->quit();
    say("ended the workbench with Alt+F4");
}

std::string Story::describe() const {
    return workbench_ ? workbench_->program().describe() : "";
}

std::string Story::projectFile() const {
    return folder_ + "\\" + kFileName;
}

POINT Story::inDrawing(double x, double y) const {
    const RECT area = clientOf(drawing_);
    return {area.left + static_cast<LONG>(x * (area.right - area.left)),
            area.top + static_cast<LONG>(y * (area.bottom - area.top))};
}

void Story::takePicture(const std::string& name, HWND window) const {
    // What is waiting to be painted is painted now.
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    savePicture(areaOf(window), folder_ + "\\" + name + ".bmp");
}

void Story::start(const std::string& more) {
    workbench_ = std::make_unique<WorkbenchWindow>(program_, folder_ + "\\settings", more);
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

void Story::drawBeam() {
    workbench_->activate(VK_F7, drawing_);
    workbench_->enterMode('2', "Poutre");
    leftEnd_ = inDrawing(kLeft, kHeight);
    rightEnd_ = inDrawing(kRight, kHeight);
    drag(leftEnd_, rightEnd_);
    (void)workbench_->waitForDocument(std::string(kFirstTitle) + "* - dessin");
    say("drew a beam with the mouse");
}

HWND Story::palette() const {
    const auto find = [&]() -> HWND {
        for (const HWND window : workbench_->program().windows())
            if (classOf(window) == "#32770" && textOf(window) == "Outils de dessin") return window;
        return nullptr;
    };
    const HWND shown = waitFor("the drawing tools", find);
    // Where no window manager keeps them above the frame, showing them again brings them there.
    if (workbench_->program().windows().front() != shown) {
        workbench_->command(VK_F8);
        waitFor("the end of the drawing tools", [&] { return !find(); });
        workbench_->command(VK_F8);
        waitFor("the drawing tools in front",
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
    click(middleOf(areaOf(control(palette(), CMD_POINT_LOAD_MODE))));
    workbench_->waitForHint("Charge ponctuelle");
    const POINT middle = middleOf({leftEnd_.x, leftEnd_.y, rightEnd_.x, rightEnd_.y});
    drag(middle, {middle.x, middle.y - kForceDrag});
    workbench_->enterMode('4', "Charge uniforme");
    drag({leftEnd_.x, leftEnd_.y - kUniformDrag}, {rightEnd_.x, rightEnd_.y + 2});
    results_ = copyTable();
    expect(results_.lines.size() == 2, "the table has the beam that was drawn");
    say("added loads with the mouse: " + results_.cell("P") + " kN and " + results_.cell("q") +
        " kN/m on " + results_.cell("L") + " m, moment " + results_.cell("M") + " kNm");
    expect(results_.cell("P") != "0.00" && results_.cell("q") != "0.00", "the beam has loads");
}

void Story::addLabel() {
    const std::string words = "$NAME$ : fl\u00e8che $F$ mm";
    workbench_->enterMode('5', "\u00c9tiquette");
    click(inDrawing(kLabelX, kLabelY));
    const HWND dialog = workbench_->program().waitForDialog("the label's dialog");
    enter(dialog, IDC_LABEL_TEXT, words);
    const HWND preview = control(dialog, IDC_LABEL_PREVIEW);
    waitFor("the label with the deflection in the sample",
            [&] { return textOf(preview).find(results_.cell("f")) != std::string::npos; });
    takePicture("label", dialog);
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
    takePicture("beam", dialog);
    workbench_->answer(dialog, IDOK);
    CopiedTable edited = copyTable();
    expect(edited.cell("poutre") == kBeamName, "the beam has its new name");
    expect(edited.cell("profil\u00e9") == kSection, "the beam has its new section");
    expect(edited.cell("f") != results_.cell("f"), "another section bends otherwise");
    results_ = std::move(edited);
    say("gave it a name and a section in its dialog: " + results_.cell("poutre") + ", " +
        results_.cell("profil\u00e9") + ", deflection " + results_.cell("f") + " mm");
}

void Story::changeFormat() {
    workbench_->activate(VK_F6, table_);
    click(middleOf(workbench_->headerItem(table_, results_.column("f"))));
    workbench_->command(VK_F3);
    const HWND dialog = workbench_->program().waitForDialog("the format's dialog");
    enter(dialog, IDC_FORMAT_DECIMALS, "4");
    takePicture("format", dialog);
    workbench_->answer(dialog, IDOK);
    results_ = copyTable();
    const std::string& deflection = results_.cell("f");
    expect(deflection.size() - deflection.find('.') == 5, "the deflection has four decimals");
    click(inDrawing(kLabelX, 0.1));  // selects nothing
    (void)palette();
    takePicture("workbench", workbench_->frame());
    say("gave the deflection four decimals: " + deflection + " mm");
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
    (void)workbench_->waitForDocument(std::string(kFileName) + " - dessin");
    say("saved it as " + projectFile());
}

void Story::closeAndReopen() {
    workbench_->choose('F', 'F');
    workbench_->waitForNoDocument();
    workbench_->choose('F', '1');
    showViews(kFileName);
    expect(copyTable() == results_, "the project opened is the one that was saved");
    say("closed it and opened it again from the list of recent files: the same results");
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
    workbench_->waitForHint("Open a project");
    const RECT found = areaOf(workbench_->frame());
    expect(EqualRect(&found, &moved), "the frame is where it was left");
    workbench_->choose('F', '1');
    table_ = workbench_->waitForDocument(std::string(kFileName) + " - results");
    drawing_ = workbench_->waitForDocument(std::string(kFileName) + " - drawing");
    const CopiedTable now = copyTable();
    expect(now.cell("beam") == kBeamName, "the headers are English");
    expect(now.lines.at(1) == results_.lines.at(1), "columns and formats are as they were left");
    takePicture("english", workbench_->frame());
    workbench_->command(VK_F4);
    const HWND keys = workbench_->program().waitForDialog("the list of keys");
    takePicture("keys", keys);
    workbench_->answer(keys, IDCANCEL);
    say("started it again in English: place, columns, formats and recent files are as they were");
}

}  // namespace session
