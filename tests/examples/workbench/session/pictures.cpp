// Takes pictures of what the workbench shows, for a reader: every dialog, box and strip.
//
//     workbench_pictures WORKBENCH FOLDER fr|en
//
// Nothing is checked but that it appears. scripts/take-pictures runs it in both languages, at other
// resolutions and in other colours.
#include <cstring>
#include <iostream>

#include "hand.h"
#include "key_dialogs.h"
#include "resources/resource.h"
#include "support/window_kit.h"
#include "tag_dialog.h"

namespace session {
namespace {

using toolbox::testing::pressKey;

class Album {
  public:
    Album(const std::string& program, std::string folder, const std::string& language)
        : folder_(std::move(folder)),
          workbench_('"' + program + "\" --settings \"" + folder_ + "\\settings\" --lang " +
                     language) {}

    void take() {
        frame_ = waitFor("the frame", [&] { return workbench_.find("MDIFrame"); });
        command(CMD_NEW);
        command(CMD_DRAWING);
        waitFor("the palette", [&] { return workbench_.windows().size() > 1; });
        beam();
        label();
        keys();
        MoveWindow(frame_, 20, 20, 500, 300, TRUE);
        picture("frame_small", frame_);
        MoveWindow(frame_, 0, 0, 1200, 900, TRUE);
        box("about", CMD_ABOUT);
        box("messages", CMD_MESSAGES);
        box("open", CMD_OPEN);
        box("save_as", CMD_SAVE_AS);
        box("language", CMD_ENGLISH);
        box("changes", CMD_CLOSE);
        meter();
        picture("frame", frame_);
    }

  private:
    void command(int id) const { PostMessageW(frame_, WM_COMMAND, static_cast<WPARAM>(id), 0); }
    void picture(const std::string& name, HWND window) const {
        ::Sleep(150);  // what it does by itself after it was shown
        savePicture(window, folder_ + "\\" + name + ".ppm");
    }
    [[nodiscard]] HWND opened(const std::string& name, HWND over = nullptr) const {
        return waitFor(name, [&]() -> HWND {
            const HWND window = workbench_.waitForDialog(name);
            return window == over ? nullptr : window;
        });
    }
    void cancel(HWND dialog, const std::string& name) const {
        PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
        workbench_.waitUntilGone(name, dialog);
    }
    void box(const std::string& name, int id) const {
        command(id);
        const HWND dialog = opened(name);
        picture(name, dialog);
        cancel(dialog, name);
    }
    [[nodiscard]] POINT inDrawing(double x, double y) const {
        const HWND drawing = reinterpret_cast<HWND>(SendMessageW(
            FindWindowExW(frame_, nullptr, L"MDICLIENT", nullptr), WM_MDIGETACTIVE, 0, 0));
        const RECT area = clientOf(drawing);
        return {area.left + static_cast<LONG>(x * (area.right - area.left)),
                area.top + static_cast<LONG>(y * (area.bottom - area.top))};
    }

    void beam() {
        command(CMD_BEAM_MODE);
        drag(inDrawing(0.2, 0.4), inDrawing(0.6, 0.4));
        command(CMD_POINT_LOAD_MODE);
        drag(inDrawing(0.4, 0.4), inDrawing(0.4, 0.3));
        command(CMD_EDIT);
        const HWND dialog = opened("beam");
        picture("beam", dialog);
        enter(dialog, IDC_BEAM_SPAN, "900");
        PostMessageW(dialog, WM_COMMAND, IDOK, 0);
        ::Sleep(300);
        picture("beam_fault", GetDesktopWindow());
        cancel(dialog, "beam");
    }
    void label() {
        command(CMD_LABEL_MODE);
        click(inDrawing(0.3, 0.8));
        const HWND dialog = opened("label");
        enter(dialog, IDC_TAG_TEXT, "$NAME$ : $F$ $XX$");
        picture("label", dialog);
        PostMessageW(dialog, WM_COMMAND, IDOK, 0);
        workbench_.waitUntilGone("label", dialog);
        picture("frame_after_label", frame_);
    }
    void keys() {
        command(CMD_KEY_LIST);
        const HWND list = opened("keys");
        picture("keys", list);
        for (const char* const key : {"WELY", "NAME"}) {
            enter(list, IDC_KEY_LIST_FILTER, key);
            pressKey(VK_RETURN);
            pressKey(VK_RETURN);
            const HWND format = opened("format", list);
            picture(std::string("format_") + key, format);
            cancel(format, "format");
        }
        pressKey(VK_F2);
        const HWND description = opened("description", list);
        picture("description", description);
        cancel(description, "description");
        SendMessageW(control(list, IDC_KEY_LIST_FILTER), WM_SETTEXT, 0,
                     reinterpret_cast<LPARAM>(L""));
        MoveWindow(list, 10, 10, 100, 100, TRUE);
        picture("keys_small", list);
        MoveWindow(list, 10, 10, 1200, 900, TRUE);
        picture("keys_large", list);
        cancel(list, "keys");
    }
    void meter() {
        command(CMD_SAMPLE);
        const HWND meter = waitFor("the meter", [&]() -> HWND {
            for (const HWND window : workbench_.windows())
                if (FindWindowExW(window, nullptr, L"msctls_progress32", nullptr)) return window;
            return nullptr;
        });
        picture("meter", meter);
        waitFor("the end of the meter", [&] { return !IsWindow(meter); });
    }

    std::string folder_;
    Program workbench_;
    HWND frame_ = nullptr;
};

}  // namespace
}  // namespace session

int main(int count, char** words) {
    if (count == 4)
        return session::drive(words[1], words[2], [&](const auto& program, const auto& folder) {
            session::Album(program, folder, words[3]).take();
        });
    std::cerr << "usage: workbench_pictures WORKBENCH FOLDER fr|en\n";
    return 2;
}
