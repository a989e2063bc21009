// Locks of other holders, written by hand.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "file/document/document_lock.h"
#include "file/document/lock_file.h"
#include "file/document/lock_text.h"
#include "support/faulty_files.h"
#include "support/temp_folder.h"

namespace lock_kit {

using toolbox::LockHolder;
using toolbox::LockOutcome;

#if defined(_WIN32)
inline constexpr int kRounds = 1;
inline constexpr int kStep = 3;  // a program takes long to start
#else
inline constexpr int kRounds = 10;
inline constexpr int kStep = 1;
#endif

/// The lock of a program that was killed on this machine.
inline LockHolder leftBehind() {
    LockHolder holder = toolbox::locks::ourselves();
    holder.start += "0";  // the number is that of another program by now
    return holder;
}

}  // namespace lock_kit
