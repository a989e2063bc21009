// Why an operation on a document failed: the system's error codes in the words of people.
#pragma once

#include <string>

#include "file/document/document_lock.h"
#include "toolbox/document_files.h"

namespace toolbox::document {

using Reason = TvDocumentResult::Reason;

/// What the system was asked to do with the file.
enum class Doing { reading, writing };

/// A reason with the system's code, where that is the cause.
struct Fault {
    Reason reason = Reason::done;
    platform::ErrorCode code = 0;

    /// There is one.
    explicit operator bool() const { return reason != Reason::done; }
};

/// Why the system refused a file of that name. Success gives `done`.
[[nodiscard]] Fault faultOf(platform::ErrorCode code, Doing doing, const std::string& name);

/// The result of an operation on the file `name` that failed.
[[nodiscard]] TvDocumentResult failure(const Fault& fault, const std::string& name, Doing doing);

/// What others are told of a lock.
[[nodiscard]] TvDocumentHolder holderOf(const LockReport& report);

}  // namespace toolbox::document
