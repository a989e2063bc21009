// A window that shows a document: a child of the frame. It lives as long as its window; the
// document goes with its last view.
#pragma once

#include "project/document.h"
#include "toolbox/links.h"
#include "toolbox/windowing.h"

class View : public MDIWindowObject {
  public:
    explicit View(Document& document);
    ~View() override;
    /// Opens the window of a new view, which owns it then. A view that gets none is deleted.
    static void open(View* view, const char* className);
    /// An icon is restored.
    void bringToFront() const;

    /// Some of Document::Change happened.
    virtual void documentChanged(unsigned changes) = 0;
    /// "results" or "drawing", which the title names after the document.
    [[nodiscard]] virtual unsigned short nameText() const = 0;

    One<View, Document> document;

  protected:
    /// Asks about closing, tells the workbench of activation. Views pass on what they leave.
    LRESULT handleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    [[nodiscard]] Workbench& workbench() const { return workbench_; }

  private:
    friend class Document;
    void showTitle();

    Workbench& workbench_;
};

/// Tells whether a view is still there: its window, and the view with it, can go while a dialog, a
/// menu or a box is open. Its document stays as long as a dialog, a box or a meter is up.
class ViewWatch {
  public:
    explicit ViewWatch(const View& view) : view_(&view), window_(view.getHWND()) {}
    [[nodiscard]] bool isOpen() const { return WindowDict::find(window_) == view_; }

  private:
    const View* view_;
    HWND window_;
};

/// The document's view of a kind; null when it has none.
template <class Kind>
[[nodiscard]] Kind* viewOf(const Document& document) {
    for (int i = 0; i < document.views.getCount(); ++i)
        if (auto* const view = dynamic_cast<Kind*>(document.views[i])) return view;
    return nullptr;
}

// Each opens a window of its kind for a document, or brings the one that it has to the front.
void showTable(Document& document);
void showDrawing(Document& document);
/// Registers the classes of both.
void registerViews(HINSTANCE instance);
