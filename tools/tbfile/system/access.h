// Who may use a file: what a new file takes over from those that it is made of.
#pragma once

#include <filesystem>
#include <string>

namespace tbfile {

/// The permissions of a file and the group that they speak of; on Windows its access list.
struct Access {
#if defined(_WIN32)
    std::string list;  ///< a security descriptor; empty where the system told none
#else
    unsigned mode = 0600;  ///< never more than 0777
    unsigned group = 0;
#endif

    /// Leaves what both allow. Windows keeps the first list: two cannot be joined.
    void narrow(const Access& other);
};

/// Makes a folder for its owner alone; false when the name is taken. Any other failure is thrown as
/// Failure with the name `shown`.
[[nodiscard]] bool makePrivateFolder(const std::filesystem::path& name,
                                     const std::filesystem::path& shown);
/// Opens such a folder to those who may read files of this access. Windows: a folder takes the
/// access list of the one that it is in, and its files have lists of their own.
void shareFolder(const std::filesystem::path& folder, const Access& access);

}  // namespace tbfile
