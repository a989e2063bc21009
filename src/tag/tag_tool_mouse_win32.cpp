// Gestures with the mouse. Taking the capture, selecting and performing call the application, which
// may end the tool: nothing of it is touched then.
#include <windowsx.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include "tag/tag_tool_state_win32.h"

using toolbox::detail::Watch;
using toolbox::tag::Grip;
using toolbox::tag::Handle;
using toolbox::tag::TagDragger;

namespace {

POINT pointOf(const TarvMess& message) {
    return {GET_X_LPARAM(message.lParam), GET_Y_LPARAM(message.lParam)};
}

bool isSame(const POINT& a, const POINT& b) {
    return a.x == b.x && a.y == b.y;
}

RECT shifted(const RECT& box, const POINT& from, const POINT& to) {
    RECT result = box;
    OffsetRect(&result, to.x - from.x, to.y - from.y);
    return result;
}

POINT shifted(const POINT& point, const POINT& from, const POINT& to) {
    return {point.x + to.x - from.x, point.y + to.y - from.y};
}

/// The rectangle between two points.
RECT between(const POINT& a, const POINT& b) {
    return {std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x), std::max(a.y, b.y)};
}

/// The box that a tag has room for when its side is dragged to `x`.
toolbox::PlaneRect widened(const TvTagOnPage& place, double x) {
    const double side = toolbox::tag::widthAt(place, x) + 2 * place.tag->margin;
    toolbox::PlaneRect box = place.box;
    const double point = place.anchor.x + place.tag->offset.x;
    if (place.tag->align == TvAlign::center) box.left = point - side / 2;
    if (place.tag->align == TvAlign::right) box.left = box.right - side;
    box.right = box.left + side;
    return box;
}

}  // namespace

TvPoint TvTagTool::State::onPage(POINT at) const {
    const auto point = fromWindow.mapPoint(
        SmallVector<double, 2>(static_cast<double>(at.x), static_cast<double>(at.y)));
    return {point[0], point[1]};
}

TvPoint TvTagTool::State::stepOnPage(POINT start, POINT end) const {
    const TvPoint a = onPage(start);
    const TvPoint b = onPage(end);
    return {b.x - a.x, b.y - a.y};
}

POINT TvTagTool::State::inWindow(TvPoint point) const {
    const auto mapped = toWindow.mapPoint(SmallVector<double, 2>(point.x, point.y));
    const auto pixel = [](double x) {
        constexpr double kFar = 30000;  // beyond what GDI draws everywhere
        return static_cast<LONG>(std::lround(std::clamp(x, -kFar, kFar)));
    };
    return {pixel(mapped[0]), pixel(mapped[1])};
}

RECT TvTagTool::State::inWindow(const toolbox::PlaneRect& box) const {
    return between(inWindow(TvPoint{box.left, box.top}), inWindow(TvPoint{box.right, box.bottom}));
}

TvTagTool::State::Hit TvTagTool::State::hit(POINT at) {
    const Watch self(life);
    const TvTagOnPage* const one = alone();
    if (self.gone()) return {};
    if (one) {
        const int reach = handleSize() + 1;
        for (const Handle& handle : toolbox::tag::handlesOf(*one)) {
            const POINT place = inWindow(handle.at);
            if (std::abs(place.x - at.x) <= reach && std::abs(place.y - at.y) <= reach)
                return {handle.grip, one->id};
        }
    }
    const TvPoint reach = stepOnPage({0, 0}, {handleSize(), 0});
    const TvTagHit found = layout->find(onPage(at), std::hypot(reach.x, reach.y));
    return {found.part == TvTagHit::None  ? Grip::none
            : found.part == TvTagHit::Box ? Grip::box
                                          : Grip::leader,
            found.id};
}

int TvTagTool::State::mouse(TarvMess& message) {
    switch (message.message) {
        case WM_LBUTTONDOWN:
            return press(message);
        case WM_LBUTTONDBLCLK:
            return doubleClick(message);
        case WM_MOUSEMOVE:
        case WM_LBUTTONUP:
        case WM_RBUTTONDOWN:
        case WM_CANCELMODE:
        case WM_CAPTURECHANGED:
            return follow(message);
        case WM_RBUTTONUP:
            return message.handled = std::exchange(swallowsMenu, false);
        case WM_SETCURSOR:
            return showCursor(message);
        case WM_CONTEXTMENU:
            return showMenu(message);
        default:
            return 0;
    }
}

int TvTagTool::State::press(TarvMess& message) {
    const Watch self(life);
    if (!isVisible) return 0;
    const Hit found = pattern ? Hit() : hit(pointOf(message));
    if (self.gone() || !tagSet()) return 1;
    if (!pattern && found.grip == Grip::none && !hasRubberBand) return 0;
    message.handled = 1;
    nudges = 0;
    taken = found;
    adds = (message.wParam & (MK_CONTROL | MK_SHIFT)) != 0;
    wasSelected = taken.id != 0 && tagSet()->isSelected(taken.id);
    SetFocus(window);
    if (self.gone() || !tagSet()) return 1;
    if (taken.id != 0 && !wasSelected) {
        if (adds)
            tagSet()->select(taken.id);
        else
            tagSet()->setSelection({&taken.id, 1});
    }
    if (self.gone()) return 1;
    UpdateWindow(window);  // what is painted during the gesture would hide a part of its figure
    if (self.gone() || !tagSet()) return 1;
    TagDragger::Shape shown = shape();
    if (self.gone()) return 1;
    dragger.setShape(std::move(shown), taken.grip != Grip::width && taken.grip != Grip::none);
    TarvMess down = message;
    down.message = WM_LBUTTONDOWN;  // a second press is a press
    gesture.drag(down, from, to);
    return 1;
}

/// What the gesture shows: where the boxes go, and their leaders.
TagDragger::Shape TvTagTool::State::shape() {
    if (taken.grip == Grip::none && !pattern)
        return [](const POINT& start, const POINT& end) {
            return TagDragger::Figure{{between(start, end)}, {}};
        };
    if (pattern) {
        const Watch self(life);
        const TvTag tag = *pattern;
        TokenizerUDManager* const keys = tool.keysOf(0, tag);
        const TvTagOnPage place = tvLayOutTag(tag, TransMatrix2D(), keys);
        if (self.gone() || !pattern) return {};
        const TvPoint point{place.anchor.x + tag.offset.x, place.anchor.y + tag.offset.y};
        const RECT box = inWindow(place.box);
        const POINT origin = inWindow(point);
        return [=](const POINT& start, const POINT& end) {
            return TagDragger::Figure{{shifted(box, origin, end)}, {{start, end}}};
        };
    }
    const TvTagOnPage* const grabbed = layout->tag(taken.id);
    if (!grabbed) return {};
    if (taken.grip == Grip::width)
        return [this, place = *grabbed](const POINT&, const POINT& end) {
            return TagDragger::Figure{{inWindow(widened(place, onPage(end).x))}, {}};
        };
    if (taken.grip == Grip::anchor) {
        const POINT anchor = inWindow(grabbed->anchor);
        const RECT box = inWindow(grabbed->box);
        const POINT middle{(box.left + box.right) / 2, (box.top + box.bottom) / 2};
        return [=](const POINT& start, const POINT& end) {
            return TagDragger::Figure{{box}, {{middle, shifted(anchor, start, end)}}};
        };
    }
    std::vector<TvTagOnPage> places;
    for (const TvTagId id : tagSet()->selection()) {
        const TvTagOnPage* const place = layout->tag(id);
        if (place && !place->tag->locked) places.push_back(*place);
    }
    return
        [this, places, whole = taken.grip == Grip::leader](const POINT& start, const POINT& end) {
            TagDragger::Figure figure;
            for (const TvTagOnPage& each : places) {
                figure.boxes.push_back(shifted(inWindow(each.box), start, end));
                if (!each.hasLeader) continue;
                const POINT anchor = inWindow(each.anchor);
                figure.lines.emplace_back(shifted(inWindow(each.leaderStart), start, end),
                                          whole ? shifted(anchor, start, end) : anchor);
            }
            return figure;
        };
}

int TvTagTool::State::follow(TarvMess& message) {
    if (gesture.getState() != MouseDragger::Dragging) return 0;
    const Watch self(life);
    if (message.message == WM_MOUSEMOVE) dragger.setMode((message.wParam & MK_SHIFT) != 0);
    const MouseDragger::State now = gesture.drag(message, from, to);
    if (self.gone()) return 1;
    if (message.message == WM_RBUTTONDOWN) swallowsMenu = true;
    if (now == MouseDragger::Finished) finish();
    return message.handled;
}

void TvTagTool::State::finish() {
    const Watch self(life);
    if (!tagSet()) return;
    if (pattern) return finishPlacing();
    if (taken.grip == Grip::none) return finishRubberBand();
    if (isSame(from, to)) return finishClick();
    const bool moves = taken.grip == Grip::box || taken.grip == Grip::leader;
    auto edit = std::make_unique<TvTagEdit>(
        *tagSet(), taken.grip == Grip::width ? TvTagEdit::Change : TvTagEdit::Move);
    makeLayout();
    if (self.gone() || !tagSet()) return;
    bool some = false;
    for (const TvTagId id : moves ? tagSet()->selection() : std::vector<TvTagId>{taken.id}) {
        const TvTagOnPage* const place = layout->tag(id);
        if (!place || place->tag->locked) continue;
        edit->change(id, dragged(*place));
        some = true;
    }
    if (some)
        perform(std::move(edit));
    else
        MessageBeep(MB_OK);
}

/// The tag after the gesture.
TvTag TvTagTool::State::dragged(const TvTagOnPage& place) const {
    const TvPoint step = stepOnPage(from, to);
    if (taken.grip == Grip::anchor) return toolbox::tag::anchorMoved(*place.tag, step, view);
    if (taken.grip != Grip::width)
        return toolbox::tag::moved(*place.tag, step, taken.grip == Grip::leader, view);
    TvTag tag = *place.tag;
    tag.width = toolbox::tag::widthAt(place, onPage(to).x);
    return tag;
}

void TvTagTool::State::finishClick() {
    if (adds && wasSelected)
        tagSet()->deselect(taken.id);
    else if (!adds)
        tagSet()->setSelection({&taken.id, 1});
}

void TvTagTool::State::finishRubberBand() {
    const Watch self(life);
    std::vector<TvTagId> ids;
    if (adds) ids = tagSet()->selection();
    if (!isSame(from, to)) {
        makeLayout();
        if (self.gone() || !tagSet()) return;
        const TvPoint a = onPage(from);
        const TvPoint b = onPage(to);
        const std::vector<TvTagId> inside = layout->findIn(
            {std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x), std::max(a.y, b.y)});
        ids.insert(ids.end(), inside.begin(), inside.end());
    }
    tagSet()->setSelection(ids);
}

void TvTagTool::State::finishPlacing() {
    const Watch self(life);
    TvTag tag = *std::exchange(pattern, std::nullopt);
    tag.anchor = view.inDrawing(onPage(from));
    if (!isSame(from, to)) tag.offset = stepOnPage(from, to);
    edited = 0;
    if (tag.text.empty() && !tool.edit(tag)) return;
    if (self.gone() || !tagSet()) return;
    auto edit = std::make_unique<TvTagEdit>(*tagSet(), TvTagEdit::Add);
    edit->add(tag);
    perform(std::move(edit));
}

int TvTagTool::State::doubleClick(TarvMess& message) {
    const Watch self(life);
    if (!isVisible || pattern) return press(message);
    const Hit found = hit(pointOf(message));
    if (self.gone() || !tagSet()) return 1;
    if (found.id == 0) return press(message);
    message.handled = 1;
    tagSet()->setSelection({&found.id, 1});
    if (!self.gone() && tagSet()) editOne();
    return 1;
}

int TvTagTool::State::showCursor(const TarvMess& message) {
    const bool isOverTags = LOWORD(message.lParam) == HTCLIENT && isVisible &&
                            reinterpret_cast<HWND>(message.wParam) == window;
    if (!isOverTags) return 0;
    POINT at{};
    GetCursorPos(&at);
    ScreenToClient(window, &at);
    const Watch self(life);
    const Hit found = pattern ? Hit() : hit(at);
    if (self.gone() || !tagSet()) return 1;
    const auto tag = tagSet()->find(found.id);
    const LPCSTR name = pattern || found.grip == Grip::anchor ? IDC_CROSS
                        : found.grip == Grip::width           ? IDC_SIZEWE
                        : tag && !tag->locked                 ? IDC_SIZEALL
                                                              : nullptr;
    if (!name) return 0;
    SetCursor(LoadCursorA(nullptr, name));
    return 1;
}

int TvTagTool::State::showMenu(TarvMess& message) {
    const Watch self(life);
    POINT at = pointOf(message);
    const bool byKey = at.x == -1 && at.y == -1;
    if (byKey) {
        const TvTagOnPage* place = nullptr;
        for (const TvTagId id : tagSet()->selection()) {
            if (!place) place = shown(id);
            if (self.gone() || !tagSet()) return 1;
        }
        if (!place) return 0;
        const RECT box = inWindow(place->box);
        at = {box.left, box.bottom};
    } else {
        ScreenToClient(window, &at);
        const Hit found = isVisible ? hit(at) : Hit();
        if (self.gone() || !tagSet()) return 1;
        if (found.id == 0) return 0;
        if (!tagSet()->isSelected(found.id)) tagSet()->setSelection({&found.id, 1});
    }
    if (!self.gone()) gesture.handlePopupMenu(window, at);
    return 1;
}
