// Text files in memory. The file is read in pieces that are cut into lines as they come.
#include <algorithm>
#include <cstring>
#include <string>

#include "file/file_system.h"
#include "platform/scoped_file.h"
#include "toolbox/files.h"

using toolbox::files;
using toolbox::platform::ScopedFile;

namespace {

constexpr std::size_t kMaxLine = 511;
constexpr int kMaxTabSize = 32767;
constexpr std::size_t kChunk = 64 * 1024;

/// Cuts bytes that come in pieces into lines.
class LineSplitter {
  public:
    void add(std::string_view piece) {
        for (const char c : piece) {
            if (c == '\n') {
                endLine();
                continue;
            }
            if (line_.size() == kMaxLine) endLine();
            line_ += c;
        }
    }
    std::list<RWCString> finish() {
        if (!line_.empty()) endLine();
        return std::move(lines_);
    }

  private:
    void endLine() {
        lines_.emplace_back(std::string_view(line_));
        line_.clear();
    }

    std::string line_;
    std::list<RWCString> lines_;
};

int widthOf(const std::list<RWCString>& lines) {
    std::size_t width = 0;
    for (const RWCString& line : lines) width = std::max(width, line.length());
    return static_cast<int>(width);
}

}  // namespace

Iofile::Iofile(const char* name) {
    setFileName(name);
}

Iofile::~Iofile() = default;

Iofile::Iofile(const Iofile& other) {
    *this = other;
}

Iofile& Iofile::operator=(const Iofile& other) {
    if (this == &other) return *this;
    lines_ = other.lines_;
    modified_ = other.modified_;
    std::memcpy(fileName_, other.fileName_, sizeof fileName_);
    maxWidth_ = other.maxWidth_;
    nextLine_ = other.nextLine_;
    placeNumber_ = kNoPlace;
    return *this;
}

void Iofile::setFileName(const char* name) {
    const std::string_view whole = name ? name : "";
    // Cleared first: `name` may be longer or shorter than what stood there.
    std::string kept(whole.substr(0, kNameRoom - 1));
    std::memset(fileName_, 0, sizeof fileName_);
    kept.copy(fileName_, kept.size());
}

const char* Iofile::getFileName() const {
    return fileName_;
}

int Iofile::readFile() {
    ScopedFile file(files(), fileName_, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                    OPEN_EXISTING);
    if (!file.valid()) return 0;
    LineSplitter splitter;
    std::string buffer(kChunk, '\0');
    for (;;) {
        std::uint32_t got = 0;
        if (file.read(buffer.data(), buffer.size(), got) != ERROR_SUCCESS) return 0;
        if (got == 0) break;
        splitter.add({buffer.data(), got});
    }
    std::list<RWCString> lines = splitter.finish();
    maxWidth_ = std::max(maxWidth_, widthOf(lines));
    lines_.splice(lines_.end(), lines);
    modified_ = 1;
    return 1;
}

int Iofile::writeFile() {
    ScopedFile file(files(), fileName_, GENERIC_WRITE, FILE_SHARE_READ, CREATE_ALWAYS);
    if (!file.valid()) return 0;
    std::string waiting;
    for (const RWCString& line : lines_) {
        waiting += line.view();
        waiting += '\n';
        if (waiting.size() < kChunk) continue;
        if (file.write(waiting.data(), waiting.size()) != ERROR_SUCCESS) return 0;
        waiting.clear();
    }
    if (!waiting.empty() && file.write(waiting.data(), waiting.size()) != ERROR_SUCCESS) return 0;
    return file.close() == ERROR_SUCCESS;
}

int Iofile::saveFile() {
    return writeFile();
}

void Iofile::append(RWCString line) {
    maxWidth_ = std::max(maxWidth_, static_cast<int>(line.length()));
    lines_.push_back(std::move(line));
    modified_ = 1;
}

int Iofile::addLine(const toolbox::ByteString& line) {
    append(line);
    return 1;
}

int Iofile::addLine(const char* line) {
    append(line);
    return 1;
}

int Iofile::addLine(const char* line, int tabSize) {
    RWCString expanded(line);
    if (!tab2Space(expanded, tabSize)) return 0;
    return addLine(expanded);
}

int Iofile::addBlankLine() {
    return addLine("");
}

const RWCString* Iofile::lineAt(unsigned int n) const {
    if (n >= lines_.size()) return nullptr;
    if (placeNumber_ == kNoPlace || n < placeNumber_) {
        place_ = lines_.begin();
        placeNumber_ = 0;
    }
    std::advance(place_, n - placeNumber_);
    placeNumber_ = n;
    return &*place_;
}

RWCString Iofile::getLine(unsigned int n) const {
    const RWCString* line = lineAt(n);
    return line ? *line : RWCString();
}

char* Iofile::getLine(unsigned int n, char* out) const {
    const RWCString* line = lineAt(n);
    *out = '\0';
    if (!line) return nullptr;
    std::memcpy(out, line->c_str(), line->length() + 1);
    return out;
}

char* Iofile::getLine(char* out) const {
    char* const line = getLine(nextLine_, out);
    if (line) ++nextLine_;
    return line;
}

unsigned int Iofile::getNumLine() const {
    return static_cast<unsigned int>(lines_.size());
}

int Iofile::getMaxWidth() const {
    return maxWidth_;
}

const std::list<RWCString>& Iofile::getListOfString() const {
    return lines_;
}

void Iofile::setListOfString(const std::list<RWCString>& lines) {
    lines_ = lines;
    placeNumber_ = kNoPlace;
    modified_ = 1;
}

void Iofile::clear() {
    if (!lines_.empty()) modified_ = 1;
    lines_.clear();
    placeNumber_ = kNoPlace;
    maxWidth_ = 0;
    nextLine_ = 0;
}

int Iofile::tab2Space(toolbox::ByteString& line, int tabSize) const {
    if (line.length() > kMaxLine || tabSize < 1 || tabSize > kMaxTabSize) return 0;
    std::string expanded;
    // The column counts tabs only, so that text before a tab does not shorten it; saved listings
    // depend on it.
    int column = 0;
    for (const char c : line.view()) {
        if (c != '\t') {
            expanded += c;
            continue;
        }
        const int blanks = tabSize * (column / tabSize + 1) - column + 1;
        expanded.append(static_cast<std::size_t>(blanks), ' ');
        column += blanks - 1;
    }
    line.str() = std::move(expanded);
    return 1;
}

int Iofile::getLengthLine(toolbox::ByteString& line, int tabSize) const {
    return tab2Space(line, tabSize) ? static_cast<int>(line.length()) : 0;
}

int Iofile::getLengthLine(char* line, int tabSize) const {
    RWCString expanded(line);
    const int length = getLengthLine(expanded, tabSize);
    if (length > 0) std::memcpy(line, expanded.c_str(), expanded.length() + 1);
    return length;
}
