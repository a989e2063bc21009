// Fills a folder beside its place and moves it, or its files, there at the end.
#include "system/output_folder.h"

#include "terminal/failure.h"
#include "terminal/terminal.h"

namespace tbfile {
namespace {

namespace fs = std::filesystem;

Path withoutSlash(const Path& path) {
    return !path.has_filename() && path.has_relative_path() ? path.parent_path() : path;
}

/// Whether there is a folder; throws Failure for one that may not be filled, and for what is none.
bool mayFill(const Path& target, bool replaces) {
    std::error_code error;
    if (!fs::exists(fs::symlink_status(target, error))) return false;
    if (!fs::is_directory(target, error)) throw Failure(Text::notAFolder, {nameOf(target)});
    const bool empty = fs::is_empty(target, error);
    if (error) throw Failure(Text::cannotOpen, {nameOf(target), reasonOf(error)});
    if (!empty && !replaces) throw Failure(Text::exists, {nameOf(target)});
    return true;
}

}  // namespace

OutputFolder::OutputFolder(Path target, Access access, bool replaces)
    : target_(withoutSlash(target)),
      access_(std::move(access)),
      replaces_(replaces),
      existed_(mayFill(target_, replaces)) {
    makeBeside(existed_ ? target_ / "new" : target_, [&](const Path& name) {
        const bool made = makePrivateFolder(name, target_);
        if (made) beside_ = name;
        return made;
    });
}

OutputFolder::~OutputFolder() {
    std::error_code ignored;
    if (!beside_.empty()) fs::remove_all(beside_, ignored);
}

void OutputFolder::check(const std::string& name, const Path& input) const {
    if (existed_) checkTarget(inPlace(name), input, replaces_);
}

OutputFile OutputFolder::file(const std::string& name, Watch watch) {
    names_.push_back(name);
    return {beside_ / pathOf(name), access_, inPlace(name), std::move(watch)};
}

void OutputFolder::putInPlace(const std::string& name) const {
    std::error_code error;
    fs::rename(beside_ / pathOf(name), inPlace(name), error);
    if (error) throw Failure(Text::cannotCreate, {nameOf(inPlace(name)), reasonOf(error)});
}

void OutputFolder::finish(const Path& input) {
    syncFiles(beside_, names_);
    stopIfInterrupted();
    std::error_code error;
    if (!existed_) {
        shareFolder(beside_, access_);
        fs::rename(beside_, target_, error);
        if (error) throw Failure(Text::cannotCreate, {nameOf(target_), reasonOf(error)});
        beside_.clear();
        return syncFolderOf(target_);
    }
    for (const std::string& name : names_) check(name, input);
    const std::string last = std::move(names_.back());
    names_.pop_back();
    if (fs::remove(inPlace(last), error)) syncFolderOf(inPlace(last));
    if (error) throw Failure(Text::cannotCreate, {nameOf(inPlace(last)), reasonOf(error)});
    for (const std::string& name : names_) putInPlace(name);
    syncFolderOf(inPlace(last));
    putInPlace(last);
    syncFolderOf(inPlace(last));
}

}  // namespace tbfile
