// All sizes are parts of the area, so that the pictures are sharp at any resolution.
#include "tag/editor/tag_pictures_win32.h"

#include <algorithm>
#include <iterator>

namespace toolbox::tag {
namespace {

RECT inner(SIZE area, int margin) {
    return {margin, margin, area.cx - margin, area.cy - margin};
}

/// Three lines of text of different lengths; `column` says on which side they begin alike.
void drawLines(HDC context, const RECT& box, int column) {
    constexpr int kParts[] = {100, 60, 80};
    const LONG width = box.right - box.left;
    const int count = std::size(kParts);
    for (int i = 0; i < count; ++i) {
        const LONG length = width * kParts[i] / 100;
        const LONG left = box.left + (width - length) * column / 2;
        const LONG y = box.top + (box.bottom - box.top) * (2 * i + 1) / (2 * count);
        MoveToEx(context, left, y, nullptr);
        LineTo(context, left + length, y);
    }
}

}  // namespace

PictureButton::Draw alignmentPicture(int place) {
    return [=](HDC context, SIZE area, bool) {
        const int column = place % 3;
        const int row = place / 3;
        const int radius = std::max(2, static_cast<int>(area.cy) / 7);
        const RECT box = inner(area, radius);
        Rectangle(context, box.left, box.top, box.right, box.bottom);
        RECT text = box;
        InflateRect(&text, -2 * radius, -radius);
        drawLines(context, text, column);
        const POINT at{box.left + (box.right - 1 - box.left) * column / 2,
                       box.top + (box.bottom - 1 - box.top) * row / 2};
        SelectObject(context, GetStockObject(DC_BRUSH));
        SetDCBrushColor(context, GetTextColor(context));
        Ellipse(context, at.x - radius, at.y - radius, at.x + radius + 1, at.y + radius + 1);
    };
}

PictureButton::Draw borderPicture(int border) {
    return [=](HDC context, SIZE area, bool) {
        const RECT box = inner(area, static_cast<int>(area.cy) / 8);
        const int round = static_cast<int>(area.cy) / 2;
        if (border == 1) Rectangle(context, box.left, box.top, box.right, box.bottom);
        if (border == 2) RoundRect(context, box.left, box.top, box.right, box.bottom, round, round);
        if (border == 3) {
            MoveToEx(context, box.left, box.bottom - 1, nullptr);
            LineTo(context, box.right, box.bottom - 1);
        }
        RECT text = box;
        InflateRect(&text, -static_cast<int>(area.cx) / 8, -static_cast<int>(area.cy) / 8);
        drawLines(context, text, 0);
    };
}

PictureButton::Draw colorPicture(TvColor color) {
    return [=](HDC context, SIZE area, bool isShape) {
        SelectObject(context, GetStockObject(DC_BRUSH));
        SetDCBrushColor(context, isShape ? RGB(0, 0, 0) : RGB(color.red, color.green, color.blue));
        Rectangle(context, 0, 0, area.cx, area.cy);
    };
}

}  // namespace toolbox::tag
