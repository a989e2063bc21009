// A canvas that notes what reaches it.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "toolbox/canvas.h"

struct DrawnPath {
    TvPath path;
    TvPen pen;      ///< none() without
    TvBrush brush;  ///< not filled without
    std::size_t clips = 0;
    bool operator==(const DrawnPath&) const = default;
};

struct DrawnText {
    TvPoint at;
    TvText text;
    TvFont font;
    TvTextPlace place;
    std::size_t clips = 0;
    bool operator==(const DrawnText&) const = default;
};

class ProbeCanvas : public TvCanvas {
  public:
    ProbeCanvas() : TvCanvas(600, 800) {}

    std::vector<DrawnPath> paths;
    std::vector<DrawnText> texts;
    std::vector<TvPath> clippings;  ///< those in force
    std::function<void()> whenDrawn = [] {};

  protected:
    void onPath(const TvPath& path, const TvPen* pen, const TvBrush* brush) override {
        paths.push_back(
            {path, pen ? *pen : TvPen::none(), brush ? *brush : TvBrush(), clippings.size()});
        told();
    }
    void onText(TvPoint at, const TvText& text, const TvFont& font,
                const TvTextPlace& place) override {
        texts.push_back({at, text, font, place, clippings.size()});
        told();
    }
    void onClip(const TvPath& path) override { clippings.push_back(path); }
    void onUnclip() override { clippings.pop_back(); }

  private:
    void told() {
        const auto tell = whenDrawn;  // it may delete this canvas
        tell();
    }
};
