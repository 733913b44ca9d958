#include "about/sprites.h"

namespace tamrix {
namespace {

constexpr int kLeftAndDown = 0;
constexpr int kUp = 1;
constexpr int kRightAndDown = 2;
constexpr int kDown = 3;

/// Icons 0 to 2 of a row show emerging, 3 to 5 walking.
constexpr int kFirstWalkingIcon = 3;
/// A playing walker emerges with one icon more than a walking one.
constexpr int kEmergingIconsOfPlayer = 4;
constexpr int kStride = 2;

int flyerDirection(const Placement& at, const Velocity& velocity, Random random) {
    if (at.y < 5 || velocity.dy < -10) return kDown;
    if (at.y > 100 || velocity.dy > 5) return kUp;
    if (at.x < 5 || velocity.dx < -7) return kRightAndDown;
    if (at.x > 380 || velocity.dx > 7) return kLeftAndDown;
    const int chance = random() & 15;
    if (chance < 4) return (at.icon + 1) % kFlyerIcons;
    if (chance >= 12) return (at.icon + 3) % kFlyerIcons;
    return at.icon;
}

Velocity acceleration(int direction) {
    switch (direction) {
        case kLeftAndDown:
            return {-1, 1};
        case kUp:
            return {0, -1};
        case kRightAndDown:
            return {1, 1};
        default:
            return {0, 2};
    }
}

bool startsWalking(Placement& at, Walk& walk, Random random) {
    if ((random() & 7) != 0) return false;
    walk.phase = WalkerPhase::emerging;
    at.icon = -1;
    walk.kind = static_cast<WalkerKind>(random() % 3);
    at.x = 50 + (random() & 255);
    at.y = 245 + (random() & 127);
    return true;
}

bool rest(Walk& walk) {
    walk.kind = WalkerKind::inactive;
    return false;
}

bool stepWalking(Placement& at, Walk& walk, Random random) {
    switch (walk.phase) {
        case WalkerPhase::emerging:
            if (++at.icon == kFirstWalkingIcon) walk.phase = WalkerPhase::active;
            return true;
        case WalkerPhase::active:
            if (++at.icon == kWalkerIcons) {
                at.icon = kFirstWalkingIcon;
                if ((random() & 3) == 0) walk.phase = WalkerPhase::retreating;
            }
            at.x += walk.kind == WalkerKind::left ? -kStride : kStride;
            return true;
        default:
            return --at.icon >= 0 || rest(walk);
    }
}

bool stepPlaying(Placement& at, Walk& walk) {
    ++at.icon;
    if (walk.phase == WalkerPhase::active) return at.icon < kWalkerIcons || rest(walk);
    if (at.icon == kEmergingIconsOfPlayer) {
        walk.phase = WalkerPhase::active;
        at.icon = 0;
    }
    return true;
}

}  // namespace

void placeFlyer(Placement& at, Velocity& velocity, Random random) {
    at.x = 50 + (random() & 255);
    at.y = 10 + (random() & 63);
    at.icon = kUp;
    velocity = {};
}

void moveFlyer(Placement& at, Velocity& velocity, Random random) {
    at.icon = flyerDirection(at, velocity, random);
    const Velocity change = acceleration(at.icon);
    velocity.dx += change.dx;
    velocity.dy += change.dy;
    at.x += velocity.dx;
    at.y += velocity.dy;
}

bool moveWalker(Placement& at, Walk& walk, Random random) {
    if (walk.kind == WalkerKind::inactive && !startsWalking(at, walk, random)) return false;
    return walk.kind == WalkerKind::playing ? stepPlaying(at, walk) : stepWalking(at, walk, random);
}

int walkerRow(const Walk& walk) {
    switch (walk.kind) {
        case WalkerKind::left:
            return 0;
        case WalkerKind::right:
            return 1;
        default:
            return walk.phase == WalkerPhase::emerging ? 0 : 2;
    }
}

}  // namespace tamrix
