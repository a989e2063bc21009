// Columns are replaced as a whole when they changed; those that stay keep the user's widths.
#include "table/table_columns.h"

#include <algorithm>

#include "table/table_text.h"

namespace {

/// Beside the text, on both sides together.
constexpr int kMargins = 16;  // pixels

int textWidth(HWND list, const char* text) {
    return static_cast<int>(
        SendMessageA(list, LVM_GETSTRINGWIDTHA, 0, reinterpret_cast<LPARAM>(text)));
}

}  // namespace

TableColumns::Column TableColumns::columnFor(UDManager& keys, UINT key) {
    const UDKeyData data = keys.getKeyData(key);
    return {key, headingOf(keys, key), data.getFormat()->getWidth(),
            data.getFormat()->getJustify()};
}

void TableColumns::show(HWND list, UDManager& keys) {
    std::vector<Column> wanted;
    for (const UINT key : keys.getSelection()) {
        Column column = columnFor(keys, key);
        const auto shown = std::ranges::find_if(
            columns_, [&](const Column& other) { return other.looksLike(column); });
        if (shown != columns_.end())
            column.width = ListView_GetColumnWidth(list, shown - columns_.begin());
        else
            column.width = std::max(column.characters * textWidth(list, "0"),
                                    textWidth(list, column.heading)) +
                           kMargins;
        wanted.push_back(column);
    }
    if (wanted == columns_ &&
        dragged(list) == std::vector<UINT>(keys.getSelection().begin(), keys.getSelection().end()))
        return;

    // New ones are added after those shown, which are deleted then: the system keeps the first
    // column at the left when it is made or changed, but not when it has become the first.
    SendMessageA(list, WM_SETREDRAW, FALSE, 0);
    int before = static_cast<int>(columns_.size());
    if (before == 0) {
        LVCOLUMNA none{};
        SendMessageA(list, LVM_INSERTCOLUMNA, 0, reinterpret_cast<LPARAM>(&none));
        before = 1;
    }
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        LVCOLUMNA column{};
        column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT;
        column.fmt = wanted[i].side == Left ? LVCFMT_LEFT : LVCFMT_RIGHT;
        column.cx = wanted[i].width;
        column.pszText = wanted[i].heading.str().data();
        SendMessageA(list, LVM_INSERTCOLUMNA, static_cast<WPARAM>(before) + i,
                     reinterpret_cast<LPARAM>(&column));
    }
    for (int i = 0; i < before; ++i) ListView_DeleteColumn(list, 0);
    columns_ = std::move(wanted);
    SendMessageA(list, WM_SETREDRAW, TRUE, 0);
}

UINT TableColumns::key(int column) const {
    return column >= 0 && column < count() ? columns_[static_cast<std::size_t>(column)].key : 0;
}

std::vector<UINT> TableColumns::keys() const {
    std::vector<UINT> keys;
    for (const Column& column : columns_) keys.push_back(column.key);
    return keys;
}

int TableColumns::indexOf(UINT key) const {
    const auto found = std::ranges::find(columns_, key, &Column::key);
    return found == columns_.end() ? -1 : static_cast<int>(found - columns_.begin());
}

std::vector<UINT> TableColumns::dragged(HWND list) const {
    std::vector<int> order(columns_.size());
    std::vector<UINT> keys;
    if (!ListView_GetColumnOrderArray(list, count(), order.data())) return keys;
    for (const int column : order) keys.push_back(key(column));
    return keys;
}
