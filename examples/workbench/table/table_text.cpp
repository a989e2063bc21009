// Cells as the keys print them, and the text of many rows for the clipboard.
#include "table/table_text.h"

#include "frame/workbench.h"

CString cellText(Document& document, std::size_t row, UINT key) {
    ProjectKeys& keys = document.workbench().keys();
    if (document.setCurrentKeys(row)) return keys.shown(key);
    if (row >= document.project().beams().size()) return {};
    const Beam& beam = document.project().beams()[row];
    StringFormatedValue given;
    if (key == keys.getId("NAME"))
        given = beam.name;
    else if (key == keys.getId("SECTION"))
        given = beam.section;
    else
        return {};
    return keys.shown(key, given);
}

CString headingOf(UDManager& keys, UINT key) {
    CString heading = keys.getHeaderStr(key);
    const RWCString units = keys.getUnitsStr(key);
    if (!units.empty()) heading += " [" + units + "]";
    return heading;
}

std::string tableText(Document& document, const std::vector<UINT>& keys,
                      const std::vector<std::size_t>& rows) {
    std::string text;
    const auto addLine = [&](const auto& cellFor) {
        for (std::size_t i = 0; i < keys.size(); ++i) {
            if (i > 0) text += '\t';
            text += cellFor(keys[i]).view();
        }
        text += "\r\n";
    };
    addLine([&](UINT key) { return headingOf(document.workbench().keys(), key); });
    for (const std::size_t row : rows)
        addLine([&](UINT key) { return cellText(document, row, key); });
    return text;
}
