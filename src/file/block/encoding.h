// The bytes around the data of a block, as they are written.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "file/block/layout.h"
#include "file/block/parts.h"

namespace toolbox::blocks {

inline void encodeHead(char* out, std::uint32_t id, std::string_view description,
                       std::uint32_t length) {
    base::store(out, id);
    putText(out + 4, description);
    base::store(out + 4 + kDescriptionBytes, length);
}

inline void encodeHead(char* out, const TarvBlocFile& block) {
    encodeHead(out, static_cast<std::uint32_t>(block.getID()), BlockFileParts::description(block),
               std::uint32_t{block.getLen()});
}

inline void encodeTail(char* out, std::uint32_t version, std::uint32_t recordVersion) {
    base::store(out, version);
    base::store(out + 4, recordVersion);
    base::store(out + 8, kTerminator);
}

inline void encodeTail(char* out, const TarvBlocFile& block) {
    encodeTail(out, block.getVersion(), block.getVersionVarrec());
}

}  // namespace toolbox::blocks
