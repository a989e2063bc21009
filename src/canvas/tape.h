// The bytes of a recording: one element after another, a letter and then its fields, little-endian.
//
//     P  pen      colour (3 bytes), width (double), n (byte), n lengths of dashes (doubles)
//     B  brush    colour (3 bytes)
//     F  font     family, 1 for bold + 2 for italic (bytes), size (double), colour (3 bytes)
//     D  path     1 to outline + 2 to fill (byte), n (int), n steps (bytes), points (doubles)
//     T  text     point, angle (doubles), align, level (bytes), n (int), n runs, m (int), m faults
//                 a run: 1 for Symbol (byte), level + 1 (byte), n (int), n bytes
//                 a fault: place, code (ints)
//     C  clip     n (int), n steps (bytes), points (doubles)
//     U  unclip   nothing
//
// A pen, brush or font holds for the paths and texts after it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "toolbox/canvas.h"

namespace toolbox::canvas {

/// Appends elements; a style only when it differs from the one before.
class TapeWriter {
  public:
    explicit TapeWriter(std::string& bytes) : bytes_(bytes) {}

    void path(const TvPath& path, const TvPen* pen, const TvBrush* brush);
    void text(TvPoint at, const TvText& text, const TvFont& font, const TvTextPlace& place);
    void clip(const TvPath& path);
    void unclip() { bytes_ += 'U'; }

  private:
    void usePen(const TvPen& pen);
    void useBrush(const TvBrush& brush);
    void useFont(const TvFont& font);
    void addPath(const TvPath& path);

    std::string& bytes_;
    std::optional<TvPen> pen_;
    std::optional<TvBrush> brush_;
    std::optional<TvFont> font_;
};

/// Reads elements, whatever the bytes are: an element is sound or next() says that it is not.
class TapeReader {
  public:
    enum class Element : char {
        path = 'D',
        text = 'T',
        clip = 'C',
        unclip = 'U',
        end = 0,
        bad = 1
    };

    /// The next element that draws or clips, with its fields below. `bytes` are the same at every
    /// call, but may have moved.
    Element next(std::string_view bytes);
    /// Where the last element began.
    [[nodiscard]] std::size_t place() const { return start_; }

    TvPath path;
    const TvPen* pen = nullptr;      ///< of the path; null for none
    const TvBrush* brush = nullptr;  ///< of the path; null for none
    TvFont font;                     ///< of the text
    TvText text;
    TvPoint at;
    TvTextPlace textPlace;

  private:
    bool style(char letter);
    bool readPen();
    bool readBrush();
    bool readFont();
    bool readDrawing();
    bool readSteps();
    bool readText();
    bool readRuns();
    bool addStep(unsigned char step);
    template <class T>
    bool take(T& value);
    bool take(TvColor& color);
    bool take(TvPoint& point);
    bool take(std::string& bytes, std::uint32_t n);
    /// A count of things of which each takes at least `size` bytes.
    bool takeCount(std::uint32_t& count, std::size_t size);

    std::string_view bytes_;
    std::size_t offset_ = 0;
    std::size_t start_ = 0;
    std::size_t depth_ = 0;
    TvPen usedPen_;
    TvBrush usedBrush_;
    bool hasPen_ = false;
    bool hasBrush_ = false;
    bool hasFont_ = false;
};

}  // namespace toolbox::canvas
