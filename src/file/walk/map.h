// Reading the map of a file: its header, the layout of its blocks and its index.
#pragma once

#include "toolbox/file_walk.h"

namespace toolbox {

/// Looks for the index where the header says, then after that (the header may be older than the
/// file), then everywhere. `probe` is a second reader of the same file.
[[nodiscard]] BlockFileMap readMap(FileReader& file, FileReader& probe);

/// The layout of the blocks of a file with this header.
[[nodiscard]] BlockShape findShape(FileReader& file, FileReader& probe,
                                   const BlockFileHeader& header);

/// The index at a place; nothing when nothing there speaks of this file.
[[nodiscard]] std::optional<MasterIndex> indexAt(FileReader& file, const BlockShape& shape,
                                                 std::uint64_t at);
/// The last block anywhere that is an index of this file.
[[nodiscard]] std::optional<MasterIndex> searchIndex(FileReader& file, FileReader& probe,
                                                     const BlockShape& shape);
/// Whether most of some entries, from all over the index, are confirmed.
[[nodiscard]] bool speaksOf(FileReader& file, const BlockShape& shape, const MasterIndex& index);
/// Whether an index ends the file and its entries can be right, as far as the places that they name
/// are not zeroed.
[[nodiscard]] bool endsFile(FileReader& file, const BlockShape& shape, const MasterIndex& index);

/// Whether a whole block with its identifier stands at the place that an entry names.
[[nodiscard]] bool isConfirmed(FileReader& file, const BlockShape& shape, const BlocItem& entry);

/// Whether a block is an index whose identifier is damaged: its data are the places of blocks.
[[nodiscard]] bool isDisguisedIndex(FileReader& file, const BlockShape& shape,
                                    const BlockFrame& frame);

}  // namespace toolbox
