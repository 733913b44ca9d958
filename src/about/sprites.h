// The movement of the about box's sprites, computed only from state and random numbers. Positions are the icon's top
// left corner in pixels of the frame bitmap.
#pragma once

namespace tamrix {

/// Like rand(): each call returns 0 to 32767.
using Random = int (*)();

inline constexpr int kFlyerIcons = 4;   // one per direction
inline constexpr int kWalkerRows = 3;   // emerge and walk left; emerge and walk right; play in place
inline constexpr int kWalkerIcons = 6;  // per row

struct Placement {
    int x = 0;
    int y = 0;
    int icon = 0;  // index into the current row of icons
};

/// Pixels per frame. A flyer's icon is its direction: 0 left and down, 1 up, 2 right and down, 3 down.
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

/// Places a flyer at a random position in the upper part of the picture area, at rest.
void placeFlyer(Placement& at, Velocity& velocity, Random random);

/// Advances a flyer by one frame. It dives if it is high or rising fast, climbs if it is low or falling fast, turns
/// back at the sides, and otherwise turns at random.
void moveFlyer(Placement& at, Velocity& velocity, Random random);

/// Advances a walker by one frame; false if it is not drawn in this frame.
bool moveWalker(Placement& at, Walk& walk, Random random);

/// The row of icons for an active walker.
int walkerRow(const Walk& walk);

}  // namespace tamrix
