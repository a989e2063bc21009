// The commands: which there are, when they are enabled, and what they do. They go to the document
// of the active window first, then to the program.
#include <string>

#include "dialogs/dialogs.h"
#include "dialogs/file_dialog.h"
#include "drawing/drawing_export.h"
#include "drawing/drawing_view.h"
#include "frame/tracing.h"
#include "frame/view.h"
#include "frame/workbench.h"
#include "frame/workbench_frame.h"
#include "resources/resource.h"
#include "resources/workbench_texts.h"
#include "table/table_view.h"
#include "toolbox/processes.h"

namespace {

constexpr int kModes = 1, kLanguages = 2;  // contexts
constexpr unsigned long kMenu = 1, kPalette = 2;

// Attributes of commands: what must be there for them. Bit 0 is the manager's own way of enabling
// many at once.
constexpr unsigned short kNeedsDocument = 1;

constexpr GCOMMBase::CommRec kCommands[] = {
    {CMD_NEW, 0},
    {CMD_OPEN, 0},
    {CMD_SAVE, 0},
    {CMD_SAVE_AS, kNeedsDocument},
    {CMD_EXPORT, kNeedsDocument},
    {CMD_CLOSE, kNeedsDocument},
    {CMD_UNDO, 0},
    {CMD_REDO, 0},
    {CMD_EDIT, 0},
    {CMD_DELETE, 0},
    {CMD_COPY, kNeedsDocument},
    {CMD_COPY_DRAWING, kNeedsDocument},
    {CMD_TABLE, kNeedsDocument},
    {CMD_DRAWING, kNeedsDocument},
    {CMD_KEY_LIST, 0},
    {CMD_PALETTE, 0},
    {CMD_ZOOM_ALL, kNeedsDocument},
    {CMD_ARRANGE_LABELS, kNeedsDocument},
    {CMD_RECOMPUTE, kNeedsDocument},
    {CMD_FORMAT, kNeedsDocument},
    {CMD_CLOSE_WINDOW, kNeedsDocument},
    {CMD_TILE_VERTICALLY, kNeedsDocument},
    {CMD_TILE_HORIZONTALLY, kNeedsDocument},
    {CMD_CASCADE, kNeedsDocument},
    {CMD_ARRANGE_ICONS, kNeedsDocument},
};
constexpr GCOMMBase::CommRec kModeCommands[] = {
    {CMD_SELECT_MODE, 0},       {CMD_BEAM_MODE, 0},  {CMD_POINT_LOAD_MODE, 0},
    {CMD_UNIFORM_LOAD_MODE, 0}, {CMD_LABEL_MODE, 0},
};

constexpr GCOMMBase::CommRec kLanguageCommands[] = {{CMD_FRENCH, 0}, {CMD_ENGLISH, 0}};

/// The drawing's tool carries it out.
bool labelCommand(Document& document, UINT id) {
    if (!viewOf<DrawingView>(document)) showDrawing(document);
    if (auto* const drawing = viewOf<DrawingView>(document)) drawing->labels().command(id);
    return true;
}

}  // namespace

int Workbench::drawingMode() const {
    return commands_ ? commands_->getContext(kModes)->getSelID() : CMD_SELECT_MODE;
}

void Workbench::createCommands(HWND frameWindow) {
    commands_ = std::make_unique<GCOMMBase>(frameWindow, instance_);
    commands_->createAndManageContext(kModes);
    menu_ = std::make_unique<MenuTool>(kMenu, frame().getFrameMenu(), frameWindow);
    commands_->manage(menu_.get(), 0);
    palette_.create(*commands_, kPalette);
    SetPointer<Tool> menu, both;
    menu.add(menu_.get());
    both.add(menu_.get());
    if (palette_.getTool()) both.add(palette_.getTool());
    commands_->manage(static_cast<int>(std::size(kCommands)), kCommands, menu, -1);
    commands_->manage(static_cast<int>(std::size(kModeCommands)), kModeCommands, both, kModes);
    commands_->createAndManageContext(kLanguages);
    commands_->manage(static_cast<int>(std::size(kLanguageCommands)), kLanguageCommands, menu,
                      kLanguages);
    undo_.showIn(frame().getFrameMenu());
    undo_.refresh();
    (*commands_)[CMD_SELECT_MODE].setCheckStatus(1);
    (*commands_)[GMSG::language == GMSG::French ? CMD_FRENCH : CMD_ENGLISH].setCheckStatus(1);
}

void Workbench::refreshCommands() {
    if (!commands_) return;
    Document* const document = activeDocument();
    UndoStack* const steps = document ? &document->steps() : nullptr;
    if (steps != undo_.stack()) undo_.follow(steps);
    const int is = document != nullptr;
    const int selected = document && document->selection().kind != Selection::Nothing;
    GCOMMBase& commands = *commands_;
    commands.setCommandEnableStatusByAttribute(is, kNeedsDocument);
    // The one with the smallest number is passed over.
    commands[CMD_CLOSE_WINDOW].setEnableStatus(is);
    commands[CMD_SAVE].setEnableStatus(document && document->isModified());
    commands[CMD_EDIT].setEnableStatus(selected);
    commands[CMD_DELETE].setEnableStatus(selected);
    commands.getContext(kModes)->setEnableStatus(is);
    commands[CMD_PALETTE].setCheckStatus(isPaletteVisible());
    static_cast<WorkbenchFrame&>(frame()).showCount(
        document ? text(kBeamCount, document->project().beams().size()) : CString());
}

void Workbench::setLanguage(GMSG::Language language) {
    GMSG::writeProfile("Program", "Language", int{language});
    (*commands_)[language == GMSG::French ? CMD_FRENCH : CMD_ENGLISH].setCheckStatus(1);
    showBox(text(kNextStart), MB_ICONINFORMATION);
}

int Workbench::command(HWND child, WPARAM wParam, LPARAM) {
    const int id = LOWORD(wParam);
    CTvTrace::Trace(TraceCommands, "command %d", id);
    // An accelerator reaches a command that its menu shows as greyed.
    if (commands_ && (*commands_)[id] && !(*commands_)[id].isEnabled()) return 1;
    const auto* const view = child ? dynamic_cast<const View*>(WindowDict::find(child)) : nullptr;
    Document* const document = view ? static_cast<Document*>(view->document) : nullptr;
    if (undo_.command(id)) return 1;
    if (document && documentCommand(*document, id)) return 1;
    return programCommand(id);
}

bool Workbench::documentCommand(Document& document, int id) {
    if (document.selection().kind == Selection::OneLabel) {
        const WindowObject* const active = WindowDict::find(frame().getActiveMDIChild());
        if (id == CMD_EDIT) return labelCommand(document, toolbox::TagEdit);
        if (id == CMD_DELETE) return labelCommand(document, toolbox::TagDelete);
        if (id == CMD_COPY && dynamic_cast<const DrawingView*>(active))
            return labelCommand(document, toolbox::TagCopy);
    }
    switch (id) {
        case CMD_SAVE:
            document.save();
            return true;
        case CMD_SAVE_AS:
            document.saveAs();
            return true;
        case CMD_EXPORT:
            exportDrawing(document);
            return true;
        case CMD_COPY_DRAWING:
            copyDrawing(document);
            return true;
        case CMD_CLOSE:
            closeDocument(document);
            return true;
        case CMD_EDIT:
            editSelected(document);
            return true;
        case CMD_DELETE:
            document.removeSelected();
            return true;
        case CMD_TABLE:
            showTable(document);
            return true;
        case CMD_DRAWING:
            showDrawing(document);
            return true;
        case CMD_RECOMPUTE:
            document.recompute();
            return true;
        case CMD_ZOOM_ALL:
            // From the table: the drawing carries it out. A new one shows everything.
            if (auto* const drawing = viewOf<DrawingView>(document))
                drawing->zoomAll();
            else
                showDrawing(document);
            return true;
        case CMD_ARRANGE_LABELS:
            if (!viewOf<DrawingView>(document)) showDrawing(document);
            if (auto* const drawing = viewOf<DrawingView>(document)) drawing->arrangeLabels();
            return true;
        case CMD_COPY:
        case CMD_FORMAT:
            // From the drawing: the table carries it out.
            if (!viewOf<TableView>(document)) showTable(document);
            if (auto* const table = viewOf<TableView>(document)) table->command(id);
            return true;
        default:
            return false;
    }
}

bool Workbench::programCommand(int id) {
    const HWND frameWindow = frame().getFrame();
    if (id >= CMD_SELECT_MODE && id <= CMD_LABEL_MODE) {
        (*commands_)[id].setCheckStatus(1);
        showHint(text(static_cast<unsigned short>(kFirstModeHint + id - CMD_SELECT_MODE)));
        return true;
    }
    RWCString recent;
    recent_.getLogFile(static_cast<unsigned>(id), recent);
    if (!recent.isNull()) return openFile(CString(recent)), true;
    switch (id) {
        case CMD_NEW:
            showDocument(std::make_unique<Document>(*this));
            return true;
        case CMD_OPEN:
            if (const CString file = askForFile(*this, "", false); !file.empty()) openFile(file);
            return true;
        case CMD_SAMPLE:
            openSample();
            return true;
        case CMD_KEY_LIST:
            showKeyList(*this);
            return true;
        case CMD_PALETTE:
            paletteWanted_ = !isPaletteVisible();
            if (paletteWanted_)
                showPalette();
            else
                palette_.show(0);
            refreshCommands();
            return true;
        case CMD_MESSAGES:
            reviewErrors();
            return true;
        case CMD_FRENCH:
        case CMD_ENGLISH:
            setLanguage(id == CMD_FRENCH ? GMSG::French : GMSG::English);
            return true;
        case CMD_ABOUT:
            showAbout(frameWindow, *this);
            return true;
        case CMD_OPEN_LOG:
            openLog();
            return true;
        default:
            return false;
    }
}

void Workbench::editSelected(Document& document) {
    const Selection selection = document.selection();
    if (selection.kind == Selection::Nothing) return;
    Beam beam = *document.project().beam(selection.id);
    if (editBeam(frame().getFrame(), *this, beam)) document.put(beam);
}

void Workbench::openLog() {
    // By its full name: a bare one is looked for in the current folder only. The line that is
    // passed on begins with the program.
    char folder[MAX_PATH] = "";
    GetSystemWindowsDirectoryA(folder, sizeof folder);
    const std::string editor = std::string(folder) + "\\notepad.exe";
    std::string line = "\"" + editor + "\" \"" + settings_.log.str() + "\"";
    ExecApp(frame().getFrame(), editor.c_str(), line.data(), nullptr);
}
