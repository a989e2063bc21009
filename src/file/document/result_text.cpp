// Results as sentences: what happened, what was kept and where, what to do next. The texts stand in
// the resources; names may be longer than a message template can print, and are put in here.
#include <algorithm>
#include <array>
#include <initializer_list>
#include <string>

#include "file/document/reasons.h"
#include "toolbox/messages.h"

using toolbox::document::Reason;

namespace {

constexpr std::size_t kMostTemplate = 512;

/// Numbers of texts that are not in the table of reasons.
enum TextId : unsigned short {
    kInUseByProgram = 1513,
    kUnchanged = 1528,
    kStaysOpen,
    kKeptState,
    kKeptDamaged,
    kRescuedIsOpen,
    kIsReadOnly,
    kNoBackup,
    kSaveElsewhere,
    kFreeSpace,
    kCheckConnection,
    kCanBeRescued,
    kTryLater,
    kHolder,
    kHolderSince,
    kUnknownHolder,
    kBlockLost,
    kBytesLost,
    kBlockDoubtful,
    kBlockCutOff,
    kIndexDamaged,
    kNothing = 0
};

struct ReasonText {
    Reason reason;
    unsigned short what;
    unsigned short advice;  ///< when saving; 0: none
    bool keeps;             ///< whether to say that the file is unchanged
};

constexpr auto kTexts = std::to_array<ReasonText>({
    {Reason::cancelled, 1500, kNothing, false},
    {Reason::closed, 1501, kNothing, true},
    {Reason::busy, 1502, kNothing, false},
    {Reason::alreadyOpen, 1503, kNothing, false},
    {Reason::noName, 1504, kNothing, false},
    {Reason::notThere, 1505, kNothing, false},
    {Reason::folderGone, 1506, kCheckConnection, false},
    {Reason::nameTooLong, 1507, kSaveElsewhere, true},
    {Reason::badName, 1508, kSaveElsewhere, false},
    {Reason::noRight, 1509, kSaveElsewhere, true},
    {Reason::mediumReadOnly, 1510, kSaveElsewhere, true},
    {Reason::documentReadOnly, 1511, kSaveElsewhere, true},
    {Reason::inUse, 1512, kSaveElsewhere, true},
    {Reason::takenOver, 1514, kSaveElsewhere, true},
    {Reason::changedOnDisk, 1515, kSaveElsewhere, false},
    {Reason::diskFull, 1516, kFreeSpace, true},
    {Reason::tooLarge, 1517, kNothing, true},
    {Reason::deviceFailed, 1518, kCheckConnection, true},
    {Reason::noMemory, 1519, kTryLater, true},
    {Reason::damaged, 1520, kSaveElsewhere, true},
    {Reason::notADocument, 1521, kNothing, true},
    {Reason::newerVersion, 1522, kNothing, true},
    {Reason::contentRefused, 1523, kNothing, true},
    {Reason::other, 1524, kTryLater, true},
});

/// Text `id` with the parts in the places of its "%s", in their order.
std::string sentence(unsigned short id, std::initializer_list<std::string> parts = {}) {
    char text[kMostTemplate] = "";
    GMSG::loadString(id, text, static_cast<int>(sizeof text));
    std::string all = text;
    std::size_t at = 0;
    for (const std::string& part : parts) {
        at = all.find("%s", at);
        if (at == std::string::npos) break;
        all.replace(at, 2, part);
        at += part.size();
    }
    return all;
}

void append(std::string& all, const std::string& next) {
    if (!all.empty() && !next.empty()) all += ' ';
    all += next;
}

/// Local time as "2026-08-01 14:05"; the empty text for no time.
std::string timeText(std::time_t time) {
    constexpr std::size_t kRoom = 32;
    std::tm local{};
#if defined(_WIN32)
    const bool known = time > 0 && localtime_s(&local, &time) == 0;
#else
    const bool known = time > 0 && localtime_r(&time, &local);
#endif
    char text[kRoom] = "";
    if (known) (void)std::strftime(text, sizeof text, "%Y-%m-%d %H:%M", &local);
    return text;
}

std::string holderText(const TvDocumentHolder& holder) {
    if (holder.user.isNull() && holder.machine.isNull()) return sentence(kUnknownHolder);
    const std::string since = timeText(holder.since);
    return sentence(since.empty() ? kHolder : kHolderSince,
                    {holder.user.str(), holder.machine.str(), since});
}

/// The system's words for a code, in one line.
std::string systemText(unsigned long code) {
    constexpr std::size_t kRoom = 1024;
    char text[kRoom] = "";
    GMSG::getLastErrorMsg(code, text);
    std::string line = text;
    while (!line.empty() && (line.back() == '\n' || line.back() == '\r')) line.pop_back();
    return line.empty() ? std::to_string(code) : line;
}

std::string whatHappened(const TvDocumentResult& result, const ReasonText& entry) {
    const std::string& name = result.name.str();
    if (result.reason == Reason::other)
        return sentence(entry.what, {name, systemText(result.code)});
    if (result.reason == Reason::inUse && !result.holder) return sentence(kInUseByProgram, {name});
    const std::string who = holderText(result.holder.value_or(TvDocumentHolder()));
    return sentence(entry.what, {name, who});
}

/// What a success is not silent about.
std::string asideOf(const TvDocumentResult& result) {
    std::string all;
    if (result.reason == Reason::inUse) append(all, sentence(kIsReadOnly));
    if (result.reason == Reason::damaged) append(all, sentence(kRescuedIsOpen));
    if (!result.kept.isNull()) append(all, sentence(kKeptDamaged, {result.kept.str()}));
    if (result.backup == ERROR_SUCCESS) return all;
    append(all, sentence(kNoBackup));
    const auto why = toolbox::document::faultOf(result.backup, toolbox::document::Doing::writing,
                                                result.name.str());
    append(all, toolbox::document::failure(why, APIFile::backupName(result.name.c_str()).str(),
                                           toolbox::document::Doing::reading)
                    .text()
                    .str());
    return all;
}

std::string afterFailure(const TvDocumentResult& result, const ReasonText& entry) {
    std::string all;
    if (!result.kept.isNull())
        append(all, sentence(kKeptState, {result.kept.str()}));
    else if (entry.keeps)
        append(all, sentence(result.reading ? kUnchanged : kStaysOpen));
    if (result.reading)
        append(all, result.reason == Reason::damaged ? sentence(kCanBeRescued) : "");
    else if (entry.advice != kNothing)
        append(all, sentence(entry.advice));
    return all;
}

}  // namespace

RWCString TvDocumentResult::text() const {
    const auto* const entry = std::ranges::find(kTexts, reason, &ReasonText::reason);
    std::string all;
    if (entry != kTexts.end()) all = whatHappened(*this, *entry);
    if (ok)
        append(all, asideOf(*this));
    else if (entry != kTexts.end())
        append(all, afterFailure(*this, *entry));
    return RWCString(all);
}

RWCString TvDocumentLoss::text() const {
    const std::string begin = std::to_string(from);
    const std::string end = std::to_string(to);
    if (kind == Index) return RWCString(sentence(kIndexDamaged, {begin, end}));
    if (!id) return RWCString(sentence(kBytesLost, {begin, end}));
    const TextId what = kind == Doubtful ? kBlockDoubtful
                        : kind == CutOff ? kBlockCutOff
                                         : kBlockLost;
    return RWCString(sentence(what, {std::to_string(*id), begin, end}));
}
