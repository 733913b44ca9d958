// How the sprites of the about box move: state and random numbers in, state out. Positions are the icon's top left
// corner in pixels of the frame bitmap.
#pragma once

namespace tamrix {

/// The standard generator's contract: each call gives 0 to 32767.
using Random = int (*)();

inline constexpr int kFlyerIcons = 4;   // one for each direction
inline constexpr int kWalkerRows = 3;   // emerge and walk left; emerge and walk right; play in place
inline constexpr int kWalkerIcons = 6;  // of a row

struct Placement {
    int x = 0;
    int y = 0;
    int icon = 0;  // index into the current row of icons
};

/// Pixels a frame. A flyer's direction is its icon: 0 left and down, 1 up, 2 right and down, 3 down.
struct Velocity {
    int dx = 0;
    int dy = 0;
};

enum class WalkerKind : int { inactive = -1, left, right, playing };
enum class WalkerPhase : int { emerging, active, retreating };

struct Walk {
    WalkerKind kind = WalkerKind::inactive;
    WalkerPhase phase = WalkerPhase::emerging;
};

/// Puts a flyer somewhere in the upper part of the picture area, at rest.
void placeFlyer(Placement& at, Velocity& velocity, Random random);

/// Advances a flyer by one frame: it dives when high or rising fast, climbs when low or falling fast, turns back at the
/// sides and otherwise turns at random.
void moveFlyer(Placement& at, Velocity& velocity, Random random);

/// Advances a walker by one frame; false when it is not to be drawn in this one.
bool moveWalker(Placement& at, Walk& walk, Random random);

/// The row of icons that an active walker shows.
int walkerRow(const Walk& walk);

}  // namespace tamrix
