// Enhanced metafiles. Their unit is that of the frame, a hundredth of a millimetre: the system
// counts it from the size in pixels and in millimetres that the screen claims, which the header
// tells and which is not its resolution.
#include <memory>
#include <type_traits>
#include <utility>

#include "canvas/file_writer.h"
#include "canvas/sentences.h"
#include "toolbox/canvas_device.h"
#include "toolbox/platform.h"

using namespace toolbox::canvas;

namespace {

constexpr double kUnitsPerPoint = 2540.0 / 72;
constexpr int kUnitsPerMillimetre = 100;

struct EndMetafile {
    void operator()(HENHMETAFILE file) const { DeleteEnhMetaFile(file); }
};
using Metafile = std::unique_ptr<std::remove_pointer_t<HENHMETAFILE>, EndMetafile>;

/// The screen, which metafiles refer to.
class Screen {
  public:
    ~Screen() {
        if (dc_) ReleaseDC(nullptr, dc_);
    }
    Screen() = default;
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;
    [[nodiscard]] HDC dc() const { return dc_; }

  private:
    HDC dc_ = GetDC(nullptr);
};

/// A metafile that is being made; finish() or the end closes it.
class OpenMetafile {
  public:
    OpenMetafile(const Screen& screen, const RECT* frame)
        : dc_(CreateEnhMetaFileA(screen.dc(), nullptr, frame, nullptr)) {}
    ~OpenMetafile() { (void)finish(); }
    OpenMetafile(const OpenMetafile&) = delete;
    OpenMetafile& operator=(const OpenMetafile&) = delete;

    [[nodiscard]] HDC dc() const { return dc_; }
    [[nodiscard]] Metafile finish() {
        const HDC dc = std::exchange(dc_, nullptr);
        return Metafile(dc ? CloseEnhMetaFile(dc) : nullptr);
    }

  private:
    HDC dc_;
};

/// What a metafile made for the screen says of it: its sizes in pixels and in millimetres.
[[nodiscard]] ENHMETAHEADER headerFor(const Screen& screen) {
    ENHMETAHEADER header{};
    const Metafile empty = OpenMetafile(screen, nullptr).finish();
    GetEnhMetaFileHeader(empty.get(), sizeof header, &header);
    return header;
}

[[nodiscard]] bool setUnits(HDC dc, const ENHMETAHEADER& header) {
    const auto [pixelsX, pixelsY] = header.szlDevice;
    const auto [wide, high] = header.szlMillimeters;
    return pixelsX > 0 && pixelsY > 0 && wide > 0 && high > 0 && SetMapMode(dc, MM_ANISOTROPIC) &&
           SetWindowExtEx(dc, wide * kUnitsPerMillimetre, high * kUnitsPerMillimetre, nullptr) &&
           SetViewportExtEx(dc, pixelsX, pixelsY, nullptr);
}

[[nodiscard]] Metafile metafileOf(const TvRecording& drawing) {
    const Screen screen;
    const TvDevicePage page{
        drawing.width(), drawing.height(), kUnitsPerPoint, kUnitsPerPoint, 0, 0};
    const auto side = [](double points) {
        return static_cast<LONG>(points * kUnitsPerPoint + 0.5);
    };
    const RECT frame{0, 0, side(page.width), side(page.height)};
    OpenMetafile file(screen, &frame);
    if (!file.dc() || !setUnits(file.dc(), headerFor(screen))) return nullptr;
    {
        TvDeviceCanvas canvas(file.dc(), page);
        if (!drawing.play(canvas)) return nullptr;
    }
    return file.finish();
}

}  // namespace

std::string TvMetafile::bytes() const {
    const Metafile file = metafileOf(*this);
    std::string result(GetEnhMetaFileBits(file.get(), 0, nullptr), '\0');
    GetEnhMetaFileBits(file.get(), static_cast<UINT>(result.size()),
                       reinterpret_cast<BYTE*>(result.data()));
    return result;
}

int TvMetafile::write(const char* fileName, CString* why) const {
    const std::string made = bytes();
    if (!made.empty()) return writeWhole(fileName, made, why);
    if (why) *why = reasonOf(ERROR_NOT_ENOUGH_MEMORY);
    return 0;
}

int TvMetafile::copy(CString* why) const {
    const std::string made = bytes();
    toolbox::platform::ErrorCode error = ERROR_NOT_ENOUGH_MEMORY;
    if (!made.empty()) error = toolbox::platform::current().clipboard->setPicture(made);
    if (error == ERROR_SUCCESS) return 1;
    const bool isInUse = error == ERROR_ACCESS_DENIED;
    if (why) *why = isInUse ? printed(Sentence::clipboard) : reasonOf(error);
    return 0;
}
