// about_frames DIR COUNT [SKIP]: writes COUNT successive frames of the about box, beginning with frame SKIP, as
// DIR/frame000.bmp and so on. The random seed is fixed, so that each run draws the same sprites.
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "entry/entry.h"
#include "tamrix32/about.h"

namespace {

/// Pixels of a painted frame, top row first, 0x00RRGGBB.
struct Image {
    static constexpr int kSide = 411;

    Image() : pixels(static_cast<std::size_t>(kSide) * kSide) {}

    std::vector<DWORD> pixels;
};

/// Calls `draw` with a device context of the size of a frame, and returns the pixels.
template <typename Draw>
Image captured(Draw draw) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = Image::kSide;
    info.bmiHeader.biHeight = -Image::kSide;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    const HDC memory = CreateCompatibleDC(nullptr);
    const HBITMAP bitmap = CreateDIBSection(memory, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    const HGDIOBJ former = SelectObject(memory, bitmap);
    draw(memory);
    GdiFlush();
    Image image;
    for (std::size_t i = 0; i < image.pixels.size(); ++i) image.pixels[i] = static_cast<DWORD*>(bits)[i] & 0xFFFFFF;
    SelectObject(memory, former);
    DeleteObject(bitmap);
    DeleteDC(memory);
    return image;
}

/// A derived class, as a client may define it, which makes the frames available.
class Frames : public CAboutQuillonAppleTalk {
public:
    using CAboutQuillonAppleTalk::animate;

    /// The current frame.
    Image painted() {
        return captured([this](HDC dc) { paint(dc); });
    }
};

bool writeBitmap(const std::string& path, const Image& image) {
    BITMAPFILEHEADER file{};
    BITMAPINFOHEADER info{};
    info.biSize = sizeof info;
    info.biWidth = Image::kSide;
    info.biHeight = -Image::kSide;
    info.biPlanes = 1;
    info.biBitCount = 32;
    file.bfType = 0x4D42;
    file.bfOffBits = sizeof file + sizeof info;
    file.bfSize = file.bfOffBits + static_cast<DWORD>(image.pixels.size() * sizeof(DWORD));
    std::FILE* out = std::fopen(path.c_str(), "wb");
    if (!out) return false;
    const bool written =
        std::fwrite(&file, sizeof file, 1, out) == 1 && std::fwrite(&info, sizeof info, 1, out) == 1 &&
        std::fwrite(image.pixels.data(), sizeof(DWORD), image.pixels.size(), out) == image.pixels.size();
    return (std::fclose(out) == 0) && written;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        std::fputs("usage: about_frames DIR COUNT [SKIP]\n", stderr);
        return 2;
    }
    DllMain(GetModuleHandleA(nullptr), DLL_PROCESS_ATTACH, nullptr);
    Frames box;
    std::srand(6);
    const int count = std::atoi(argv[2]);
    for (int skip = argc > 3 ? std::atoi(argv[3]) : 0; skip > 0; --skip) box.animate();
    for (int i = 0; i < count; ++i) {
        box.animate();
        char name[32];
        std::snprintf(name, sizeof name, "/frame%03d.bmp", i);
        if (!writeBitmap(argv[1] + std::string(name), box.painted())) {
            std::fprintf(stderr, "about_frames: cannot write %s%s\n", argv[1], name);
            return 1;
        }
    }
    return 0;
}
