// Recordings. The bytes are shared with whoever plays them, so that a recording may end or be
// loaded anew while it is played.
#include <optional>
#include <utility>

#include "base/codec.h"
#include "canvas/check_sum.h"
#include "canvas/sentences.h"
#include "canvas/styles.h"
#include "canvas/tape.h"
#include "toolbox/canvas.h"

using namespace toolbox::canvas;

struct TvRecording::Tape {
    std::string bytes;
    TapeWriter writer{bytes};
};

namespace {

// A stored drawing: the signature, then what the check sum covers (version, width, height, number
// of bytes, bytes), then the check sum.
constexpr int kSignature = 0x43525654;  // "TVRC"
constexpr int kVersion = 100;
constexpr std::size_t kHead = 4 + 4 + 8 + 8 + 4;
constexpr std::size_t kAfterSignature = kHead - 4;

struct Stored {
    double width = 0;
    double height = 0;
    std::string_view bytes;
};

/// What is wrong with stored bytes.
struct Damage {
    Sentence sentence;
    std::size_t place = 0;  ///< for Sentence::impossible
};

/// The first thing that is wrong with the elements.
std::optional<Damage> damageOfElements(std::string_view bytes) {
    TapeReader reader;
    for (;;) {
        const TapeReader::Element element = reader.next(bytes);
        if (element == TapeReader::Element::end) return std::nullopt;
        if (element == TapeReader::Element::bad)
            return Damage{Sentence::impossible, kHead + reader.place()};
    }
}

std::optional<Damage> findDamage(std::string_view record, Stored& out) {
    using toolbox::base::load;
    if (record.size() < 4 || load<std::int32_t>(record.data()) != kSignature)
        return Damage{Sentence::noDrawing};
    if (record.size() < kHead) return Damage{Sentence::cutShort};
    const char* const head = record.data();
    // A newer version may go on in another way.
    const auto version = load<std::int32_t>(head + 4);
    if (version > kVersion) return Damage{Sentence::newer};
    const auto length = load<std::uint32_t>(head + 24);
    const std::size_t rest = record.size() - kHead;
    if (rest < 4 || length > rest - 4) return Damage{Sentence::cutShort};
    const auto sum = load<std::uint32_t>(head + kHead + length);
    if (version != kVersion || checkSum(record.substr(4, kAfterSignature + length)) != sum)
        return Damage{Sentence::altered};
    out = {load<double>(head + 8), load<double>(head + 16), record.substr(kHead, length)};
    if (pageSide(out.width) != out.width || pageSide(out.height) != out.height)
        return Damage{Sentence::impossible, 8};
    return damageOfElements(out.bytes);
}

}  // namespace

TvRecording::TvRecording(double width, double height)
    : TvCanvas(width, height), tape_(std::make_shared<Tape>()) {}

TvRecording::~TvRecording() = default;

std::size_t TvRecording::size() const {
    return tape_->bytes.size();
}

void TvRecording::onPath(const TvPath& path, const TvPen* pen, const TvBrush* brush) {
    tape_->writer.path(path, pen, brush);
}

void TvRecording::onText(TvPoint at, const TvText& text, const TvFont& font,
                         const TvTextPlace& place) {
    tape_->writer.text(at, text, font, place);
}

void TvRecording::onClip(const TvPath& path) {
    tape_->writer.clip(path);
}
void TvRecording::onUnclip() {
    tape_->writer.unclip();
}

int TvRecording::play(TvCanvas& target) const {
    const std::shared_ptr<Tape> tape = tape_;
    const std::size_t end = tape->bytes.size();  // the target may be this recording
    const toolbox::detail::Watch watch(target.life_);
    TapeReader reader;
    std::size_t clips = 0;
    int drawn = 1;
    for (;;) {
        const auto element = reader.next(std::string_view(tape->bytes).substr(0, end));
        // Clippings of a drawing that is not finished are open at its end.
        if (element == TapeReader::Element::end || element == TapeReader::Element::bad) break;
        if (element == TapeReader::Element::clip) ++clips;
        if (element == TapeReader::Element::unclip) --clips;
        const int done = playElement(target, reader, static_cast<char>(element));
        if (watch.gone()) return 0;
        if (!done) drawn = 0;
    }
    for (; clips > 0; --clips) {
        target.restore();
        if (watch.gone()) return 0;
    }
    return drawn;
}

int TvRecording::playElement(TvCanvas& target, const toolbox::canvas::TapeReader& reader,
                             char element) {
    switch (element) {
        case 'D':
            return target.drawPath(reader.path, reader.pen ? *reader.pen : TvPen::none(),
                                   reader.brush ? *reader.brush : TvBrush());
        case 'T':
            return target.drawText(reader.at, reader.text, reader.font, reader.textPlace);
        case 'C':
            target.save();
            return target.clip(reader.path);
        default:
            return target.restore();
    }
}

void TvRecording::store(VarRecord& record) const {
    std::string bytes = tape_->bytes;
    bytes.append(clipDepth(), 'U');
    // All of it or nothing: a record that cannot hold the whole shall not hold a part.
    VarRecord whole;
    whole << kSignature << kVersion << width() << height() << static_cast<int>(bytes.size());
    whole.write(bytes.data(), static_cast<int>(bytes.size()));
    const auto sum = checkSum({whole.getPData() + 4, kAfterSignature + bytes.size()});
    whole << static_cast<int>(sum);
    record.append(whole);
}

int TvRecording::load(VarRecord& record, CString* why) {
    const char* const data = record.getPData();
    const std::size_t offset = record.getOffset();
    std::string_view rest;
    if (data && offset < record.getLen()) rest = {data + offset, record.getLen() - offset};
    Stored stored;
    if (const std::optional<Damage> damage = findDamage(rest, stored)) {
        if (why) *why = printed(damage->sentence, static_cast<unsigned>(damage->place));
        return 0;
    }
    auto tape = std::make_shared<Tape>();
    tape->bytes = stored.bytes;
    std::string skipped(kHead + stored.bytes.size() + 4, '\0');
    record.read(skipped.data(), static_cast<int>(skipped.size()));
    reset(stored.width, stored.height);
    tape_ = std::move(tape);
    return 1;
}
