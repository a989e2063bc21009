// Takes the table line by line; every line that is not a section is reported and left out.
#include "section_csv.h"

#include <cmath>
#include <fstream>
#include <map>
#include <string>
#include <string_view>

#include "section_csv_texts.h"
#include "toolbox/messages.h"
#include "toolbox/text.h"

namespace {

constexpr std::size_t kFields = 1 + kColumns.size();
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

std::string_view trimmed(std::string_view text) {
    constexpr const char* kBlanks = " \t\r";
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::vector<CString> fieldsOf(std::string_view line) {
    std::vector<CString> fields;
    for (std::size_t from = 0; from <= line.size();) {
        const std::size_t comma = std::min(line.find(',', from), line.size());
        fields.emplace_back(trimmed(line.substr(from, comma - from)));
        from = comma + 1;
    }
    return fields;
}

std::string heading() {
    std::string text = "designation";
    for (const Column& column : kColumns) text.append(",").append(column.name);
    return text;
}

/// Every number of a section is a size: positive, and whole where the column says so.
bool readValue(const Column& column, const CString& text, double& value) {
    return TvScanfSingle(text, &value) && value > 0 && std::isfinite(value) &&
           (column.precision > 0 || value == std::floor(value));
}

/// One line at a time; reports what is wrong with it.
class SectionReader {
  public:
    void take(std::string_view line) {
        ++number_;
        if (number_ == 1 && line.starts_with(kByteOrderMark))
            line.remove_prefix(kByteOrderMark.size());
        line = trimmed(line);
        if (line.empty() || line.front() == '#') return;
        if (headingSeen_)
            takeSection(fieldsOf(line));
        else
            takeHeading(line);
    }

    /// The heading is not the expected one: the other lines cannot be understood.
    [[nodiscard]] bool hasWrongHeading() const { return hasWrongHeading_; }
    [[nodiscard]] std::vector<Section> result() && { return std::move(sections_); }

  private:
    void takeHeading(std::string_view line) {
        headingSeen_ = true;
        hasWrongHeading_ = line != heading();
        if (hasWrongHeading_) GMSG::errorMsg(kBadHeading, MB_ICONSTOP, number_, heading());
    }

    void takeSection(const std::vector<CString>& fields) {
        if (fields.size() != kFields) {
            GMSG::errorMsg(kFieldCount, MB_ICONEXCLAMATION, number_, fields.size(), kFields);
            return;
        }
        Section section;
        section.designation = fields[0];
        if (fields[0].empty() || fields[0].length() > kDesignationMax) {
            GMSG::errorMsg(kBadDesignation, MB_ICONEXCLAMATION, number_, fields[0]);
            return;
        }
        for (std::size_t i = 0; i < kColumns.size(); ++i) {
            const Column& column = kColumns[i];
            if (readValue(column, fields[i + 1], section.*column.value)) continue;
            GMSG::errorMsg(kBadValue, MB_ICONEXCLAMATION, number_, fields[i + 1], column.name);
            return;
        }
        const auto [earlier, isNew] = lineOf_.try_emplace(fields[0].str(), number_);
        if (isNew)
            sections_.push_back(section);
        else
            GMSG::errorMsg(kTwice, MB_ICONEXCLAMATION, number_, fields[0], earlier->second);
    }

    int number_ = 0;
    bool headingSeen_ = false;
    bool hasWrongHeading_ = false;
    std::vector<Section> sections_;
    std::map<std::string, int> lineOf_;  // by designation
};

}  // namespace

std::vector<Section> readSections(const char* fileName) {
    std::ifstream file(fileName, std::ios::binary);
    std::vector<Section> sections = readSections(file);
    if (!file.is_open() || file.bad()) {
        GMSG::errorMsg(kCannotBeRead, MB_ICONSTOP, fileName);
        return {};
    }
    if (sections.empty()) GMSG::errorMsg(kNoSections, MB_ICONSTOP, fileName);
    return sections;
}

std::vector<Section> readSections(std::istream& table) {
    SectionReader reader;
    for (std::string line; !reader.hasWrongHeading() && std::getline(table, line);)
        reader.take(line);
    return std::move(reader).result();
}
