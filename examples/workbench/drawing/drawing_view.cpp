// Input goes through the dispatch server to the modes; painting goes through a picture in memory.
#include "drawing/drawing_view.h"

#include <algorithm>
#include <cmath>

#include "drawing/drawing_mode.h"
#include "drawing/screen_scale.h"
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
    if (labels_) labels_->follow();
    repaint();
}

LRESULT DrawingView::handleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (document && take(message, wParam, lParam)) return message == WM_SETCURSOR;
    if (message == WM_SETCURSOR && showCursor(lParam)) return TRUE;
    if (message == WM_ERASEBKGND) return TRUE;
    return View::handleMessage(message, wParam, lParam);
}

/// True when the message needs nothing else, or the view went with it.
bool DrawingView::take(UINT message, WPARAM wParam, LPARAM lParam) {
    TarvMess record(getHWND(), message, wParam, lParam, 0);
    switch (message) {
        case WM_CREATE:
            labels_ = std::make_unique<LabelTool>(*this);
            return false;
        case WM_PAINT:
            paint();
            return true;
        case WM_SIZE:
            resized();
            return false;  // a maximized document's frame follows
        case WM_COMMAND:
            return command(LOWORD(wParam));
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
    if (takeByLabels(record)) return true;
    if (message == WM_KEYDOWN && wParam == VK_ESCAPE) return command(IDCANCEL);
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
        default:
            return labels_->command(id) != 0;
    }
}

/// True when the message is about labels, or the view went with it. A gesture of a mode goes on
/// without them.
bool DrawingView::takeByLabels(TarvMess& record) {
    const auto isDragging = [](const auto& mode) { return mode->isDragging(); };
    if (!labels_ || std::ranges::any_of(modes_, isDragging)) return false;
    const bool isPress = record.message == WM_LBUTTONDOWN || record.message == WM_LBUTTONDBLCLK;
    const bool isPointing = isPress || record.message == WM_SETCURSOR;
    if (isPointing && !isMode(CMD_SELECT_MODE) && !isMode(CMD_LABEL_MODE)) return false;
    const ViewWatch watch(*this);
    if (isPress && !preparePress(record)) return false;
    return labels_->handle(record) != 0 || !watch.isOpen();
}

/// False when labels have nothing to do with the press.
bool DrawingView::preparePress(const TarvMess& press) {
    const Pixel pixel = pixelOf(press.lParam);
    if (!part().contains(pixel)) return false;
    labels_->cancel();
    if (isMode(CMD_LABEL_MODE)) {
        if (!project().beams().empty())
            labels_->placeNew();
        else
            workbench().report(kNoBeamForLabel, MB_ICONEXCLAMATION);
        return !project().beams().empty();
    }
    // From nothing a rectangle selects labels.
    const bool isOnNothing = at(pixel).kind == Selection::Nothing;
    labels_->setRubberBand(isOnNothing);
    if (isOnNothing && shown().selection().kind != Selection::OneLabel) shown().select({});
    return true;
}

PixelRect DrawingView::client() const {
    RECT area{};
    GetClientRect(getHWND(), &area);
    const double scale = ScreenScale().factor();
    return {0, 0, static_cast<int>(std::ceil(area.right / scale)),
            static_cast<int>(std::ceil(area.bottom / scale))};
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

void DrawingView::reveal(const PixelRect& box) {
    const PixelRect seen = part();
    const auto shift = [](int low, int high, int least, int most) {
        return low < least ? least - low : high > most ? std::max(most - high, least - low) : 0;
    };
    const int dx = shift(box.left, box.right, seen.left, seen.right);
    const int dy = shift(box.top, box.bottom, seen.top, seen.bottom);
    if (dx != 0 || dy != 0) pan(dx, dy);
}

void DrawingView::repaint() {
    if (!labels_) return;
    const double scale = ScreenScale().factor();
    labels_->setView(layout_.plane.matrix(), TransMatrix2D().scale(scale, scale));
    InvalidateRect(getHWND(), nullptr, FALSE);
}

void DrawingView::paint() {
    const FiguresAside aside(getHWND(), modes_);
    PAINTSTRUCT state{};
    const HDC window = BeginPaint(getHWND(), &state);
    RECT all{};
    GetClientRect(getHWND(), &all);
    if (all.right > 0 && all.bottom > 0) {
        const BackBuffer buffer(window, all.right, all.bottom);
        drawPicture(buffer);
        BitBlt(window, 0, 0, all.right, all.bottom, buffer, 0, 0, SRCCOPY);
    }
    EndPaint(getHWND(), &state);
}

void DrawingView::drawPicture(HDC dc) {
    const PixelRect all = client();
    const ScreenScale screen;
    {
        TvDeviceCanvas canvas(dc, {.width = static_cast<double>(all.width()),
                                   .height = static_cast<double>(all.height()),
                                   .scaleX = screen.factor(),
                                   .scaleY = screen.factor()});
        const Scene scene{shown().work(), layout_, drawingPart(all)};
        drawWindow(canvas, scene, all, shown().selection(), *labels_->layout());
    }
    const POINT corner = screen.toWindow({part().left, part().top});
    const POINT end = screen.toWindow({part().right, part().bottom});
    IntersectClipRect(dc, corner.x, corner.y, end.x, end.y);
    labels_->paint(dc);
}

bool DrawingView::showCursor(LPARAM hit) const {
    if (LOWORD(hit) != HTCLIENT || isMode(CMD_SELECT_MODE)) return false;
    SetCursor(LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_CROSS)));
    return true;
}

Selection DrawingView::at(Pixel pixel) const {
    return part().contains(pixel) ? hitTest(project(), layout_, *labels_->layout(), pixel)
                                  : Selection();
}

const Beam* DrawingView::beamAt(Pixel pixel) const {
    return ::beamAt(project(), layout_, pixel);
}

bool DrawingView::isMode(int command) const {
    return workbench().drawingMode() == command;
}

void DrawingView::arrangeLabels() {
    std::vector<Label> moved = arrangedLabels({shown().work(), layout_, part()});
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
