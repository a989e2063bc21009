// A lock's file as somebody finds it.
#pragma once

#include <string>

#include "file/document/document_lock.h"

namespace toolbox::locks {

/// The name of a document's lock, and the rights that it gets: those of the file `like`, which is
/// empty where there is none to take them from. The error when the document can have no lock.
struct LockPlace {
    std::string name;
    std::string like;
    platform::ErrorCode error = 0;
};
[[nodiscard]] LockPlace placeOf(const std::string& document);

/// What the lock file of that name says.
[[nodiscard]] LockReport reportOf(const std::string& name);

/// A new holder: this process, with a token that nobody has.
[[nodiscard]] LockHolder ourselves();

/// Says that this process has, or no longer has, the lock of that token. Of a lock that is not in
/// this list its own process tells that it was left.
void remember(const std::string& token);
void forget(const std::string& token);

/// The lock under which one program at a time takes over the lock `name` from the holder of
/// `token`.
[[nodiscard]] std::string nameOfTakingOver(const std::string& name, const std::string& token);
/// Removes what programs that were killed while they took over the lock `name` have left.
void removeTakingsOver(const std::string& name);

}  // namespace toolbox::locks
