#include "section_table.h"

#include <string>

#include "toolbox/formats.h"

namespace {

constexpr int kNumberWidth = 3;
constexpr int kDesignationWidth = 11;

RWCString text(const char* value, int width, Justification justify) {
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

/// A real that needs more room for its integer part gives up decimals, as the format does.
RWCString cell(const Column& column, double value) {
    if (column.precision == 0) return number(static_cast<int>(value), column.width);
    RealFormatedValue real;
    real.setFormat(column.width, column.precision, Right);
    real = value;
    return real.getStringValue();
}

/// One line of headings: `field` of every column.
CString headings(const char* number, const char* designation, const char* Column::*field) {
    CString line = text(number, kNumberWidth, Right);
    line += " " + text(designation, kDesignationWidth, Left);
    for (const Column& column : kColumns) line += " " + text(column.*field, column.width, Right);
    return line += "\n";
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

CString sectionTable(const std::vector<Section>& sections) {
    CString table = headings("No", "designation", &Column::name);
    table += headings("", "", &Column::unit);
    int row = 0;
    for (const Section& section : sections) {
        table += number(++row, kNumberWidth);
        table += " " + text(section.designation, kDesignationWidth, Left);
        for (const Column& column : kColumns) table += " " + cell(column, section.*column.value);
        table += "\n";
    }
    return table;
}
