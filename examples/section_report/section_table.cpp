#include "section_table.h"

#include <functional>
#include <string>

#include "toolbox/formats.h"

namespace {

constexpr int kNumberWidth = 3;

RWCString text(const RWCString& value, int width, Justification justify) {
    StringFormat format;
    format.setFormat(width, justify);
    return format.getString(value);
}

RWCString number(int value, int width) {
    NumberFormatedValue cell;
    cell.setFormat(width, Right);
    cell = value;
    return cell.getStringValue();
}

/// One line: `number`, then what `cell` gives for each selected key.
template <class Cell>
CString line(SectionKeys& keys, const RWCString& number, Cell cell) {
    CString line = number;
    for (int more = keys.setFirstSelection(); more; more = keys.setNextSelection())
        line += " " + cell(keys.getSelectionId());
    return line += "\n";
}

/// A heading stands on the side of its column that the values do.
CString headings(SectionKeys& keys, const char* number,
                 const std::function<RWCString(UINT)>& heading) {
    return line(keys, text(number, kNumberWidth, Right), [&](UINT id) {
        const UDKeyData data = keys.getKeyData(id);
        return text(heading(id), data.getFormat()->getWidth(), data.getFormat()->getJustify());
    });
}

CString inWords(const TarvDateString& date, TarvDateString::Language language) {
    const TarvDateString::Language before = TarvDateString::getLanguage();
    TarvDateString::setLanguage(language);
    CString words = std::to_string(date.getDay());
    words += " " + RWCString(date.getMonthName()) + " " + std::to_string(date.getYear());
    TarvDateString::setLanguage(before);
    return words;
}

}  // namespace

CString dateLine(const TarvDate& date) {
    return inWords(date, TarvDateString::English) + " / " + inWords(date, TarvDateString::French) +
           "\n";
}

CString sectionTable(SectionKeys& keys, const std::vector<Section>& sections) {
    CString table = headings(keys, "No", [&](UINT id) { return keys.getHeaderStr(id); });
    table += headings(keys, "", [&](UINT id) { return keys.getUnitsStr(id); });
    int row = 0;
    for (const Section& section : sections) {
        keys.setCurrent(section);
        table += line(keys, number(++row, kNumberWidth),
                      [&](UINT id) { return keys.getFormatedString(id, 0); });
    }
    return table;
}
