// The template has room for all that a question can have, one below the other; what a question has
// not is hidden, and the rest moves up.
#include "dialog/documents/question_dialog_win32.h"

#include <algorithm>
#include <utility>

#include "document_dialogs.h"
#include "toolbox/messages.h"

namespace toolbox::documents {
namespace {

constexpr int kMostAnswers = 3;
constexpr int kGap = 3, kMargin = 7;  // dialog units

CString textOf(unsigned short id) {
    RWCString text;
    GMSG::getString(id, text);
    return text;
}

}  // namespace

QuestionDialog::QuestionDialog(Question question)
    : TvDialog("DLG_DOCUMENT_QUESTION"), question_(std::move(question)) {}

RECT QuestionDialog::areaOf(int id) const {
    RECT area{};
    GetWindowRect(control(id), &area);
    MapWindowPoints(nullptr, getHWND(), reinterpret_cast<POINT*>(&area), 2);
    return area;
}

int QuestionDialog::textHeight() const {
    const HWND text = control(IDC_DOCUMENT_TEXT);
    RECT area = areaOf(IDC_DOCUMENT_TEXT);
    area.right -= area.left;
    area.left = area.top = area.bottom = 0;
    const HDC dc = GetDC(text);
    const HGDIOBJ before =
        SelectObject(dc, reinterpret_cast<HGDIOBJ>(SendMessageA(text, WM_GETFONT, 0, 0)));
    DrawTextA(dc, question_.text.c_str(), -1, &area,
              DT_CALCRECT | DT_WORDBREAK | DT_EDITCONTROL | DT_NOPREFIX);
    SelectObject(dc, before);
    ReleaseDC(text, dc);
    return area.bottom;
}

/// Returns where the next control begins.
int QuestionDialog::place(int id, int top, int height) {
    const RECT area = areaOf(id);
    MoveWindow(control(id), area.left, top, area.right - area.left, height, TRUE);
    RECT gap{0, 0, 0, kGap};
    MapDialogRect(getHWND(), &gap);
    return top + height + gap.bottom;
}

void QuestionDialog::opened() {
    SetWindowTextA(getHWND(), GMSG::getAppTitle());
    SendMessageA(
        control(IDC_DOCUMENT_ICON), STM_SETICON,
        reinterpret_cast<WPARAM>(LoadIconA(nullptr, reinterpret_cast<LPCSTR>(IDI_WARNING))), 0);
    setText(IDC_DOCUMENT_TEXT, question_.text);
    const int iconEnd = areaOf(IDC_DOCUMENT_ICON).bottom;
    const int top = areaOf(IDC_DOCUMENT_TEXT).top;
    int next = place(IDC_DOCUMENT_TEXT, top, std::max(textHeight(), iconEnd - top));
    const HWND list = control(IDC_DOCUMENT_LINES);
    for (const CString& line : question_.lines)
        SendMessageA(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(line.c_str()));
    const RECT lines = areaOf(IDC_DOCUMENT_LINES);
    if (question_.lines.empty())
        ShowWindow(list, SW_HIDE);
    else
        next = place(IDC_DOCUMENT_LINES, next, lines.bottom - lines.top);

    const RECT button = areaOf(IDCANCEL);
    const int height = button.bottom - button.top;
    for (int i = 0; i < kMostAnswers; ++i) {
        const int id = IDC_DOCUMENT_ANSWER + i;
        if (i >= static_cast<int>(question_.answers.size())) {
            ShowWindow(control(id), SW_HIDE);
            continue;
        }
        setText(id, textOf(question_.answers[static_cast<std::size_t>(i)]));
        next = place(id, next, height);
    }
    setText(IDCANCEL, textOf(question_.cancel));
    next = place(IDCANCEL, next, height);
    RECT all{0, 0, 0, kMargin - kGap};
    MapDialogRect(getHWND(), &all);
    RECT client{};
    GetClientRect(getHWND(), &client);
    RECT frame{};
    GetWindowRect(getHWND(), &frame);
    const int more = next + all.bottom - client.bottom;
    SetWindowPos(getHWND(), nullptr, 0, 0, frame.right - frame.left,
                 frame.bottom - frame.top + more, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

int QuestionDialog::command(int id, int notification) {
    const int answer = id - IDC_DOCUMENT_ANSWER;
    if (notification != BN_CLICKED || answer < 0 || answer >= kMostAnswers) return 0;
    close(answer + 1);
    return 1;
}

}  // namespace toolbox::documents
