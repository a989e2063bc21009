// Any bytes are refused, with nothing changed, or are a drawing: one that every canvas takes and
// that is stored as the same bytes again. The check sum is made right, for no fuzzer would find it.
#include <cstdint>
#include <string>

#include "base/codec.h"
#include "canvas/check_sum.h"
#include "require.h"
#include "toolbox/canvas.h"

namespace {

std::string stored(const TvRecording& recording) {
    VarRecord record;
    recording.store(record);
    return {record.getPData(), record.getLen()};
}

/// The bytes as the elements of a drawing whose head and check sum are right.
std::string wrapped(std::string_view elements) {
    std::string bytes = stored(TvRecording(100, 50));
    bytes.resize(bytes.size() - 4);
    toolbox::base::store(bytes.data() + bytes.size() - 4,
                         static_cast<std::uint32_t>(elements.size()));
    bytes += elements;
    const std::uint32_t sum = toolbox::canvas::checkSum(std::string_view(bytes).substr(4));
    bytes.append(4, '\0');
    toolbox::base::store(bytes.data() + bytes.size() - 4, sum);
    return bytes;
}

void check(std::string_view bytes) {
    VarRecord record;
    record.setData(static_cast<unsigned long>(bytes.size()), bytes.data());
    TvRecording recording(10, 10);
    recording.line({0, 0}, {1, 1});
    const std::string before = stored(recording);
    if (!recording.load(record, nullptr)) {
        require(stored(recording) == before);
        require(record.getOffset() == 0);
        return;
    }
    require(stored(recording) == bytes.substr(0, record.getOffset()));
    TvRecording copy(recording.width(), recording.height());
    require(recording.play(copy) == 1);
    TvSvg svg(100, 100);
    TvPdf pdf;
    TvSvg svgOfCopy(100, 100);
    require(recording.play(svg) == 1);
    require(recording.play(pdf.addPage(100, 100)) == 1);
    require(copy.play(svgOfCopy) == 1);
    require(svg.bytes() == svgOfCopy.bytes());
    require(!pdf.bytes().empty());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    check(bytes);
    check(wrapped(bytes));
    return 0;
}
