// extract and pack: the blocks of a file as files of a folder, and back.
#include "commands.h"
#include "failure.h"
#include "json.h"
#include "manifest.h"
#include "open_file.h"
#include "output_folder.h"
#include "writer.h"

namespace tbfile {
namespace {

namespace fs = std::filesystem;

/// The name of the file that a block's data goes to.
std::string fileOf(const BlocItem& entry) {
    return std::to_string(entry.id) + ".bin";
}

std::string readAll(const Path& path) {
    const InputFile file(path);
    std::string text(static_cast<std::size_t>(file.size()), '\0');
    text.resize(file.readAt(0, text.data(), text.size()));
    return text;
}

/// Bytes of the files that a manifest names.
std::uint64_t sizeOf(const Manifest& manifest, const Path& folder) {
    std::uint64_t size = 0;
    for (const ManifestBlock& block : manifest.blocks) {
        std::error_code missing;
        const auto bytes = fs::file_size(folder / pathOf(block.file), missing);
        if (!missing) size += bytes;
    }
    return size;
}

void told(const Options& options, const Json& json, const std::string& text) {
    print((options.json ? json.text : text) + "\n");
}

}  // namespace

int extract(const Options& options) {
    OpenFile open(options.input);
    const Entries entries = open.entries();
    OutputFolder folder(options.output, options.force);
    for (const BlocItem& entry : entries.firsts) folder.check(fileOf(entry), options.input);
    folder.check(kManifestName, options.input);
    const Index& index = open.index();
    std::string manifest =
        manifestStart(open.map.header, labelOf(open.probe, open.map.shape, index.frame));
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
    told(options,
         jsonObject({{"output", name}, {"blocks", std::uint64_t{count}}, {"repeated", leftOut}}),
         say(Text::extracted, {grouped(count), name}));
    return entries.repeated.empty() ? kSound : kFindings;
}

int pack(const Options& options) {
    const Path name = options.input / kManifestName;
    const Manifest manifest = parseManifest(readAll(name), nameOf(name));
    checkTarget(options.output, name, options.force);
    Progress progress(sizeOf(manifest, options.input));
    std::uint64_t done = 0;
    OutputFile output(options.output, options.force,
                      [&](std::uint64_t at) { progress.update(done + at); });
    Writer writer(output);
    for (const ManifestBlock& block : manifest.blocks) {
        const Path data = options.input / pathOf(block.file);
        checkTarget(options.output, data, options.force);
        const InputFile file(data);
        progress.update(done);
        writer.add(block.id, block.label, file);
        done += file.size();
        if (writer.repeated())
            throw Failure(Text::badManifest, {nameOf(name), std::to_string(block.id)});
    }
    writer.finish(manifest.header, manifest.index);
    output.finish();
    const std::string made = nameOf(options.output);
    const std::size_t count = manifest.blocks.size();
    told(options, jsonObject({{"output", made}, {"blocks", std::uint64_t{count}}}),
         say(Text::packed, {grouped(count), made}));
    return kSound;
}

}  // namespace tbfile
