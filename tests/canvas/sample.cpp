// Writes the sample as SVG and PDF, in the folder that it is given; on Windows as a metafile and as
// the picture of a device context, too.
#include <cstdio>
#include <string>

#include "sample_drawing.h"

#if defined(_WIN32)
#include <fstream>

#include "device/memory_picture.h"
#include "toolbox/canvas_device.h"
#endif

namespace {

/// Writes a drawing; false, after a message, when that fails.
template <class Drawing>
bool isWritten(const Drawing& drawing, const std::string& name) {
    CString why;
    if (drawing.write(name.c_str(), &why)) return true;
    std::fprintf(stderr, "%s: %s\n", name.c_str(), why.c_str());
    return false;
}

#if defined(_WIN32)

void writeBitmap(const MemoryPicture& picture, const std::string& name) {
    BITMAPFILEHEADER head{};
    head.bfType = 0x4D42;  // "BM"
    head.bfOffBits = sizeof head + sizeof picture.header();
    head.bfSize = head.bfOffBits + static_cast<DWORD>(picture.pixels().size_bytes());
    std::ofstream file(name, std::ios::binary);
    const auto add = [&file](const void* bytes, std::size_t count) {
        file.write(static_cast<const char*>(bytes), static_cast<std::streamsize>(count));
    };
    add(&head, sizeof head);
    add(&picture.header(), sizeof picture.header());
    add(picture.pixels().data(), picture.pixels().size_bytes());
}

MemoryPicture pictureOf(int scale) {
    return {static_cast<int>(kSampleWidth) * scale, static_cast<int>(kSampleHeight) * scale};
}

bool areDevicesWritten(const std::string& folder) {
    for (const int scale : {1, 4}) {
        const MemoryPicture picture = pictureOf(scale);
        const double perPoint = scale;
        TvDeviceCanvas canvas(picture.dc(), {kSampleWidth, kSampleHeight, perPoint, perPoint});
        drawSample(canvas);
        writeBitmap(picture, folder + "/device" + std::to_string(scale) + ".bmp");
    }
    TvMetafile metafile(kSampleWidth, kSampleHeight);
    drawSample(metafile);
    const std::string name = folder + "/sample.emf";
    if (!isWritten(metafile, name)) return false;
    const MemoryPicture pasted = pictureOf(4);
    const HENHMETAFILE file = GetEnhMetaFileA(name.c_str());
    const RECT place{0, 0, pasted.width(), pasted.height()};
    PlayEnhMetaFile(pasted.dc(), file, &place);
    DeleteEnhMetaFile(file);
    writeBitmap(pasted, folder + "/metafile.bmp");
    return true;
}

#else

bool areDevicesWritten(const std::string&) {
    return true;
}

#endif

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) return 2;
    const std::string folder = argv[1];
    TvSvg svg(kSampleWidth, kSampleHeight);
    TvPdf pdf;
    svg.setTitle("\311chantillon");
    pdf.setTitle("\311chantillon");
    drawSample(svg);
    drawSample(pdf.addPage(kSampleWidth, kSampleHeight));
    return isWritten(svg, folder + "/sample.svg") && isWritten(pdf, folder + "/sample.pdf") &&
                   areDevicesWritten(folder)
               ? 0
               : 1;
}
