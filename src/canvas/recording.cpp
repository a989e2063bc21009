// Recordings. The bytes are shared with whoever plays them, so that a recording may end or be
// loaded anew while it is played.
#include <optional>
#include <utility>

#include "base/codec.h"
#include "canvas/sealed.h"
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

// A stored drawing: its width and height are the head.
constexpr Seal kSeal{0x43525654, 100, 16};  // "TVRC"

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
            return Damage{Sentence::impossible, kSeal.start() + reader.place()};
    }
}

std::optional<Damage> damageOfSeal(Opening opening) {
    switch (opening) {
        case Opening::open:
            return std::nullopt;
        case Opening::foreign:
            return Damage{Sentence::noDrawing};
        case Opening::cutShort:
            return Damage{Sentence::cutShort};
        case Opening::newer:
            return Damage{Sentence::newer};
        case Opening::altered:
            break;
    }
    return Damage{Sentence::altered};
}

struct PageSize {
    double width = 0;
    double height = 0;
};

std::optional<Damage> findDamage(std::string_view record, Opened& opened, PageSize& size) {
    if (const auto damage = damageOfSeal(openSealed(record, kSeal, opened))) return damage;
    size = {toolbox::base::load<double>(opened.head.data()),
            toolbox::base::load<double>(opened.head.data() + 8)};
    if (pageSide(size.width) != size.width || pageSide(size.height) != size.height)
        return Damage{Sentence::impossible, 8};
    return damageOfElements(opened.bytes);
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
    char head[16];
    toolbox::base::store(head, width());
    toolbox::base::store(head + 8, height());
    seal(record, kSeal, {head, sizeof head}, bytes);
}

int TvRecording::load(VarRecord& record, CString* why) {
    Opened opened;
    PageSize size;
    if (const std::optional<Damage> damage = findDamage(restOf(record), opened, size)) {
        if (why) *why = printed(damage->sentence, static_cast<unsigned>(damage->place));
        return 0;
    }
    auto tape = std::make_shared<Tape>();
    tape->bytes = opened.bytes;
    pass(record, opened);
    reset(size.width, size.height);
    tape_ = std::move(tape);
    return 1;
}
