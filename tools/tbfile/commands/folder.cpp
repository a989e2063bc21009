// extract and pack: the blocks of a file as files of a folder, and back.
#include "commands/commands.h"
#include "commands/manifest.h"
#include "commands/open_file.h"
#include "commands/writer.h"
#include "system/output_folder.h"
#include "terminal/failure.h"
#include "terminal/json.h"

namespace tbfile {
namespace {

/// The name of the file that a block's data goes to.
std::string fileOf(const BlocItem& entry) {
    return std::to_string(entry.id) + ".bin";
}

std::string readAll(const InputFile& file) {
    // What is larger was not written by extract, and would not fit into memory everywhere.
    constexpr std::uint64_t kMost = 0x7FFFFFFF;
    if (file.size() > kMost)
        throw Failure(Text::badManifest, {nameOf(file.path()), say(Text::reasonLarge)});
    std::string text(static_cast<std::size_t>(file.size()), '\0');
    text.resize(file.readAt(0, text.data(), text.size()));
    return text;
}

/// The files that a manifest names, before anything is made of them. The folder may have been sent
/// by somebody: a link in it could bring in any file of the one who packs it.
struct Sources {
    Sources(const Manifest& manifest, const Options& options, Access ofManifest)
        : access(std::move(ofManifest)) {
        for (const ManifestBlock& block : manifest.blocks) {
            const InputFile file(options.input / pathOf(block.file), Links::refuse);
            checkTarget(options.output, file.path(), options.force);
            access.narrow(file.access());
            bytes += file.size();
        }
    }

    Access access;  ///< what all of them allow
    std::uint64_t bytes = 0;
};

void report(const Options& options, const Json& json, const std::string& text) {
    print((options.json ? json.text : text) + "\n");
}

}  // namespace

int extract(const Options& options) {
    OpenFile open(options.input);
    const Entries entries = open.entries();
    OutputFolder folder(options.output, open.file.access(), options.force);
    for (const BlocItem& entry : entries.firsts) folder.check(fileOf(entry), options.input);
    folder.check(kManifestName, options.input);
    const Index& index = open.index();
    std::string manifest =
        manifestStart(open.map.header, labelOf(open.probe, open.map.shape, index.frame),
                      open.map.checksums.has_value());
    for (const BlocItem& entry : entries.firsts) {
        const Frame frame = open.block(entry);
        const ManifestBlock block{entry.id, labelOf(open.window, open.map.shape, frame),
                                  fileOf(entry)};
        manifest += manifestBlock(block, &entry == entries.firsts.data());
        OutputFile out = folder.file(block.file, open.watch());
        out.copy(open.file, frame.offset + open.map.shape.head, frame.length);
        out.finish();
    }
    manifest += manifestEnd();
    OutputFile out = folder.file(kManifestName);
    out.write(manifest.data(), manifest.size());
    out.finish();
    folder.finish(options.input);
    const Json leftOut = tellLeftOut(entries.repeated, options.json);
    const std::string name = nameOf(options.output);
    const std::size_t count = entries.firsts.size();
    report(options,
           jsonObject({{"output", name}, {"blocks", std::uint64_t{count}}, {"repeated", leftOut}}),
           say(Text::extracted, {grouped(count), name}));
    return entries.repeated.empty() ? kSound : kFindings;
}

int pack(const Options& options) {
    const InputFile listed(options.input / kManifestName, Links::refuse);
    const std::string name = nameOf(listed.path());
    const Manifest manifest = parseManifest(readAll(listed), name);
    checkTarget(options.output, listed.path(), options.force);
    const Sources sources(manifest, options, listed.access());
    Progress progress(sources.bytes);
    std::uint64_t done = 0;
    OutputFile output(options.output, sources.access, options.force,
                      [&](std::uint64_t at) { progress.update(done + at); });
    Writer writer(output);
    if (manifest.checksums) writer.keepSums();
    for (const ManifestBlock& block : manifest.blocks) {
        const InputFile file(options.input / pathOf(block.file), Links::refuse);
        progress.update(done);
        writer.add(block.id, block.label, file);
        done += file.size();
        if (writer.repeated())
            throw Failure(Text::badManifest,
                          {name, say(Text::manifestRepeats, {std::to_string(block.id)})});
    }
    writer.finish(manifest.header, manifest.index);
    output.finish();
    const std::string made = nameOf(options.output);
    const std::size_t count = manifest.blocks.size();
    report(options, jsonObject({{"output", made}, {"blocks", std::uint64_t{count}}}),
           say(Text::packed, {grouped(count), made}));
    return kSound;
}

}  // namespace tbfile
