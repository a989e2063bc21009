// The library's parts of block files under the short names that the commands use.
#pragma once

#include "toolbox/block_frames.h"
#include "toolbox/file_walk.h"

namespace tbfile {

using toolbox::BlockFileMap;
using toolbox::BlockSum;
using toolbox::ChecksumMap;
using toolbox::EntryFinder;
using toolbox::Evidence;
using toolbox::FileReader;
using toolbox::HeaderFault;
using toolbox::WalkFinding;
using Frame = toolbox::BlockFrame;
using Header = toolbox::BlockFileHeader;
using Index = toolbox::MasterIndex;
using Label = toolbox::BlockLabel;
using Shape = toolbox::BlockShape;

}  // namespace tbfile
