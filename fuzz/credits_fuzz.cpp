// Credits and bitmap resources of any bytes: every line lies in its block and ends with a zero byte, nothing expands
// beyond its buffer, and a bitmap that is accepted lies within its bytes.
#include <array>
#include <memory>
#include <vector>

#include "about/bitmap_header.h"
#include "about/credits_text.h"
#include "fuzz_input.h"

namespace {

using fuzzing::require;
using namespace tamrix;

void readLine(std::string_view line, const LeadByteTable& leads, MarkedFonts fonts) {
    const MarkedLine marked = takeMarker(line, fonts);
    require(marked.text.size() + (marked.font != CreditsFont::regular) == line.size());
    std::array<char, kExpandedCapacity> buffer;
    const std::string_view shown = expandPlaceholders(marked.text, leads, buffer);
    require(shown.data() == buffer.data() && shown.size() <= buffer.size());
    if (!hasPlaceholder(marked.text, leads)) require(marked.text.starts_with(shown));
}

void readCredits(const std::string& bytes, const LeadByteTable& leads, MarkedFonts fonts) {
    const std::unique_ptr<char[]> block(new char[bytes.size() + 1]);
    const std::span<char> text(block.get(), bytes.size() + 1);
    bytes.copy(block.get(), bytes.size());
    text.back() = '\0';
    std::vector<AboutLine> lines(static_cast<std::size_t>(compactCredits(text, leads)));
    splitCredits(text, leads, lines);
    for (const AboutLine& line : lines) {
        require(line.length >= 0 && line.offset + static_cast<std::size_t>(line.length) < text.size());
        require(text[line.offset + static_cast<std::size_t>(line.length)] == '\0');
        readLine({&text[line.offset], static_cast<std::size_t>(line.length)}, leads, fonts);
    }
}

void readBitmap(const std::string& bytes) {
    const std::unique_ptr<unsigned char[]> copy(new unsigned char[bytes.size()]);
    bytes.copy(reinterpret_cast<char*>(copy.get()), bytes.size());
    const auto bitmap = BitmapResource::read({copy.get(), bytes.size()});
    if (!bitmap) return;
    unsigned sum = 0;
    for (int i = 0; i < bitmap->colourCount(); ++i) sum += bitmap->colour(i).red;
    for (const unsigned char bit : bitmap->bits()) sum += bit;
    require(sum <= 255u * bytes.size());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzzing::Input input(data, size);
    const LeadByteTable leads = input.leadBytes();
    const std::uint8_t fonts = input.byte();
    readBitmap(input.bytes(200));
    const std::string credits(reinterpret_cast<const char*>(data), size);
    readCredits(credits, leads, {(fonts & 1) != 0, (fonts & 2) != 0, (fonts & 4) != 0});
    return 0;
}
