// Who is asked before a window closes: its document, when no other window shows it.
#include "frame/view.h"

#include "drawing/drawing_view.h"
#include "frame/workbench.h"
#include "resources/resource.h"
#include "table/table_view.h"

namespace {

/// What the frame asks a window with that it is about to close alone. Anything else asks for the
/// end of all: 1 when the frame closes, what the system sends when the session ends.
bool isAboutOneWindow(WPARAM command) {
    return command == CMD_CLOSE_WINDOW || command == SC_CLOSE || command == SC_DEFAULT;
}

}  // namespace

View::View(Document& shown)
    : document(this, &Document::views, nullptr, &shown), workbench_(shown.workbench()) {}

View::~View() {
    document.disconnect();
    workbench_.viewClosed();
}

void View::open(View* view, const char* className) {
    const Document* const shown = view->document;
    constexpr short kAnywhere = MDI::kDefaultPlace;
    if (view->create(className, "", WS_VISIBLE, kAnywhere, kAnywhere, kAnywhere, kAnywhere, 0))
        return;
    // One whose window came to its end is deleted, and not among the document's views any more.
    if (shown->views.isInSet(view)) delete view;
}

void View::bringToFront() const {
    const HWND client = Workbench::frame().getClient();
    const auto window = reinterpret_cast<WPARAM>(getHWND());
    if (IsIconic(getHWND())) SendMessageA(client, WM_MDIRESTORE, window, 0);
    SendMessageA(client, WM_MDIACTIVATE, window, 0);
}

void View::showTitle() {
    const Document* const shown = document;
    if (!shown) return;
    const CString title = shown->title() + " - " + text(nameText());
    SetWindowTextA(getHWND(), title.c_str());
}

LRESULT View::handleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    Document* const shown = document;
    switch (message) {
        case WM_CREATE:
            showTitle();
            break;
        case WM_MDIACTIVATE:
            // Sent to the window that is left as well.
            if (reinterpret_cast<HWND>(lParam) == getHWND()) workbench_.childActivated(getHWND());
            break;
        case WM_QUERYENDSESSION:
            if (workbench_.isModal()) return 0;
            // The document stays while another window shows it.
            if (!shown || (isAboutOneWindow(wParam) && shown->views.getCount() > 1)) return 1;
            return shown->mayClose();
        case WM_ENDSESSION:
            if (shown && !wParam) shown->keepAsking();
            return 0;
        case WM_CLOSE: {
            if (workbench_.isModal()) return 0;
            const ViewWatch watch(*this);
            const bool isLast = shown && shown->views.getCount() <= 1;
            if ((isLast && !shown->mayClose()) || !watch.isOpen()) return 0;
            break;
        }
        default:
            break;
    }
    return MDIWindowObject::handleMessage(message, wParam, lParam);
}

void registerViews(HINSTANCE instance) {
    registerTableClass(instance);
    registerDrawingClass(instance);
}
