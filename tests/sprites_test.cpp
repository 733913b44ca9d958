#include "about/sprites.h"

#include <gmock/gmock.h>

#include <deque>
#include <string>
#include <vector>

namespace {

using namespace tamrix;
using testing::ElementsAre;

std::deque<int> script;

int scripted() {
    if (script.empty()) {
        ADD_FAILURE() << "a random number too many";
        return 0;
    }
    const int value = script.front();
    script.pop_front();
    return value;
}

class Sprites : public testing::Test {
protected:
    void TearDown() override { EXPECT_THAT(script, testing::IsEmpty()) << "not all random numbers were used"; }
};

TEST_F(Sprites, FlyersStartAnywhereInTheUpperPart) {
    script = {255 + 256, 63 + 64};
    Placement at;
    Velocity velocity{3, 3};
    placeFlyer(at, velocity, scripted);
    EXPECT_THAT((std::vector{at.x, at.y, at.frame, velocity.dx, velocity.dy}), ElementsAre(305, 73, 1, 0, 0));
}

TEST_F(Sprites, FlyersTurnAtTheirBordersInOrderOfPrecedence) {
    struct {
        const char* reason;
        int x, y, dx, dy;
        int direction, newX, newY, newDx, newDy;
    } const rows[] = {
        {"near the top", 200, 3, 0, 0, 3, 200, 5, 0, 2},
        {"rising fast", 200, 50, 0, -11, 3, 200, 41, 0, -9},
        {"low", 200, 101, 0, 0, 1, 200, 100, 0, -1},
        {"falling fast", 200, 50, 0, 6, 1, 200, 55, 0, 5},
        {"at the left side", 4, 50, 0, 0, 2, 5, 51, 1, 1},
        {"fast to the left", 200, 50, -8, 0, 2, 193, 51, -7, 1},
        {"at the right side", 381, 50, 0, 0, 0, 380, 51, -1, 1},
        {"fast to the right", 200, 50, 8, 0, 0, 207, 51, 7, 1},
        {"the top goes before falling fast", 200, 4, 0, 6, 3, 200, 12, 0, 8},
        {"low goes before the sides", 4, 101, 0, 0, 1, 4, 100, 0, -1},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.reason);
        Placement at{row.x, row.y, 0};
        Velocity velocity{row.dx, row.dy};
        moveFlyer(at, velocity, scripted);
        EXPECT_THAT((std::vector{at.frame, at.x, at.y, velocity.dx, velocity.dy}),
                    ElementsAre(row.direction, row.newX, row.newY, row.newDx, row.newDy));
    }
}

TEST_F(Sprites, FlyersInsideTheirBordersTurnAtRandom) {
    struct {
        int x, y, dx, dy;
    } const insides[] = {{5, 5, -7, -10}, {380, 100, 7, 5}};
    for (const auto& inside : insides)
        for (int frame = 0; frame < kFlyerFrames; ++frame)
            for (const auto& [drawn, turn] :
                 std::vector<std::pair<int, int>>{{0, 1}, {3, 1}, {4, 0}, {11, 0}, {12, 3}, {15, 3}}) {
                SCOPED_TRACE(testing::Message() << "from " << inside.x << " frame " << frame << " drawn " << drawn);
                script = {drawn + 16};
                Placement at{inside.x, inside.y, frame};
                Velocity velocity{inside.dx, inside.dy};
                moveFlyer(at, velocity, scripted);
                EXPECT_EQ(at.frame, (frame + turn) % kFlyerFrames);
            }
}

/// What a walker shows frame by frame: "row:frame@x", or "-" when it is not drawn.
std::string shown(Placement& at, Walk& walk) {
    if (!moveWalker(at, walk, scripted)) return "-";
    return std::to_string(walkerRow(walk)) + ":" + std::to_string(at.frame) + "@" + std::to_string(at.x);
}

std::vector<std::string> shown(Placement& at, Walk& walk, int frames) {
    std::vector<std::string> result;
    for (int i = 0; i < frames; ++i) result.push_back(shown(at, walk));
    return result;
}

TEST_F(Sprites, WalkersStartOnOneFrameInEight) {
    for (int drawn = 1; drawn < 8; ++drawn) {
        script = {drawn};
        Placement at;
        Walk walk;
        EXPECT_EQ(shown(at, walk), "-");
        EXPECT_EQ(walk.kind, WalkerKind::inactive);
    }
    script = {8, 3, 255, 127};
    Placement at;
    Walk walk;
    EXPECT_EQ(shown(at, walk), "0:0@305") << "the frame that starts one draws it";
    EXPECT_EQ(at.y, 372);
}

TEST_F(Sprites, WalkersEmergeWalkAndRetreat) {
    Placement at;
    Walk walk;
    script = {0, 0, 50, 0, /* stays in the walk */ 1, /* leaves it */ 4};
    EXPECT_THAT(shown(at, walk, 14),
                ElementsAre("0:0@100", "0:1@100", "0:2@100", "0:3@100", "0:4@98", "0:5@96", "0:3@94", "0:4@92",
                            "0:5@90", "0:3@88", "0:2@88", "0:1@88", "0:0@88", "-"));
    EXPECT_EQ(walk.kind, WalkerKind::inactive);

    script = {0, 1, 50, 0, 0};
    EXPECT_THAT(shown(at, walk, 11), ElementsAre("1:0@100", "1:1@100", "1:2@100", "1:3@100", "1:4@102", "1:5@104",
                                                 "1:3@106", "1:2@106", "1:1@106", "1:0@106", "-"))
        << "to the right, and again from rest";
}

TEST_F(Sprites, PlayersEmergeAndPlayInPlace) {
    Placement at;
    Walk walk;
    script = {0, 2, 0, 10};
    EXPECT_THAT(shown(at, walk, 11), ElementsAre("0:0@50", "0:1@50", "0:2@50", "0:3@50", "2:0@50", "2:1@50", "2:2@50",
                                                 "2:3@50", "2:4@50", "2:5@50", "-"));
    EXPECT_EQ(at.y, 255);
    EXPECT_EQ(walk.kind, WalkerKind::inactive);
}

/// The platform's generator, seeded like this for a repeatable run.
std::uint32_t seed = 1;
int generated() {
    seed = seed * 214013u + 2531011u;
    return static_cast<int>(seed >> 16 & 0x7FFF);
}

TEST_F(Sprites, KeepToTheirFramesAndPlacesForLong) {
    Placement flyer;
    Velocity velocity;
    placeFlyer(flyer, velocity, generated);
    Placement walker;
    Walk walk;
    int lowest = 0, drawn = 0;
    for (int i = 0; i < 100000; ++i) {
        moveFlyer(flyer, velocity, generated);
        ASSERT_TRUE(flyer.frame >= 0 && flyer.frame < kFlyerFrames);
        lowest = std::max(lowest, flyer.y);
        if (!moveWalker(walker, walk, generated)) continue;
        ++drawn;
        ASSERT_TRUE(walker.frame >= 0 && walker.frame < kWalkerFrames);
        ASSERT_TRUE(walkerRow(walk) >= 0 && walkerRow(walk) < kWalkerRows);
    }
    EXPECT_LE(lowest + 32, 194) << "flyers stay in the picture area, clear of the band below";
    EXPECT_GT(drawn, 10000);
}

}  // namespace
