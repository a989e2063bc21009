// The drawing of a document: beams, loads and labels, edited with the mouse.
//
// The window hands its messages to a dispatch server; the drawing modes and the scrolling are
// clients of it.
#pragma once

#include <memory>
#include <vector>

#include "drawing/label_tool.h"
#include "drawing/window_drawing.h"
#include "frame/view.h"
#include "toolbox/dispatch.h"

class DrawingMode;

void registerDrawingClass(HINSTANCE instance);

class DrawingView : public View {
  public:
    /// The window's class.
    static constexpr const char* kClass = "WorkbenchDrawing";

    explicit DrawingView(Document& document);
    ~DrawingView() override;

    void documentChanged(unsigned changes) override;
    [[nodiscard]] unsigned short nameText() const override;

    // For the modes. The document is there as long as messages come.

    [[nodiscard]] Document& shown() const { return *document; }
    [[nodiscard]] const Project& project() const { return shown().project(); }
    [[nodiscard]] const DrawingLayout& layout() const { return layout_; }
    [[nodiscard]] Selection at(Pixel pixel) const;
    [[nodiscard]] const Beam* beamAt(Pixel pixel) const;
    [[nodiscard]] bool isMode(int command) const;
    /// There is one while the window is there.
    [[nodiscard]] LabelTool& labels() const { return *labels_; }
    /// The section for a new beam: of the selected beam, else of the newest, else a usual one.
    [[nodiscard]] CString usualSection() const;

    void zoom(double factor, Pixel about);
    void pan(int dx, int dy);
    void zoomAll();
    /// Scrolls as far as needed for a rectangle to be in sight.
    void reveal(const PixelRect& box);
    /// Moves labels to where they cover nothing.
    void arrangeLabels();
    [[nodiscard]] PixelRect part() const;

  protected:
    LRESULT handleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

  private:
    bool take(UINT message, WPARAM wParam, LPARAM lParam);
    bool takeByLabels(TarvMess& record);
    bool preparePress(const TarvMess& press);
    bool command(UINT id);
    void resized();
    void showFirst();
    void repaint();
    void paint();
    void drawPicture(HDC dc);
    [[nodiscard]] bool showCursor(LPARAM hit) const;
    [[nodiscard]] PixelRect client() const;

    DrawingLayout layout_;
    bool isEmpty_;          // no beam was there when the project was looked at last
    bool isFitted_ = true;  // the user has not looked around yet: the project follows the size
    DispatchServer server_;
    std::unique_ptr<LabelTool> labels_;
    std::vector<std::unique_ptr<DrawingMode>> modes_;
    std::unique_ptr<DispatchClient> scrolling_;
};
