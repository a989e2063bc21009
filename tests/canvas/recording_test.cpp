#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>

#include "base/codec.h"
#include "canvas/check_sum.h"
#include "probe_canvas.h"
#include "sample_drawing.h"
#include "toolbox/messages.h"

namespace {

std::string bytesOf(const VarRecord& record) {
    return {record.getPData(), record.getLen()};
}

VarRecord recordOf(std::string_view bytes) {
    VarRecord record;
    record.setData(static_cast<unsigned long>(bytes.size()), bytes.data());
    return record;
}

std::string stored(const TvRecording& recording) {
    VarRecord record;
    recording.store(record);
    return bytesOf(record);
}

/// The bytes with a check sum that is right.
std::string summed(std::string bytes) {
    const std::uint32_t sum =
        toolbox::canvas::checkSum(std::string_view(bytes).substr(4, bytes.size() - 8));
    toolbox::base::store(bytes.data() + bytes.size() - 4, sum);
    return bytes;
}

class Recording : public ::testing::Test {
  protected:
    Recording() { drawSample(recording); }

    TvRecording recording{kSampleWidth, kSampleHeight};
};

TEST_F(Recording, PlaysWhatWasDrawn) {
    const TransMatrix2D half = TransMatrix2D(0.5, 0.5, TransMatrix2D::Scale).translate(100, 100);
    ProbeCanvas direct;
    direct.setTransform(half);
    drawSample(direct);
    ProbeCanvas played;
    played.setTransform(half);
    played.setPen({TvColor{3, 3, 3}, 9});
    EXPECT_EQ(recording.play(played), 1);
    EXPECT_EQ(played.paths, direct.paths);
    EXPECT_EQ(played.texts, direct.texts);
    EXPECT_EQ(played.pen(), (TvPen{TvColor{3, 3, 3}, 9}));
    EXPECT_TRUE(played.clippings.empty());
}

TEST_F(Recording, ComesBackFromARecord) {
    VarRecord record;
    record << 'a';
    recording.store(record);
    record << 'z';
    TvRecording again(10, 10);
    again.line({0, 0}, {1, 1});
    char letter = 0;
    record >> letter;
    CString why;
    ASSERT_EQ(again.load(record, &why), 1) << why.c_str();
    record >> letter;
    EXPECT_EQ(letter, 'z');
    EXPECT_EQ(again.width(), kSampleWidth);
    EXPECT_EQ(again.height(), kSampleHeight);
    EXPECT_EQ(stored(again), stored(recording));
    ProbeCanvas played;
    again.play(played);
    // What is drawn on it then comes after the rest, in its own styles.
    again.setPen({TvColor{1, 2, 3}, 4});
    again.line({0, 0}, {1, 1});
    ProbeCanvas more;
    again.play(more);
    EXPECT_EQ(more.paths.back().pen, (TvPen{TvColor{1, 2, 3}, 4}));
    EXPECT_EQ(more.paths.size(), played.paths.size() + 1);
}

TEST(RecordingFormat, IsThatOfVersion100) {
    TvRecording recording(100, 50);
    recording.setPen({TvColor{1, 2, 3}, 0.5});
    recording.line({0, 0}, {1, 0});
    using namespace std::string_literals;
    const std::string one = "\0\0\0\0\0\0\xF0\x3F"s;
    const std::string half = "\0\0\0\0\0\0\xE0\x3F"s;
    const std::string zero(8, '\0');
    const std::string bytes = stored(recording);
    const std::string tape = "P\1\2\3"s + half + "\6" + zero + zero + zero + zero + zero + zero +
                             "D\1\2\0\0\0\0\1"s + zero + zero + one + zero;
    EXPECT_EQ(bytes.substr(0, 8), "TVRC\x64\0\0\0"s);
    EXPECT_EQ(bytes.substr(8, 16), "\0\0\0\0\0\0\x59\x40\0\0\0\0\0\0\x49\x40"s);
    EXPECT_EQ(bytes.substr(24, 4), std::string(1, static_cast<char>(tape.size())) + "\0\0\0"s);
    EXPECT_EQ(bytes.substr(28, tape.size()), tape);
    EXPECT_EQ(bytes.size(), 28 + tape.size() + 4);
    EXPECT_EQ(toolbox::canvas::checkSum("123456789"), 0xCBF43926);  // the known answer of CRC-32
}

// A check sum that is right makes no sense of nonsense: whatever single byte is altered, what is
// taken can be played and stores to the same bytes.
TEST_F(Recording, TakesOnlyWhatCanBePlayed) {
    const std::string good = stored(recording);
    TvRecording target(10, 10);
    target.line({0, 0}, {1, 1});
    const std::string before = stored(target);
    const auto refused = [&](const std::string& bytes) {
        VarRecord record = recordOf(bytes);
        const int loaded = target.load(record, nullptr);
        return loaded == 0 && record.getOffset() == 0 && stored(target) == before;
    };
    int taken = 0;
    for (std::size_t i = 0; i < good.size(); ++i) {
        ASSERT_TRUE(refused(good.substr(0, i))) << i;
        for (const int bit : {0x01, 0x80}) {
            std::string bytes = good;
            bytes[i] = static_cast<char>(bytes[i] ^ bit);
            ASSERT_TRUE(refused(bytes)) << i;
            bytes = summed(bytes);
            VarRecord record = recordOf(bytes);
            TvRecording altered(10, 10);
            if (!altered.load(record, nullptr)) continue;
            ++taken;
            ProbeCanvas played;
            ASSERT_EQ(altered.play(played), 1) << i;
            ASSERT_EQ(stored(altered), bytes) << i;
        }
    }
    EXPECT_GT(taken, 0);
}

#if !defined(_WIN32)  // there a program brings the texts
TEST_F(Recording, SaysWhyItIsRefused) {
    GMSG::language = GMSG::English;
    const std::string good = stored(recording);
    std::string newer = good;
    newer[4] = '\x65';
    std::string altered = good;
    altered[100] = static_cast<char>(altered[100] ^ 1);
    std::string impossible = good;
    impossible[28] = '?';  // the first element
    const std::pair<std::string, const char*> cases[] = {
        {"", "These data are not a drawing."},
        {"another thing", "These data are not a drawing."},
        {good.substr(0, 200), "The drawing is incomplete: its end is missing."},
        {newer, "The drawing comes from a newer version of the program."},
        {altered, "The drawing is damaged: its check sum does not match."},
        {summed(impossible), "The drawing is damaged from byte 28 on."},
    };
    for (const auto& [bytes, sentence] : cases) {
        VarRecord record = recordOf(bytes);
        CString why;
        EXPECT_EQ(recording.load(record, &why), 0);
        EXPECT_EQ(why, sentence);
    }
}
#endif

TEST_F(Recording, KeepsMissingCharacters) {
    TvRecording with(100, 100);
    with.text({1, 2}, TvText::fromUtf8("a\xE4\xB8\xAD"));
    EXPECT_EQ(with.faultCount(), 1U);
    VarRecord record = recordOf(stored(with));
    ASSERT_EQ(recording.load(record, nullptr), 1);
    EXPECT_EQ(recording.faultCount(), 0U);
    ProbeCanvas played;
    EXPECT_EQ(recording.play(played), 1);
    ASSERT_EQ(played.faultCount(), 1U);
    EXPECT_EQ(played.faults()[0].character, (TvTextFault{1, 0x4E2D}));
}

TEST(RecordingClips, AreClosedWhereTheyAreOpen) {
    TvRecording recording(100, 100);
    recording.save();
    recording.clip({0, 0, 10, 10});
    recording.line({0, 0}, {1, 1});
    ProbeCanvas played;
    EXPECT_EQ(recording.play(played), 1);
    EXPECT_EQ(played.paths.at(0).clips, 1U);
    EXPECT_TRUE(played.clippings.empty());
    VarRecord record = recordOf(stored(recording));
    TvRecording again(1, 1);
    ASSERT_EQ(again.load(record, nullptr), 1);
    again.line({0, 0}, {1, 1});
    ProbeCanvas replayed;
    again.play(replayed);
    EXPECT_EQ(replayed.paths.at(1).clips, 0U);
}

TEST_F(Recording, PlaysOnItselfAndWhileItIsLoadedOrDeleted) {
    ProbeCanvas once;
    recording.play(once);
    const std::string bytes = stored(recording);
    EXPECT_EQ(recording.play(recording), 1);
    ProbeCanvas twice;
    recording.play(twice);
    EXPECT_EQ(twice.paths.size(), 2 * once.paths.size());
    EXPECT_EQ(twice.texts.size(), 2 * once.texts.size());

    auto dying = std::make_unique<TvRecording>(1, 1);
    VarRecord record = recordOf(bytes);
    ASSERT_EQ(dying->load(record, nullptr), 1);
    ProbeCanvas target;
    target.whenDrawn = [&] {
        VarRecord other = recordOf(bytes);
        if (dying) dying->load(other, nullptr);
        dying.reset();
    };
    const TvRecording& played = *dying;
    EXPECT_EQ(played.play(target), 1);
    EXPECT_EQ(target.paths, once.paths);

    auto gone = std::make_unique<ProbeCanvas>();
    gone->whenDrawn = [&] { gone.reset(); };
    TvCanvas& deleted = *gone;
    EXPECT_EQ(recording.play(deleted), 0);
}

}  // namespace
