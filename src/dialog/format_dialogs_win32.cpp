// The modal dialogs that edit a key's format and description, one template for each kind. They are
// the formats' own operation but know keys and texts, so they are here.
#include <string>

#include "base/template_text.h"
#include "base/trimmed.h"
#include "format/format_entry.h"
#include "format_dialogs.h"
#include "text/text_resources.h"
#include "toolbox/keys.h"
#include "toolbox/messages.h"
#include "toolbox/platform.h"
#include "toolbox/windowing.h"
#include "window/dialog_template.h"

namespace {

using namespace toolbox;
using format::EntryField;

enum TextId : unsigned short {
    kWidthRange = 1210,
    kDecimalsRange = 1211,
    kNoBarInDescription = 1212,
    kSampleText = 1213,
    kRange = 1214,
    kSampleCut = 1215
};

constexpr std::size_t kNumberCharacters = 9;  // more than is accepted, so that it can be refused

std::string textOf(HWND window) {
    std::string text(static_cast<std::size_t>(GetWindowTextLengthA(window)) + 1, '\0');
    text.resize(static_cast<std::size_t>(
        GetWindowTextA(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

/// A font of even letters, as high as that of the dialog; null when there is none.
HFONT evenFont(HWND dialog) {
    LOGFONTA font{};
    const auto own = reinterpret_cast<HFONT>(SendMessageA(dialog, WM_GETFONT, 0, 0));
    if (!GetObjectA(own, sizeof font, &font)) return nullptr;
    font.lfPitchAndFamily = FIXED_PITCH | FF_MODERN;
    lstrcpynA(font.lfFaceName, "Courier New", LF_FACESIZE);
    return CreateFontIndirectA(&font);
}

/// A sentence of these dialogs; the library's own where the program has none.
template <class... Args>
RWCString sentence(TextId id, const Args&... args) {
    RWCString found;
    if (GMSG::getString(id, found, args...)) return found;
    text::MessageBuffer own = "";
    text::loadFrom(WindowObject::getLibraryInstance(), id, own, sizeof own);
    text::MessageBuffer printed = "";
    base::printTemplate(printed, sizeof printed, own, args...);
    return printed;
}

const char* templateFor(const FormatType& format) {
    if (format.isReal()) return "DLG_FORMAT_REAL";
    return format.isNumber() ? "DLG_FORMAT_NUMBER" : "DLG_FORMAT_STRING";
}

/// Edits one key while its dialog is open.
class FormatDialog {
  public:
    explicit FormatDialog(UDKeyData& key) : key_(key), draft_(key) {}
    ~FormatDialog() {
        if (font_) DeleteObject(font_);
    }
    FormatDialog(const FormatDialog&) = delete;
    FormatDialog& operator=(const FormatDialog&) = delete;

    /// True when the user confirmed, and the key is changed.
    bool run(HWND parent) {
        return window::showDialog(templateFor(*key_.getFormat()), parent, procedure,
                                  reinterpret_cast<LPARAM>(this)) == kConfirmed;
    }

  private:
    static constexpr INT_PTR kConfirmed = 1;

    static INT_PTR CALLBACK procedure(HWND dialog, UINT message, WPARAM word, LPARAM data);
    void open(HWND dialog);
    void command(int control, int notification);
    void confirm();
    void showPreview();
    void showRange(int control, int minimum, int maximum);
    void refuse(const format::EntryFault& fault);
    void limit(int control, std::size_t characters);
    /// Puts what the fields hold into the draft's format, unless there is a fault.
    std::optional<format::EntryFault> enter();
    [[nodiscard]] std::string textIn(int control) const {
        return textOf(GetDlgItem(dialog_, control));
    }

    HWND dialog_ = nullptr;
    HFONT font_ = nullptr;  // of the sample
    bool filled_ = false;   // the fields tell of changes while they are filled, too
    UDKeyData& key_;
    UDKeyData draft_;
};

INT_PTR CALLBACK FormatDialog::procedure(HWND dialog, UINT message, WPARAM word, LPARAM data) {
    if (message == WM_INITDIALOG) {
        SetWindowLongPtrA(dialog, DWLP_USER, data);
        reinterpret_cast<FormatDialog*>(data)->open(dialog);
        return TRUE;
    }
    auto* const self = reinterpret_cast<FormatDialog*>(GetWindowLongPtrA(dialog, DWLP_USER));
    if (!self || !self->filled_ || message != WM_COMMAND) return FALSE;
    self->command(LOWORD(word), HIWORD(word));
    return TRUE;
}

void FormatDialog::open(HWND dialog) {
    dialog_ = dialog;
    const std::string caption = textOf(dialog) + " - " + key_.getKeyStr().str();
    SetWindowTextA(dialog, caption.c_str());
    limit(IDC_FORMAT_DESCRIPTION, UDKeyData::kMaxDescription);
    limit(IDC_FORMAT_WIDTH, kNumberCharacters);
    limit(IDC_FORMAT_DECIMALS, kNumberCharacters);
    font_ = evenFont(dialog);
    SendDlgItemMessageA(dialog, IDC_FORMAT_PREVIEW, WM_SETFONT, reinterpret_cast<WPARAM>(font_),
                        FALSE);

    const FormatType& format = *key_.getFormat();
    SetDlgItemTextA(dialog, IDC_FORMAT_DESCRIPTION, key_.getDescStr());
    SetDlgItemInt(dialog, IDC_FORMAT_WIDTH, static_cast<UINT>(format.getWidth()), TRUE);
    SetDlgItemInt(dialog, IDC_FORMAT_DECIMALS, static_cast<UINT>(format.getPrecision()), TRUE);
    CheckRadioButton(dialog, IDC_FORMAT_LEFT, IDC_FORMAT_RIGHT,
                     format.getJustify() == Left ? IDC_FORMAT_LEFT : IDC_FORMAT_RIGHT);
    showRange(IDC_FORMAT_WIDTH_RANGE, format::narrowestEntry(format), format::kWidestEntry);
    filled_ = true;
    showPreview();
}

void FormatDialog::limit(int control, std::size_t characters) {
    SendDlgItemMessageA(dialog_, control, EM_LIMITTEXT, characters, 0);
}

void FormatDialog::command(int control, int notification) {
    if (control == IDOK)
        confirm();
    else if (control == IDCANCEL)
        EndDialog(dialog_, 0);
    else if (control == IDC_FORMAT_LEFT || control == IDC_FORMAT_RIGHT ||
             (notification == EN_CHANGE && control != IDC_FORMAT_PREVIEW))
        showPreview();
}

std::optional<format::EntryFault> FormatDialog::enter() {
    const bool left = IsDlgButtonChecked(dialog_, IDC_FORMAT_LEFT) == BST_CHECKED;
    return format::enterFormat({textIn(IDC_FORMAT_DESCRIPTION), textIn(IDC_FORMAT_WIDTH),
                                textIn(IDC_FORMAT_DECIMALS), left ? Left : Right},
                               *key_.getFormat(), *draft_.getFormat());
}

void FormatDialog::showRange(int control, int minimum, int maximum) {
    const bool isOne = minimum <= maximum;
    SetDlgItemTextA(dialog_, control, isOne ? sentence(kRange, minimum, maximum) : RWCString());
}

void FormatDialog::showPreview() {
    RWCString text;
    RWCString warning;
    if (!enter()) {
        const RWCString sample = sentence(kSampleText);
        text = format::previewOf(*draft_.getFormat(), sample.view());
        if (!format::previewFits(*draft_.getFormat(), sample.view()))
            warning = sentence(kSampleCut);
        showRange(IDC_FORMAT_DECIMALS_RANGE, 0,
                  format::mostDecimals(draft_.getFormat()->getWidth()));
    }
    SetDlgItemTextA(dialog_, IDC_FORMAT_WARNING, warning);
    SetDlgItemTextA(dialog_, IDC_FORMAT_PREVIEW, text);
    // Of a column wider than the control the side is shown on which the value stands.
    const WPARAM end = draft_.getFormat()->getJustify() == Left ? 0 : text.length();
    SendDlgItemMessageA(dialog_, IDC_FORMAT_PREVIEW, EM_SETSEL, end, static_cast<LPARAM>(end));
    SendDlgItemMessageA(dialog_, IDC_FORMAT_PREVIEW, EM_SCROLLCARET, 0, 0);
}

void FormatDialog::confirm() {
    if (const auto fault = enter()) return refuse(*fault);
    // In place: the caller may have come by way of the key's own format.
    key_.getFormat()->setFormat(*draft_.getFormat());
    // Without the blanks that would be lost when the key is saved and restored.
    key_.setDescStr(RWCString(base::trimmed(textIn(IDC_FORMAT_DESCRIPTION))));
    EndDialog(dialog_, kConfirmed);
}

void FormatDialog::refuse(const format::EntryFault& fault) {
    struct Field {
        int control;
        TextId message;
    };
    const Field field =
        fault.field == EntryField::description ? Field{IDC_FORMAT_DESCRIPTION, kNoBarInDescription}
        : fault.field == EntryField::width     ? Field{IDC_FORMAT_WIDTH, kWidthRange}
                                               : Field{IDC_FORMAT_DECIMALS, kDecimalsRange};
    const RWCString message = sentence(field.message, fault.minimum, fault.maximum);
    platform::current().prompt->messageBox(dialog_, message,
                                           GMSG::language == GMSG::French ? "Erreur" : "Error",
                                           MB_ICONEXCLAMATION | MB_TASKMODAL);
    // The dialog manager gives the focus, so that the default button stays right; it selects the
    // whole text of an edit control.
    SendMessageA(dialog_, WM_NEXTDLGCTL,
                 reinterpret_cast<WPARAM>(GetDlgItem(dialog_, field.control)), TRUE);
}

int editFormat(const FormatType& kind, HWND parent, UDKeyData& key) {
    return key.getFormat()->isA(kind) && FormatDialog(key).run(parent) ? 1 : 0;
}

}  // namespace

int NumberFormat::setFormatDlg(HWND parent, UDKeyData& key) {
    return editFormat(*this, parent, key);
}

int RealFormat::setFormatDlg(HWND parent, UDKeyData& key) {
    return editFormat(*this, parent, key);
}

int StringFormat::setFormatDlg(HWND parent, UDKeyData& key) {
    return editFormat(*this, parent, key);
}

int NoFormatType::setFormatDlg(HWND, UDKeyData&) {
    return 0;
}
