// What a tag can be.
#include <cmath>

#include "canvas/styles.h"
#include "tag/sentences.h"
#include "toolbox/tags.h"

using toolbox::canvas::isNear;
using toolbox::tag::refuse;
using toolbox::tag::Sentence;

namespace {

bool isSide(double points) {
    return points >= 0 && points <= TvTag::kMaxSide;
}

bool areScales(double least, double greatest) {
    return std::isfinite(least) && std::isfinite(greatest) && least >= 0 &&
           (greatest == 0 || greatest >= least);
}

bool areEnumerators(const TvTag& tag) {
    return tag.align <= TvAlign::right && tag.level <= TvLevel::bottom &&
           tag.level != TvLevel::baseline && tag.border <= TvTagBorder::underline;
}

}  // namespace

int TvTag::check(CString* why) const {
    if (!std::isfinite(anchor.x) || !std::isfinite(anchor.y) || !isNear(offset))
        return refuse(why, Sentence::coordinate);
    if (!isSide(width) || !isSide(margin))
        return refuse(why, Sentence::side, static_cast<unsigned>(kMaxSide));
    if (!toolbox::canvas::isFont(font) || !toolbox::canvas::isPen(line))
        return refuse(why, Sentence::style);
    if (!areScales(minScale, maxScale)) return refuse(why, Sentence::scales);
    if (!areEnumerators(*this)) return refuse(why, Sentence::enumerator);
    return 1;
}
