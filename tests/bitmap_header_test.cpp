#include "about/bitmap_header.h"

#include <gmock/gmock.h>

#include <vector>

namespace {

using tamrix::BitmapResource;

/// A bitmap of 3 x 2 pixels with two colours, compressed into six bytes.
std::vector<unsigned char> small() {
    std::vector<unsigned char> bytes(40 + 2 * 4 + 6);
    bytes[0] = 40;
    bytes[4] = 3;
    bytes[8] = 2;
    bytes[12] = 1;
    bytes[14] = 8;
    bytes[16] = 1;
    bytes[20] = 6;
    bytes[32] = 2;
    bytes[44] = 10;  // second colour: blue, green, red
    bytes[45] = 20;
    bytes[46] = 30;
    bytes[48] = 0xAB;  // first of the bits
    return bytes;
}

TEST(BitmapResource, GivesSizeColoursAndBits) {
    const auto bytes = small();
    const auto bitmap = BitmapResource::read(bytes);
    ASSERT_TRUE(bitmap);
    EXPECT_EQ(bitmap->width(), 3);
    EXPECT_EQ(bitmap->height(), 2);
    EXPECT_EQ(bitmap->colourCount(), 2);
    EXPECT_EQ(bitmap->colour(1).red, 30);
    EXPECT_EQ(bitmap->colour(1).green, 20);
    EXPECT_EQ(bitmap->colour(1).blue, 10);
    EXPECT_EQ(bitmap->bits().size(), 6u);
    EXPECT_EQ(bitmap->bits()[0], 0xAB);
}

TEST(BitmapResource, CountsTheColoursByTheDepthWhereTheHeaderDoesNot) {
    auto bytes = small();
    bytes[32] = 0;
    EXPECT_FALSE(BitmapResource::read(bytes)) << "256 colours do not fit";
    bytes.resize(40 + 256 * 4 + 6);
    ASSERT_TRUE(BitmapResource::read(bytes));
    EXPECT_EQ(BitmapResource::read(bytes)->colourCount(), 256);
}

TEST(BitmapResource, IsRefusedWhereItIsCutOrMisstated) {
    const auto whole = small();
    auto plain = whole;  // 13 x 3 pixels of 4 bits: rows of 7 bytes, filled up to 8
    plain[4] = 13;
    plain[8] = 3;
    plain[14] = 4;
    plain[16] = plain[20] = 0;
    plain.resize(40 + 2 * 4 + 3 * 8);
    for (const auto& bitmap : {whole, plain}) {
        EXPECT_TRUE(BitmapResource::read(bitmap));
        for (std::size_t size = 0; size < bitmap.size(); ++size) {
            const std::vector<unsigned char> cut(bitmap.begin(), bitmap.begin() + static_cast<std::ptrdiff_t>(size));
            EXPECT_FALSE(BitmapResource::read(cut)) << size << " of " << bitmap.size();
        }
    }
    struct {
        const char* reason;
        std::size_t offset;
        unsigned char value;
    } const rows[] = {
        {"another header", 0, 12},
        {"no width", 4, 0},
        {"a negative width", 7, 0x80},
        {"no height", 8, 0},
        {"a negative height", 11, 0x80},
        {"no depth", 14, 0},
        {"24 bits per pixel", 14, 24},
        {"257 colours", 33, 1},
        {"a huge count of colours", 35, 0xFF},
        {"bits beyond the end", 20, 7},
        {"no size of compressed bits", 20, 0},
        {"rows of 4 bytes that do not fit", 16, 0},
    };
    for (const auto& row : rows) {
        auto bytes = whole;
        bytes[row.offset] = row.value;
        EXPECT_FALSE(BitmapResource::read(bytes)) << row.reason;
    }
}

}  // namespace
