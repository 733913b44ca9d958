// The parts of the about box without a window: the movement of its sprites, and when a resource is loaded. Its frames,
// and so the perspective of its credits, are tested in the shipped DLL.
#include <gmock/gmock.h>
#include <standin.h>

#include <regex>
#include <vector>

#include "about/perspective.h"
#include "about/sprites.h"
#include "base/global_memory.h"
#include "tamrix32/about.h"

namespace {

using namespace tamrix;
using testing::ElementsAre;

/// Random numbers of the same range as rand(), the same in each run, with a log.
std::vector<int> drawn;
int draw() {
    static std::uint32_t state = 1;
    state = state * 214013u + 2531011u;
    drawn.push_back(static_cast<int>(state >> 16 & 0x7FFF));
    return drawn.back();
}

TEST(Flyers, TurnAtTheirBordersFirstAndElseAtRandom) {
    Placement free;
    Velocity freely{3, 3};
    drawn.clear();
    placeFlyer(free, freely, draw);
    EXPECT_THAT((std::vector{free.x, free.y, free.icon, freely.dx, freely.dy}),
                ElementsAre(50 + drawn[0] % 256, 10 + drawn[1] % 64, 1, 0, 0));
    for (int i = 0; i < 100000; ++i) {
        const Placement before{draw() % 400, draw() % 120, draw() % 4};
        const Velocity speed{draw() % 21 - 10, draw() % 21 - 14};
        Placement at = before;
        Velocity velocity = speed;
        drawn.clear();
        moveFlyer(at, velocity, draw);
        const int chance = drawn.empty() ? 4 : drawn[0] % 16;
        int turn = (before.icon + (chance < 4 ? 1 : chance < 12 ? 0 : 3)) % 4;
        if (before.x > 380 || speed.dx > 7) turn = 0;
        if (before.x < 5 || speed.dx < -7) turn = 2;
        if (before.y > 100 || speed.dy > 5) turn = 1;
        if (before.y < 5 || speed.dy < -10) turn = 3;
        const int dx = speed.dx + std::vector{-1, 0, 1, 0}[turn], dy = speed.dy + std::vector{1, -1, 1, 2}[turn];
        ASSERT_THAT((std::vector{at.icon, velocity.dx, velocity.dy, at.x, at.y}),
                    ElementsAre(turn, dx, dy, before.x + dx, before.y + dy));
    }
}

// A frame of the text consists of the random decision, the row and number of the icon, and the direction of the step.
TEST(Walkers, EmergeWalkOrPlayAndRetreatForLong) {
    const std::regex life(
        "z*(L00=01=02=03=04<05<(s03<04<05<)*l03<02=01=00="
        "|R10=11=12=13=14>15>(s13>14>15>)*l13>12=11=10="
        "|P00=01=02=03=20=21=22=23=24=25=)");
    Placement at;
    Walk walk;
    std::string text;
    int lives = 0;
    for (int i = 0; i < 100000; ++i) {
        drawn.clear();
        int x = at.x;
        const bool shown = moveWalker(at, walk, draw);
        if (drawn.size() == 4) {
            text += drawn[0] % 8 ? '?' : "LRP"[drawn[1] % 3];
            x = 50 + drawn[2] % 256;
            ASSERT_EQ(at.y, 245 + drawn[3] % 128);
        } else if (!drawn.empty()) {
            text += shown ? (drawn[0] % 4 ? 's' : 'l') : drawn[0] % 8 ? 'z' : '?';
        }
        if (shown) text += std::to_string(10 * walkerRow(walk) + at.icon + 100).substr(1) + "<?=?>"[at.x - x + 2];
        if (shown || !drawn.empty()) continue;
        ASSERT_TRUE(std::regex_match(text, life)) << text;
        text.clear();
        ++lives;
    }
    EXPECT_GT(lives, 2000);
}

TEST(Perspective, ReachesTheFirstLineWhateverRoomThereIs) {
    Perspective perspective(411, 245, 36);
    EXPECT_TRUE(perspective.reaches(0));
    perspective.endLine();
    EXPECT_TRUE(perspective.reaches(246));
    EXPECT_FALSE(perspective.reaches(245));
}

/// The results of locking (l), unlocking (u) and copying (c), with a "*" while the resource is locked, and its size.
std::string story(CCustomResource resource, const std::string& operations) {
    std::string text;
    for (const char operation : operations) {
        const GlobalBlock copy(operation == 'c' ? resource.copyData() : nullptr);
        if (copy) text += std::string(GlobalBlockLock(copy.get()).bytes(), GlobalSize(copy.get()));
        if (operation != 'c') text += std::to_string(operation == 'l' ? resource.lock() : resource.unlock());
        text += resource.isLocked() ? "* " : " ";
        EXPECT_EQ(resource.getAddress() != nullptr, resource.isLocked() == 1);
        EXPECT_EQ(standin::loadedResources(), resource.isLocked() ? 1U : 0U);
    }
    return text + std::to_string(resource.getSize());
}

TEST(CustomResource, IsLoadedWhileItIsLocked) {
    const HINSTANCE module = standin::fakeModule(7);
    char type[] = "TEXT", name[] = "named", missing[] = "missing";
    const BYTE bytes[] = {'t', 'e', 'x', 't'};
    standin::addResource(module, type, name, bytes);
    standin::addResource(module, type, MAKEINTRESOURCEA(2), {});
    for (const auto& none : {CCustomResource(module, missing, type), CCustomResource(nullptr, name, type),
                             CCustomResource(module, 0x10000, type), CCustomResource(module, name, nullptr)})
        EXPECT_EQ(story(none, "lcu"), "0  0 0");
    EXPECT_EQ(story({module, 0x10002, type}, "lcu"), "1* " + std::string(1, '\0') + "* 0 0");
    EXPECT_EQ(story({module, name, type}, "ucllcuu"), "0 text 1* 1* text* 1* 0 4");
    EXPECT_EQ(story({module, name, type}, "lull"), "1* 0 1* 1* 4") << "the destructor unlocks";
    EXPECT_EQ(standin::loadedResources(), 0U);
    standin::clearResources();
}

}  // namespace
