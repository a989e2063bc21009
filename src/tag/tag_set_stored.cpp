// A set in a record, and its tags as bytes for the clipboard, which are what a record has.
#include <cmath>
#include <iterator>
#include <limits>

#include "tag/sentences.h"
#include "tag/tag_bytes.h"
#include "toolbox/tags.h"

using namespace toolbox::tag;
namespace canvas = toolbox::canvas;

void TvTagSet::store(VarRecord& record) const {
    std::vector<Numbered> all;
    all.reserve(count());
    for (const Entry& each : entries_) all.push_back({each.id, each.tag});
    canvas::seal(record, kSeal, {}, bytesOf(all));
}

int TvTagSet::load(VarRecord& record, CString* why) {
    canvas::Opened opened;
    std::vector<Numbered> tags;
    if (!readSealed(canvas::restOf(record), opened, tags, why)) return 0;
    canvas::pass(record, opened);
    entries_.clear();
    places_.clear();
    for (Numbered& each : tags) put(count(), {each.id, std::move(each.tag)});
    return tell(true, true);
}

std::string TvTagSet::copyTags(std::span<const TvTagId> ids) const {
    const std::unordered_set<TvTagId> wanted(ids.begin(), ids.end());
    std::vector<Numbered> copied;
    for (const Entry& each : entries_)
        if (wanted.contains(each.id)) copied.push_back({each.id, each.tag});
    VarRecord record;
    canvas::seal(record, kSeal, {}, bytesOf(copied));
    return {record.getPData(), record.getLen()};
}

int TvTagSet::pasteTags(std::string_view bytes, TvPoint shift, CString* why) {
    canvas::Opened opened;
    std::vector<Numbered> tags;
    if (!readSealed(bytes, opened, tags, why)) return 0;
    if (tags.size() > std::numeric_limits<TvTagId>::max() - last_)
        return refuse(why, Sentence::noNumber);
    for (Numbered& each : tags) {
        TvTag tag = *each.tag;
        tag.anchor.x += shift.x;
        tag.anchor.y += shift.y;
        if (!tag.check(why)) return 0;
        each.tag = std::make_shared<const TvTag>(std::move(tag));
    }
    for (Entry& each : entries_) each.selected = false;
    for (Numbered& each : tags) put(count(), {last_ + 1, std::move(each.tag), true});
    return tell(!tags.empty(), true);
}
