// Any bytes are refused, with nothing changed, or are tags: ones that are drawn, that find places
// or are reported, and that are stored as the same bytes again. The seal is made right, for no
// fuzzer would find its check sum.
#include <algorithm>
#include <cstdint>
#include <string>

#include "canvas/sealed.h"
#include "require.h"
#include "tag/tag_bytes.h"
#include "toolbox/tag_layout.h"

namespace {

std::string bytesOf(const VarRecord& record) {
    return {record.getPData(), record.getLen()};
}

std::string stored(const TvTagSet& set) {
    VarRecord record;
    set.store(record);
    return bytesOf(record);
}

/// What was placed covers nothing when it is placed again, and is drawn as it says.
void checkLayout(TvTagSet& set) {
    const TransMatrix2D view = TransMatrix2D().rotate(0.5).scale(2, -2);
    TvTagSurroundings around{{-500, -500, 500, 500}};
    const toolbox::PlaneRect rectangle{0, 0, 20, 20};
    const TvSegment segment{{-100, -90}, {300, 10}};
    around.rectangles = std::span(&rectangle, 1);
    around.segments = std::span(&segment, 1);
    const TvTagLayout layout(set, view, nullptr);
    TvRecording recording(100, 100);
    (void)layout.draw(recording);
    const TvTagPlacement placement = layout.placeFree(around);
    require(!placement.refused && set.move(placement.moves));
    const TvTagLayout placed(set, view, nullptr);
    require(placed.placeFree(around).unplaced == placement.unplaced);
    for (const TvTagOnPage& each : placed.tags()) {
        const TvPoint inside{each.box.left, each.box.bottom};
        require(placed.find(inside, 0.001).part != TvTagHit::None);
        require(each.tag->locked ||
                each.tag->unplaced == std::binary_search(placement.unplaced.begin(),
                                                         placement.unplaced.end(), each.id));
    }
}

void check(std::string_view bytes) {
    VarRecord record;
    record.setData(static_cast<unsigned long>(bytes.size()), bytes.data());
    TvTagSet set;
    set.add(TvTag{"kept"});
    const std::string before = stored(set);
    if (!set.load(record, nullptr)) {
        require(stored(set) == before && record.getOffset() == 0);
        require(!set.pasteTags(bytes, {}, nullptr) && stored(set) == before);
        return;
    }
    require(stored(set) == bytes.substr(0, record.getOffset()));
    checkLayout(set);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    check(bytes);
    VarRecord sealed;
    toolbox::canvas::seal(sealed, toolbox::tag::kSeal, {}, bytes);
    check(bytesOf(sealed));
    return 0;
}
