// A canvas: one way to draw lines, shapes and texts, whatever they end on.
//
//     void drawBeam(TvCanvas& canvas) {
//         canvas.setPen({TvColor{0, 0, 160}, 1.5});                // colour, width in points
//         canvas.line({50, 100}, {250, 100});
//         canvas.setBrush(TvColor{200, 200, 200});
//         canvas.polygon({{50, 100}, {45, 110}, {55, 110}});
//         canvas.setFont({TvFont::Helvetica, 10});
//         canvas.text({150, 92}, TvText("q").subscript("Ed").add(" = 12.5 kN/m"),
//                     {TvAlign::center});
//     }
//
//     TvSvg svg(300, 150);                          TvPdf pdf;
//     drawBeam(svg);                                drawBeam(pdf.addPage(300, 150));
//     CString why;                                  if (!pdf.write("beam.pdf", &why)) show(why);
//     if (!svg.write("beam.svg", &why)) show(why);
//
// A TvRecording keeps a drawing, stores it in a variable record and plays it on any other canvas.
// canvas_device.h has the canvases of Windows: on device contexts, and enhanced metafiles.
//
// The canvas is a page: its unit is the point (1/72 inch), its origin the upper left corner, y
// points down. A transform maps what is drawn onto it:
//     canvas.setTransform(TransMatrix2D().scale(20, -20).translate(50, 100));   // metres, y up
// Transforms map coordinates. Widths of pens, dashes and sizes of texts are points of the page
// whatever the transform, and letters are never mirrored. Angles are radians from the x axis
// towards the y axis, as those of TransMatrix2D: clockwise as seen where y points down.
//
// Drawing operations return 1; 0 when nothing was drawn, with the reason among faults(). A
// coordinate must be finite and at most kTvCanvasFar points off the page's origin.
//
// What goes out is the same bytes on every system and under any locale. All calls come from one
// thread.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "toolbox/canvas_text.h"
#include "toolbox/detail/watch.h"
#include "toolbox/export.h"
#include "toolbox/records.h"
#include "toolbox/strings.h"
#include "toolbox/transform.h"

namespace toolbox::canvas {
class PdfPage;
class TapeReader;
}  // namespace toolbox::canvas

/// How lines and outlines are drawn. Lines end flat where they end and turn round corners. A plain
/// value.
struct TvPen {
    TvColor color{};     ///< black at first
    double width = 0.5;  ///< points; 0 or less draws nothing, the thinnest is 0.001
    /// Lengths in points that are drawn and left out by turns, up to the first that is 0; an odd
    /// number of them goes round twice. None is a solid line.
    std::array<double, 6> dash{};

    /// Draws nothing.
    [[nodiscard]] static constexpr TvPen none() { return {{}, 0, {}}; }
    bool operator==(const TvPen&) const = default;
};

/// How shapes are filled: with one colour, or not at all. A plain value.
struct TvBrush {
    TvColor color{};      ///< black at first
    bool filled = false;  ///< false: fills nothing

    constexpr TvBrush() = default;                                  ///< fills nothing
    constexpr TvBrush(TvColor fill) : color(fill), filled(true) {}  ///< fills with the colour
    bool operator==(const TvBrush&) const = default;
};

/// Lines and curves, in one piece or several. What lies inside an odd number of outlines is inside:
/// an outline within another makes a hole. Pieces are closed to be filled, not to be outlined.
class TB_API TvPath {
  public:
    /// What a step does; it takes the next 1, 1, 3 or 0 points.
    enum Step : unsigned char { Move, Line, Curve, Close };

    /// Starts a piece.
    TvPath& moveTo(TvPoint to);
    /// A straight line from where the piece is; without a piece, as after close(), it starts one.
    TvPath& lineTo(TvPoint to);
    /// A cubic Bezier curve with two control points; without a piece it starts one at the first.
    TvPath& curveTo(TvPoint control1, TvPoint control2, TvPoint to);
    /// A line back to the start of the piece, which ends. Nothing without a piece.
    TvPath& close();

    // Whole pieces; a shape that needs more points than there are adds none.
    TvPath& polyline(std::span<const TvPoint> points);
    TvPath& polygon(std::span<const TvPoint> points);
    /// Sides in any order.
    TvPath& rectangle(const toolbox::PlaneRect& rect);
    /// With half axes along x and y; a turned one comes of a transform.
    TvPath& ellipse(TvPoint center, double radiusX, double radiusY);
    /// The part of an ellipse from an angle over another, which may be negative; a full turn or
    /// more is all of it, closed. Off the true arc by less than 0.03 % of the radius. The angles
    /// are those of the circle that is stretched to the ellipse.
    TvPath& arc(TvPoint center, double radiusX, double radiusY, double start, double sweep);

    /// Drops everything and keeps the memory.
    void clear();
    /// True when it has no step.
    [[nodiscard]] bool empty() const { return steps_.empty(); }
    // What it is made of.
    [[nodiscard]] std::span<const Step> steps() const { return steps_; }
    [[nodiscard]] std::span<const TvPoint> points() const { return points_; }
    /// The image of another path takes the place of this one.
    void setMapped(const TvPath& other, const TransMatrix2D& transform);
    bool operator==(const TvPath&) const = default;

  private:
    [[nodiscard]] bool isOpen() const { return !steps_.empty() && steps_.back() != Close; }

    std::vector<Step> steps_;
    std::vector<TvPoint> points_;
};

/// Why something was not drawn as it was asked for.
struct TB_API TvCanvasFault {
    /// What is wrong.
    enum Kind : unsigned char {
        Character,   ///< a character is in no font: '?' stands in its place
        Coordinate,  ///< not finite or too far away: nothing was drawn
        Style,       ///< a pen or font with numbers that cannot be: the one before stays
        Unmatched,   ///< restore() without save()
        Device,      ///< the device refused: it is not there, or has no memory
    };
    Kind kind = Character;    ///< what is wrong
    std::size_t drawing = 0;  ///< paths and texts that had been drawn before
    TvTextFault character{};  ///< which one, of a text
    std::string text{};       ///< of which text, in Windows-1252 with '?'

    /// A sentence in the language of GMSG.
    [[nodiscard]] CString sentence() const;
};

/// Beyond this many points from the origin, along x or y, nothing is drawn: 352 km of paper.
inline constexpr double kTvCanvasFar = 1e9;

/// What is drawn on. Derived classes take paths and texts in points of the page.
///
/// A canvas may be deleted from within what it calls; the operation then touches nothing any more
/// and returns 0.
class TB_API TvCanvas {
  public:
    virtual ~TvCanvas();
    TvCanvas(const TvCanvas&) = delete;
    TvCanvas& operator=(const TvCanvas&) = delete;

    // The page's size in points.
    [[nodiscard]] double width() const { return width_; }
    [[nodiscard]] double height() const { return height_; }

    // What the next operations draw with. At first a black pen of half a point, no brush, Helvetica
    // of 10 points in black and no transform. A style with a number that is not finite, a negative
    // length of a dash or a font size that is not from 0.01 to 10000 is refused.
    int setPen(const TvPen& pen);
    int setBrush(const TvBrush& brush);
    int setFont(const TvFont& font);
    /// Maps what is drawn from here on, instead of the transform before. Its third row plays no
    /// part; what it maps to is checked as it is drawn.
    void setTransform(const TransMatrix2D& transform);
    // The current ones.
    [[nodiscard]] const TvPen& pen() const { return state_.pen; }
    [[nodiscard]] const TvBrush& brush() const { return state_.brush; }
    [[nodiscard]] const TvFont& font() const { return state_.font; }
    [[nodiscard]] const TransMatrix2D& transform() const { return state_.transform; }

    /// Remembers pen, brush, font, transform and clipping; may be nested.
    void save();
    /// Returns to what the last save() remembered; 0 when there is none.
    int restore();

    /// Nothing outside the path, or the rectangle, is drawn until restore(); together with those
    /// before. An empty path hides everything.
    int clip(const TvPath& path);
    int clip(const toolbox::PlaneRect& rect);

    // With the pen. Fewer than two points draw nothing, which is no fault.
    int line(TvPoint from, TvPoint to);
    int polyline(std::span<const TvPoint> points);
    int polyline(std::initializer_list<TvPoint> points);
    int arc(TvPoint center, double radiusX, double radiusY, double start, double sweep);
    // With the brush, then with the pen. Polygons of fewer than two points draw nothing.
    int polygon(std::span<const TvPoint> points);
    int polygon(std::initializer_list<TvPoint> points);
    int rectangle(const toolbox::PlaneRect& rect);
    int ellipse(TvPoint center, double radiusX, double radiusY);
    int path(const TvPath& path);

    /// Draws a text at a point, in the font and its colour. A character that no font has is drawn
    /// as '?' and noted among the faults, and the result is 1.
    int text(TvPoint at, const TvText& text, const TvTextPlace& place = {});
    /// The text's extent in the current font.
    [[nodiscard]] TvTextExtent measure(const TvText& text) const;

    // What could not be drawn, in order: the first 100, and how many there were in all.
    [[nodiscard]] const std::vector<TvCanvasFault>& faults() const { return faults_; }
    [[nodiscard]] std::size_t faultCount() const { return faultCount_; }

  protected:
    /// Page sizes from 1 to 14400 points (200 inches); others are moved to the nearer end, what is
    /// no number to 1.
    TvCanvas(double width, double height);

    // What a derived class draws, all in points of the page. A pen or brush that draws nothing is
    // null; one of the two is there. Styles are valid until the call ends.
    virtual void onPath(const TvPath& path, const TvPen* pen, const TvBrush* brush) = 0;
    virtual void onText(TvPoint at, const TvText& text, const TvFont& font,
                        const TvTextPlace& place) = 0;
    /// Clips to the path, besides what is clipped to already.
    virtual void onClip(const TvPath& path) = 0;
    /// Takes back the last onClip() that was not taken back.
    virtual void onUnclip() = 0;
    /// Says from within one of these that it could not be done: what was called for the drawing
    /// returns 0 and notes a fault.
    void refuse() { refused_ = true; }
    /// Clippings that were not taken back.
    [[nodiscard]] std::size_t clipDepth() const { return state_.clips; }

  private:
    friend class TvRecording;

    struct State {
        TvPen pen;
        TvBrush brush;
        TvFont font;
        TransMatrix2D transform;
        std::size_t clips = 0;
    };

    int drawScratch(bool fill);
    int drawPath(const TvPath& path, const TvPen& pen, const TvBrush& brush);
    int drawText(TvPoint at, const TvText& text, const TvFont& font, const TvTextPlace& place);
    int fault(TvCanvasFault fault);
    int outcome();
    void reset(double width, double height);

    double width_;
    double height_;
    State state_;
    std::vector<State> saved_;
    bool plain_ = true;  ///< the transform is the identity
    TvPath scratch_;     ///< of the shape that is being drawn
    TvPath page_;        ///< and its image; both keep their memory
    bool refused_ = false;
    std::size_t drawings_ = 0;
    std::vector<TvCanvasFault> faults_;
    std::size_t faultCount_ = 0;
    toolbox::detail::Watched<> life_;
};

/// A drawing in memory, which can be played on any canvas and stored. It holds what was drawn, as
/// it lies on the page: transforms and styles that nothing was drawn with leave no trace.
class TB_API TvRecording : public TvCanvas {
  public:
    /// An empty drawing; sizes as TvCanvas takes them.
    TvRecording(double width, double height);
    ~TvRecording() override;

    /// Draws everything on `target`, mapped by its transform; afterwards the target's styles,
    /// transform and clipping are as before. The target may be this recording, which then has
    /// everything twice, and may delete this recording. Characters that were missing are noted
    /// among the target's faults. Returns 1; 0 when a path or text was refused (the others are
    /// drawn) or the target was deleted.
    int play(TvCanvas& target) const;

    /// Appends the drawing to a record: its length, a version of its own, a check sum.
    /// Clippings that are open are closed in what is stored. Throws VarRecordException as records
    /// do.
    void store(VarRecord& record) const;
    /// Reads at the record's cursor what store() appended, in place of this drawing and its size;
    /// what save() remembered, clippings and faults are gone then, styles and the transform stay.
    /// Returns 1; 0 when the bytes are damaged or not a drawing, or a newer version stored them:
    /// recording and cursor are then as before, and `why`, unless null, has a sentence. Every byte
    /// is checked before any is taken.
    int load(VarRecord& record, CString* why);

    /// Bytes that it holds.
    [[nodiscard]] std::size_t size() const;

  protected:
    void onPath(const TvPath& path, const TvPen* pen, const TvBrush* brush) override;
    void onText(TvPoint at, const TvText& text, const TvFont& font,
                const TvTextPlace& place) override;
    void onClip(const TvPath& path) override;
    void onUnclip() override;

  private:
    struct Tape;
    static int playElement(TvCanvas& target, const toolbox::canvas::TapeReader& reader,
                           char element);

    std::shared_ptr<Tape> tape_;
};

/// A drawing as SVG 1.1. Texts stay texts, each run with the width that is measured here
/// (textLength), in Helvetica, Times or Courier or what the reader has in their place; signs of the
/// Symbol font are their Unicode characters.
class TB_API TvSvg : public TvCanvas {
  public:
    /// An empty drawing; sizes as TvCanvas takes them.
    TvSvg(double width, double height);
    ~TvSvg() override;

    /// What readers show as its name, in Windows-1252.
    void setTitle(std::string_view title);
    /// The file as it stands, whole: clippings that are open are closed in it.
    [[nodiscard]] std::string bytes() const;
    /// Writes it beside the file of that name and then in its place. 0 with the system's reason in
    /// `why`, unless null; an existing file is then unchanged.
    int write(const char* fileName, CString* why) const;

  protected:
    void onPath(const TvPath& path, const TvPen* pen, const TvBrush* brush) override;
    void onText(TvPoint at, const TvText& text, const TvFont& font,
                const TvTextPlace& place) override;
    void onClip(const TvPath& path) override;
    void onUnclip() override;

  private:
    std::string title_;
    std::string body_;
    std::size_t clipPaths_ = 0;
    std::optional<TvPen> pen_;  ///< the last one
    std::string penText_;       ///< and what it is in the file
};

/// Drawings as the pages of a PDF 1.4 file, with the standard fonts, which every reader has: texts
/// can be searched and copied, Greek letters too. Nothing in it is compressed or dated.
class TB_API TvPdf {
  public:
    TvPdf();
    ~TvPdf();
    TvPdf(const TvPdf&) = delete;
    TvPdf& operator=(const TvPdf&) = delete;

    /// A new page after the others, which lives as long as this object; sizes as TvCanvas takes
    /// them. A4 is 595 by 842.
    TvCanvas& addPage(double width, double height);
    /// What readers show as its name, in Windows-1252.
    void setTitle(std::string_view title);
    /// The file as it stands, whole: clippings that are open are closed in it. Without pages it has
    /// an empty one, A4, for a PDF file needs one.
    [[nodiscard]] std::string bytes() const;
    /// As TvSvg::write().
    int write(const char* fileName, CString* why) const;

  private:
    std::vector<std::unique_ptr<toolbox::canvas::PdfPage>> pages_;
    std::string title_;
};
