// A folder of files that the program makes.
#pragma once

#include <string>
#include <vector>

#include "system/files.h"

namespace tbfile {

/// A folder that is filled under a temporary name and gets its own once it is whole and on the
/// device. Where one exists, the temporary one is in it and its files are put in place at the end,
/// after everything that can be checked was; files of other names stay. Without finish() nothing
/// changes.
///
/// The folder is for its owner alone while it is filled, and gets the access given when it is
/// whole, each file as OutputFile does.
///
/// The file that is made last is the one that tells of the others. It is put in place last and the
/// one that it replaces goes first, so that it never stands beside files that it does not tell of.
class OutputFolder {
  public:
    /// `replaces`: an existing folder may have files already, and they may lose their place.
    OutputFolder(Path target, Access access, bool replaces);
    ~OutputFolder();
    OutputFolder(const OutputFolder&) = delete;
    OutputFolder& operator=(const OutputFolder&) = delete;

    /// Refuses a name where something stands that may not be replaced, as `input` never may.
    void check(const std::string& name, const Path& input) const;
    /// A file, to be finished before the folder is.
    [[nodiscard]] OutputFile file(const std::string& name, Watch watch = {});
    void finish(const Path& input);

  private:
    [[nodiscard]] Path inPlace(const std::string& name) const { return target_ / pathOf(name); }
    void putInPlace(const std::string& name) const;

    Path target_;
    Access access_;
    Path beside_;
    bool replaces_;
    bool existed_;
    std::vector<std::string> names_;
};

}  // namespace tbfile
