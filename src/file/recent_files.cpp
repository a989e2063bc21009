// The list of recent files, and its profile section.
#include "toolbox/recent_files.h"

#include <array>
#include <string>
#include <utility>
#include <vector>

#include "file/recent_items.h"
#include "toolbox/platform.h"

namespace {

using namespace toolbox;

constexpr const char* kSection = "Files_opened";

std::string entryOf(std::size_t number) {
    return "File_" + std::to_string(number);
}

}  // namespace

RWCString file::recentItemLabel(std::size_t place, const RWCString& name) {
    return RWCString("&" + std::to_string(place + 1) + " ") + name;
}

HistoricMenuFile::HistoricMenuFile() = default;
HistoricMenuFile::~HistoricMenuFile() = default;
HistoricMenuFile::HistoricMenuFile(const HistoricMenuFile&) = default;
HistoricMenuFile& HistoricMenuFile::operator=(const HistoricMenuFile&) = default;

void HistoricMenuFile::init(HWND window, unsigned int anchorID, unsigned int firstID) {
    window_ = window;
    anchorID_ = anchorID;
    firstID_ = firstID != 0 ? firstID : anchorID + 1;
    files_.clear();
}

void HistoricMenuFile::setLogFile(const RWCString& name) {
    if (name.empty()) return;
    RWCString newest = name;  // `name` may be one of the list
    files_.remove(newest);
    files_.push_front(std::move(newest));
    if (files_.size() > file::kMostRecentFiles) files_.resize(file::kMostRecentFiles);
#if defined(_WIN32)
    file::showRecentItems(window_, anchorID_, firstID_, files_);
#endif
}

void HistoricMenuFile::getLogFile(unsigned int commandID, RWCString& out) const {
    out = RWCString();
    if (commandID < firstID_ || commandID - firstID_ >= files_.size()) return;
    out = *std::next(files_.begin(), static_cast<std::ptrdiff_t>(commandID - firstID_));
}

int HistoricMenuFile::ecrire(const char* profileFile) const {
    std::array<std::string, file::kMostRecentFiles> names;
    std::vector<platform::ProfileEntry> entries;
    for (const RWCString& name : files_) {
        std::string& entry = names[entries.size()] = entryOf(entries.size() + 1);
        entries.push_back({entry.c_str(), name});
    }
    return platform::current().profiles->writeMany(profileFile, kSection, entries) == ERROR_SUCCESS;
}

void HistoricMenuFile::lire(const char* profileFile) {
    constexpr int kTextSize = 1024;
    files_.clear();
    for (std::size_t number = file::kMostRecentFiles; number > 0; --number) {
        char name[kTextSize];
        platform::current().profiles->read(profileFile, kSection, entryOf(number).c_str(), "", name,
                                           kTextSize);
        setLogFile(RWCString(name));
    }
}
