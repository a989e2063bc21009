// Projects in block files.
//
// One block describes the project, one each holds a beam or a label: identifier kProjectBlock, then
// kFirstBeamBlock and kFirstLabelBlock and the numbers after them without gaps, in the order of
// the project. Numbers are little-endian; texts have a fixed size, padded with zeros:
//     project  beams u32, labels u32
//     beam     id u32, name 16, section 16, x, y, span, uniform f64, loads u32,
//              of each load: position, force f64
//     label    beam u32, a set of one tag (tags.h), whose number is the label's identifier; zeros
//              up to a multiple of 4 bytes
// Version 1 of the contents, which is read too, has labels so:
//     label    id u32, beam u32, x, y f64, alignment u32 (0 left, 1 centred, 2 right), border u32,
//              text 128
// After the last value of each stands the checksum of the bytes before it in the record, u32
// (crc32.h). Every block is a multiple of 4 bytes long, so that a file whose index is lost can be
// searched.
#pragma once

#include <functional>

#include "project/project.h"
#include "toolbox/dates.h"
#include "toolbox/errors.h"

inline constexpr unsigned long kProjectBlock = 1;
inline constexpr unsigned long kFirstBeamBlock = 0x10000000;
inline constexpr unsigned long kFirstLabelBlock = 0x20000000;
/// Of the contents, kept in the header.
inline constexpr unsigned long kProjectVersion = 2;

/// Codes of the error objects, which are numbers of texts; 0: all went well.
enum StoreError : int {
    kNotRead = 3100,  ///< there is no such file, or it cannot be read
    kNotAProject,     ///< no block file, or one of something else
    kTooNew,          ///< a later version of the program wrote it
    kDamaged,         ///< something is missing; what is left was loaded
    kNotWritten,
};

struct LoadedProject {
    Project project;
    TarvDate created;
    std::size_t expected = 0;  ///< beams and labels that the file should hold; 0: not known
    std::size_t loaded = 0;
    ErrObj error;
};

/// Called now and then with what is done and how much there is to do.
using StoreProgress = std::function<void(std::size_t done, std::size_t total)>;

/// Loads a project. Of a damaged file everything that is intact, found through the index and by
/// searching: also where nothing is lost but that the index does not tell where it is.
[[nodiscard]] LoadedProject loadProject(const char* file, const StoreProgress& progress);

/// Saves safely: an existing file stays whole under its name until the new one, whole, has that
/// name, and is kept as the backup file. On failure it is as it was.
[[nodiscard]] ErrObj saveProject(const Project& project, const char* file, const TarvDate& created,
                                 const StoreProgress& progress);
