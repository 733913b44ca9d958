// about_frames DIR COUNT [SKIP]: writes COUNT successive frames of the about box, from frame SKIP on, as
// DIR/frame000.bmp and so on. The sprites move by a fixed seed, so that each run draws the same.
#include <cstdio>
#include <cstdlib>
#include <string>

#include "frame/entry.h"
#include "windows/about_probe.h"

namespace {

using testing_support::Image;

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
    testing_support::AboutProbe box;
    std::srand(6);
    const int count = std::atoi(argv[2]);
    for (int skip = argc > 3 ? std::atoi(argv[3]) : 0; skip > 0; --skip) box.animate();
    for (int i = 0; i < count; ++i) {
        box.animate();
        char name[32];
        std::snprintf(name, sizeof name, "/frame%03d.bmp", i);
        if (!writeBitmap(argv[1] + std::string(name), box.frame())) {
            std::fprintf(stderr, "about_frames: cannot write %s%s\n", argv[1], name);
            return 1;
        }
    }
    return 0;
}
