// Input goes through the dispatch server to the modes; painting goes through a picture in memory.
#include "drawing/drawing_view.h"

#include <algorithm>

#include "drawing/drawing_mode.h"
#include "frame/workbench.h"
#include "resources/resource.h"
#include "resources/workbench_texts.h"
#include "toolbox/canvas_device.h"

namespace {

/// A project whose metres would be fewer pixels than the first cannot be read as a whole: its upper
/// left is shown, with the second.
constexpr double kTooSmall = 14, kReadable = 34;

/// A device context with a picture of its own, as large as a window.
class BackBuffer {
  public:
    BackBuffer(HDC window, int width, int height)
        : dc_(CreateCompatibleDC(window)), bitmap_(CreateCompatibleBitmap(window, width, height)) {
        before_ = SelectObject(dc_, bitmap_);
    }
    ~BackBuffer() {
        SelectObject(dc_, before_);
        DeleteObject(bitmap_);
        DeleteDC(dc_);
    }
    BackBuffer(const BackBuffer&) = delete;
    BackBuffer& operator=(const BackBuffer&) = delete;
    operator HDC() const { return dc_; }

  private:
    HDC dc_;
    HBITMAP bitmap_;
    HGDIOBJ before_;
};

/// Keeps the figures of gestures off the window while it is painted: drawn twice they are gone.
class FiguresAside {
  public:
    FiguresAside(HWND window, const std::vector<std::unique_ptr<DrawingMode>>& modes)
        : window_(window), dc_(GetDC(window)), modes_(modes) {
        for (const auto& mode : modes_) mode->hideFigure(dc_);
    }
    ~FiguresAside() {
        for (const auto& mode : modes_) mode->showFigure(dc_);
        ReleaseDC(window_, dc_);
    }
    FiguresAside(const FiguresAside&) = delete;
    FiguresAside& operator=(const FiguresAside&) = delete;

  private:
    HWND window_;
    HDC dc_;
    const std::vector<std::unique_ptr<DrawingMode>>& modes_;
};

/// What the library's menu of tags offers. False for a command of another kind.
bool apply(UINT command, TvTag& tag) {
    switch (command) {
        case toolbox::TagAlignLeft:
        case toolbox::TagAlignCenter:
        case toolbox::TagAlignRight:
            tag.align = static_cast<TvAlign>(command - toolbox::TagAlignLeft);
            return true;
        case toolbox::TagAlignTop:
            tag.level = TvLevel::top;
            return true;
        case toolbox::TagAlignMiddle:
            tag.level = TvLevel::middle;
            return true;
        case toolbox::TagAlignBottom:
            tag.level = TvLevel::bottom;
            return true;
        case toolbox::TagNoBorder:
        case toolbox::TagBorder:
            setFramed(tag, command == toolbox::TagBorder);
            return true;
        case toolbox::TagRoundedBorder:
            tag.border = TvTagBorder::rounded;
            return true;
        case toolbox::TagUnderline:
            tag.border = TvTagBorder::underline;
            return true;
        case toolbox::TagFilled:
            tag.fill.filled = !tag.fill.filled;
            return true;
        case toolbox::TagLeader:
            tag.leader = !tag.leader;
            return true;
        case toolbox::TagLocked:
            tag.locked = !tag.locked;
            return true;
        default:
            return false;
    }
}

}  // namespace

void registerDrawingClass(HINSTANCE instance) {
    WNDCLASSA type{};
    type.style = CS_DBLCLKS | CS_HREDRAW | CS_VREDRAW;
    type.lpfnWndProc = WindowObject::StdWinProc;
    type.cbWndExtra = sizeof(void*);
    type.hInstance = instance;
    type.hIcon = LoadIconA(instance, MAKEINTRESOURCEA(IDI_FRAME));
    type.lpszClassName = DrawingView::kClass;
    RegisterClassA(&type);
}

void showDrawing(Document& document) {
    if (const DrawingView* const shown = viewOf<DrawingView>(document))
        shown->bringToFront();
    else
        View::open(new DrawingView(document), DrawingView::kClass);
}

DrawingView::DrawingView(Document& document_)
    : View(document_),
      layout_(depthIn(document_.work())),
      modes_(drawingModes(*this, server_)),
      scrolling_(::scrolling(*this, server_)) {
    layout_.measureLoads(project());
    isEmpty_ = project().beams().empty();
}

DrawingView::~DrawingView() = default;

unsigned short DrawingView::nameText() const {
    return kDrawingName;
}

void DrawingView::documentChanged(unsigned changes) {
    if (changes & Document::Content) {
        layout_.measureLoads(project());
        // Another project, rather than the first beam drawn.
        if (isEmpty_ && project().beams().size() > 1) showFirst();
        isEmpty_ = project().beams().empty();
    }
    repaint();
}

LRESULT DrawingView::handleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (document && take(message, wParam, lParam)) return 0;
    if (message == WM_SETCURSOR && showCursor(lParam)) return TRUE;
    if (message == WM_ERASEBKGND) return TRUE;
    return View::handleMessage(message, wParam, lParam);
}

/// True when the message needs nothing else, or the view went with it.
bool DrawingView::take(UINT message, WPARAM wParam, LPARAM lParam) {
    TarvMess record(getHWND(), message, wParam, lParam, 0);
    switch (message) {
        case WM_PAINT:
            paint();
            return true;
        case WM_SIZE:
            resized();
            return false;  // a maximized document's frame follows
        case WM_COMMAND:
            return command(LOWORD(wParam));
        case WM_KEYDOWN:
            if (wParam == VK_ESCAPE) return command(IDCANCEL);
            break;
        case WM_LBUTTONDOWN:
        case WM_RBUTTONDOWN:
        case WM_MBUTTONDOWN:
            if (GetFocus() != getHWND()) SetFocus(getHWND());
            break;
        default:
            break;
    }
    const bool isInput = (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST) ||
                         message == WM_KEYDOWN || message == WM_CAPTURECHANGED;
    const ViewWatch watch(*this);
    if (isInput) server_.dispatch(record, 0);
    return record.handled != 0 || !watch.isOpen();
}

bool DrawingView::command(UINT id) {
    switch (id) {
        case IDCANCEL: {
            TarvMess cancel(getHWND(), WM_COMMAND, IDCANCEL, 0, 0);
            server_.dispatch(cancel, 0);
            return true;
        }
        case toolbox::TagEdit:
            PostMessageA(Workbench::frame().getFrame(), WM_COMMAND, CMD_EDIT, 0);
            return true;
        case toolbox::TagDelete:
            shown().removeSelected();
            return true;
        default:
            return id > toolbox::TagDelete && id <= toolbox::TagLocked && changeLabel(id);
    }
}

/// False for what labels do not know.
bool DrawingView::changeLabel(UINT command) {
    const Selection& chosen = shown().selection();
    const Label* const found =
        chosen.kind == Selection::OneLabel ? project().label(chosen.id) : nullptr;
    if (!found) return true;
    Label label = *found;
    if (!apply(command, label.tag)) return false;
    shown().put(std::move(label));
    return true;
}

PixelRect DrawingView::client() const {
    RECT area{};
    GetClientRect(getHWND(), &area);
    return {0, 0, area.right, area.bottom};
}

PixelRect DrawingView::part() const {
    return drawingPart(client());
}

void DrawingView::resized() {
    if (isFitted_ && part().width() > 0 && part().height() > 0) showFirst();
}

void DrawingView::showFirst() {
    zoomAll();
    if (layout_.plane.scale() < kTooSmall)
        layout_.plane = DrawingPlane(extentOf(project()), part(), kReadable);
}

void DrawingView::zoomAll() {
    isFitted_ = true;
    layout_.fit(project(), part());
    repaint();
}

void DrawingView::zoom(double factor, Pixel about) {
    isFitted_ = false;
    layout_.plane.zoom(factor, about);
    repaint();
}

void DrawingView::pan(int dx, int dy) {
    isFitted_ = false;
    layout_.plane.pan(dx, dy);
    repaint();
}

void DrawingView::repaint() const {
    if (getHWND()) InvalidateRect(getHWND(), nullptr, FALSE);
}

void DrawingView::paint() {
    const FiguresAside aside(getHWND(), modes_);
    PAINTSTRUCT state{};
    const HDC window = BeginPaint(getHWND(), &state);
    const PixelRect all = client();
    if (all.width() > 0 && all.height() > 0) {
        const BackBuffer buffer(window, all.width(), all.height());
        drawPicture(buffer);
        BitBlt(window, 0, 0, all.width(), all.height(), buffer, 0, 0, SRCCOPY);
    }
    EndPaint(getHWND(), &state);
}

void DrawingView::drawPicture(HDC dc) {
    const PixelRect all = client();
    // A point of the canvas is a pixel.
    TvDeviceCanvas canvas(dc, {.width = static_cast<double>(all.width()),
                               .height = static_cast<double>(all.height())});
    const Scene scene{shown().work(), workbench().keys(), layout_, drawingPart(all)};
    labels_ = drawWindow(canvas, scene, all, shown().selection());
}

bool DrawingView::showCursor(LPARAM hit) const {
    if (LOWORD(hit) != HTCLIENT || isMode(CMD_SELECT_MODE)) return false;
    SetCursor(LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_CROSS)));
    return true;
}

Selection DrawingView::at(Pixel pixel) const {
    return part().contains(pixel) ? hitTest(project(), layout_, labels_, pixel) : Selection();
}

const Beam* DrawingView::beamAt(Pixel pixel) const {
    return ::beamAt(project(), layout_, pixel);
}

bool DrawingView::isMode(int command) const {
    return workbench().drawingMode() == command;
}

void DrawingView::arrangeLabels() {
    std::vector<Label> moved =
        arrangedLabels({shown().work(), workbench().keys(), layout_, part()});
    const auto lost = static_cast<int>(
        std::ranges::count_if(moved, [](const Label& label) { return label.tag.unplaced; }));
    const auto placed = static_cast<int>(moved.size()) - lost;
    if (!moved.empty()) shown().put(std::move(moved), kStepArrangeLabels);
    workbench().showHint(text(kLabelsArranged, placed, lost));
}

CString DrawingView::usualSection() const {
    const std::vector<Beam>& beams = project().beams();
    const Selection& chosen = shown().selection();
    const bool isBeam = chosen.kind == Selection::OneBeam || chosen.kind == Selection::OneLoad;
    if (const Beam* beam = isBeam ? project().beam(chosen.id) : nullptr) return beam->section;
    if (!beams.empty()) return beams.back().section;
    const std::vector<Section>& sections = workbench().sections();
    return sections.empty() ? CString() : sections[sections.size() / 2].designation;
}
