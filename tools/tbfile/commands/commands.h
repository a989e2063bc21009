// The commands. Each returns the program's exit status; what keeps one from going on is thrown as
// Failure.
#pragma once

#include "commands/options.h"
#include "terminal/texts.h"

namespace tbfile {

inline constexpr int kSound = 0;
inline constexpr int kFindings = 1;
inline constexpr int kCannotRun = 2;

[[nodiscard]] int info(const Options& options);
[[nodiscard]] int list(const Options& options);
[[nodiscard]] int dump(const Options& options);
[[nodiscard]] int extract(const Options& options);
[[nodiscard]] int pack(const Options& options);
[[nodiscard]] int verify(const Options& options);
[[nodiscard]] int recover(const Options& options);
[[nodiscard]] int compare(const Options& options);
[[nodiscard]] int repack(const Options& options);

}  // namespace tbfile
