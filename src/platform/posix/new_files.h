// Files that come into being: in the place of others, and temporary ones.
#pragma once

#include <string>

#include "platform/posix/file_names.h"

namespace toolbox::platform::posix {

/// FileSystem::followLinks.
[[nodiscard]] ErrorCode followLinks(const std::string& path, std::string& target);

/// FileSystem::createLike without locks: the new file's descriptor, or -1 with errno. An empty
/// `like` is none.
[[nodiscard]] int createLike(const std::string& path, const std::string& like);

/// FileSystem::renameNew.
[[nodiscard]] ErrorCode renameNew(const std::string& from, const std::string& to);

/// FileSystem::flushFolderOf.
[[nodiscard]] ErrorCode flushFolderOf(const std::string& path);

/// FileSystem::createTemporary.
[[nodiscard]] ErrorCode createTemporaryFile(const char* prefix, std::string& name);

}  // namespace toolbox::platform::posix
