// A description is one that reads back from a profile.
#include "dialog/keys/description_dialog_win32.h"

#include "base/trimmed.h"
#include "dialog/keys/key_texts.h"
#include "key_dialogs.h"
#include "toolbox/exchange.h"
#include "toolbox/keys.h"

namespace toolbox::keys {

DescriptionDialog::DescriptionDialog(const CString& key, const CString& description)
    : TvDialog("DLG_KEY_DESCRIPTION"), key_(key), description_(description) {}

void DescriptionDialog::opened() {
    char caption[64] = "";
    GetWindowTextA(getHWND(), caption, sizeof caption);
    SetWindowTextA(getHWND(), CString(caption) + " - " + key_);
}

void DescriptionDialog::exchange(TvExchange& fields) {
    fields.text(IDC_KEY_DESCRIPTION, description_, UDKeyData::kMaxDescription);
    if (!fields.isReading()) return;
    description_ = CString(base::trimmed(description_.view()));
    if (description_.view().find('|') != std::string_view::npos)
        fields.fail(IDC_KEY_DESCRIPTION, printed(kNoBar));
}

}  // namespace toolbox::keys
