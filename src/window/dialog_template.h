// Dialog templates of the message service's module, of the application or of the library.
#pragma once

#include <windows.h>

#include <vector>

namespace toolbox::window {

/// A template and the module that it belongs to, which has its bitmaps and window classes. Null
/// when there is none. It lives as long as the module.
struct FoundTemplate {
    HINSTANCE module = nullptr;
    const DLGTEMPLATE* dialog = nullptr;
    DWORD size = 0;  ///< bytes

    explicit operator bool() const { return dialog != nullptr; }
};

/// Looks a template up in the message service's module, in the application and in the library, in
/// this order, and takes the first; of several languages that of the message service. When there is
/// none the system's last error says so.
[[nodiscard]] FoundTemplate findTemplate(const char* name);

/// A copy of a template, of the old or the extended kind, whose styles may be changed.
class TemplateCopy {
  public:
    explicit TemplateCopy(const FoundTemplate& found);

    // 0 for a template that is too short to have one.
    [[nodiscard]] DWORD style() const { return read(isExtended() ? 12 : 0); }
    [[nodiscard]] DWORD extendedStyle() const { return read(isExtended() ? 8 : 4); }
    void setStyle(DWORD style) { write(isExtended() ? 12 : 0, style); }
    void setExtendedStyle(DWORD style) { write(isExtended() ? 8 : 4, style); }
    /// As long as the copy lives.
    [[nodiscard]] const DLGTEMPLATE* get() const;

  private:
    [[nodiscard]] bool isExtended() const { return read(0) == 0xFFFF0001; }
    [[nodiscard]] DWORD read(std::size_t at) const;
    void write(std::size_t at, DWORD value);

    std::vector<DWORD> words_;  // aligned as the system wants it
};

/// Opens a modal dialog over `parent` and returns what its procedure gives to EndDialog; 0 or -1
/// when there is no such template or no dialog could be made. The procedure gets `data` in
/// WM_INITDIALOG.
[[nodiscard]] INT_PTR showDialog(const char* name, HWND parent, DLGPROC procedure, LPARAM data);

/// Creates a modeless dialog from a template of `module`, of several languages in that of the
/// message service. Null when there is no such template or no dialog could be made.
[[nodiscard]] HWND createDialog(HINSTANCE module, const char* name, HWND parent, DLGPROC procedure,
                                LPARAM data);

}  // namespace toolbox::window
