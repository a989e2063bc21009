// Lines are kept as they came; two maps lead from names to places among them.
#include "platform/posix/sectioned_text.h"

namespace toolbox::platform::posix {

SectionedText::SectionedText(const LineSyntax& syntax, std::string_view text) : syntax_(syntax) {
    sections_.emplace_back();
    byName_.emplace(std::string(), 0);
    bool first = true;
    while (!text.empty()) {
        const std::string_view line = text.substr(0, syntax_.lineLength(text));
        text.remove_prefix(line.size());
        if (first && !lineBreakOf(line).empty()) lineBreak_ = lineBreakOf(line);
        first = false;
        LineMeaning meaning = syntax_.meaning(line);
        if (meaning.kind == LineMeaning::Kind::header) {
            byName_.emplace(std::move(meaning.name), sections_.size());
            sections_.emplace_back().header = line;
        } else {
            addLine(sections_.back(), line, std::move(meaning));
        }
    }
}

void SectionedText::addLine(Section& section, std::string_view line, LineMeaning meaning) {
    if (meaning.kind == LineMeaning::Kind::blank) {
        section.blankEnd += line;
        return;
    }
    if (!section.blankEnd.empty()) {
        section.lines.push_back(std::move(section.blankEnd));
        section.blankEnd.clear();
    }
    section.lines.emplace_back(line);
    const auto place = section.lines.size() - 1;
    if (!section.entries.emplace(std::move(meaning.name), place).second) section.hasTwins = true;
}

std::string_view SectionedText::lineBreakOf(std::string_view line) const {
    std::size_t length = line.ends_with("\r\n") ? 2 : line.ends_with('\n') ? 1 : 0;
    if (length == 0 && syntax_.endsAtReturn && line.ends_with('\r')) length = 1;
    return line.substr(line.size() - length);
}

const std::string* SectionedText::find(const std::string& section, const std::string& entry) const {
    const auto inside = byName_.find(section);
    if (inside == byName_.end()) return nullptr;
    const Section& owner = sections_[inside->second];
    const auto place = owner.entries.find(entry);
    return place == owner.entries.end() ? nullptr : &owner.lines[place->second];
}

bool SectionedText::put(const std::string& section, std::string_view header,
                        const std::string& entry, std::string_view line) {
    Section& inside = openSection(section, header);
    const auto place = inside.entries.find(entry);
    if (place == inside.entries.end()) {
        appendEntry(inside, entry, line);
        return true;
    }
    std::string& old = inside.lines[place->second];
    const std::string_view lineBreak = lineBreakOf(old);
    if (std::string_view(old).substr(0, old.size() - lineBreak.size()) == line) return false;
    old = std::string(line).append(lineBreak);
    return true;
}

SectionedText::Section& SectionedText::openSection(const std::string& name,
                                                   std::string_view header) {
    const auto known = byName_.find(name);
    if (known != byName_.end()) return sections_[known->second];
    Section& last = sections_.back();
    endWithBreak(!last.blankEnd.empty() ? last.blankEnd
                 : last.lines.empty()   ? last.header
                                        : last.lines.back());
    byName_.emplace(name, sections_.size());
    Section& added = sections_.emplace_back();
    added.header = std::string(header).append(lineBreak_);
    return added;
}

void SectionedText::appendEntry(Section& section, const std::string& entry, std::string_view line) {
    endWithBreak(section.lines.empty() ? section.header : section.lines.back());
    section.entries.emplace(entry, section.lines.size());
    section.lines.push_back(std::string(line).append(lineBreak_));
}

/// Only the last line of the text can be without its end. A line that goes on in the next one takes
/// a second line break. `lines` is one line or several blank ones, which do not go on.
void SectionedText::endWithBreak(std::string& lines) const {
    constexpr char kNext = 'x';
    if (lines.empty()) return;
    if (lineBreakOf(lines).empty()) lines += lineBreak_;
    if (syntax_.lineLength(lines + kNext) > lines.size()) lines += lineBreak_;
}

bool SectionedText::erase(const std::string& section, const std::string& entry) {
    const auto inside = byName_.find(section);
    if (inside == byName_.end()) return false;
    Section& owner = sections_[inside->second];
    const auto place = owner.entries.find(entry);
    if (place == owner.entries.end()) return false;
    // An emptied line keeps the places of the others.
    owner.lines[place->second].clear();
    owner.entries.erase(place);
    if (!owner.hasTwins) return true;
    for (std::size_t i = 0; i < owner.lines.size(); ++i) {
        const LineMeaning meaning = syntax_.meaning(owner.lines[i]);
        if (meaning.kind == LineMeaning::Kind::entry && meaning.name == entry) {
            owner.entries.emplace(entry, i);
            break;
        }
    }
    return true;
}

std::string SectionedText::text() const {
    std::string result;
    for (const Section& section : sections_) {
        result += section.header;
        for (const std::string& line : section.lines) result += line;
        result += section.blankEnd;
    }
    return result;
}

}  // namespace toolbox::platform::posix
