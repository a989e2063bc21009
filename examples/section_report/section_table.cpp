// A cell is what a key's format prints, so tables and labels follow the formats that the user
// chose.
#include "section_table.h"

#include <functional>

#include "section_texts.h"
#include "toolbox/formats.h"

namespace {

constexpr int kNumberWidth = 3;

RWCString padded(const RWCString& value, int width, Justification justify) {
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
    return line(keys, padded(number, kNumberWidth, Right), [&](UINT id) {
        const UDKeyData data = keys.getKeyData(id);
        return padded(heading(id), data.getFormat()->getWidth(), data.getFormat()->getJustify());
    });
}

}  // namespace

CString sectionTable(SectionKeys& keys, const std::vector<Section>& sections) {
    CString table = headings(keys, "#", [&](UINT id) { return keys.getHeaderStr(id); });
    table += headings(keys, "", [&](UINT id) { return keys.getUnitsStr(id); });
    int row = 0;
    for (const Section& section : sections) {
        keys.setCurrent(section);
        table += line(keys, number(++row, kNumberWidth),
                      [&](UINT id) { return keys.getFormatedString(id, 0); });
    }
    return table;
}

CString legend(SectionKeys& keys) {
    constexpr int kTokenWidth = 11;
    CString lines;
    for (int more = keys.setFirstSelection(); more; more = keys.setNextSelection()) {
        const UDKeyData data = keys.getKeyData(keys.getSelectionId());
        lines += "  " + padded("$" + data.getKeyStr() + "$", kTokenWidth, Left);
        lines += data.getDescStr();
        if (!data.getUnitsStr().empty()) lines += ", " + data.getUnitsStr();
        lines += "\n";
    }
    return lines;
}

CString labels(SectionKeys& keys, const RWCString& text, const std::vector<Section>& sections) {
    for (const toolbox::TemplateProblem& problem : keys.checkTemplate(text))
        GMSG::errorMsg(kBadToken, MB_ICONEXCLAMATION, problem.position + 1, problem.word);
    CString lines;
    for (const Section& section : sections) {
        keys.setCurrent(section);
        lines += "  " + keys.getParseString(text, 1) + "\n";
    }
    return lines;
}
