// A window that shows a document: a child of the frame. It lives as long as its window; the
// document goes with its last view.
#pragma once

#include "document.h"
#include "toolbox/links.h"
#include "toolbox/windowing.h"

class View : public MDIWindowObject {
  public:
    explicit View(Document& document);
    ~View() override;

    /// Some of Document::Change happened.
    virtual void documentChanged(unsigned changes) = 0;
    /// "results" or "drawing", which the title names behind the document.
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

// Each opens a window of its kind for a document, or brings the one that it has to the front.
void showTable(Document& document);
void showDrawing(Document& document);
/// Registers the classes of both.
void registerViews(HINSTANCE instance);
