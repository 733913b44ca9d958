#include "about/about_sprites.h"

#include <cstdlib>

#include "base/library.h"

namespace {

constexpr int kFirstFlyerIcon = 10;
constexpr int kFirstWalkerIcon = 20;

// Loaded by the first sprite of each kind. Icons loaded from a module are shared and never released.
HICON flyerIcons[tamrix::kFlyerIcons];
HICON walkerIcons[tamrix::kWalkerRows][tamrix::kWalkerIcons];

void loadIcons(HICON* table, int count, int firstId) {
    if (!tamrix::instance || table[0]) return;
    for (int i = 0; i < count; ++i) table[i] = LoadIconA(tamrix::instance, MAKEINTRESOURCEA(firstId + i));
}

}  // namespace

void CAboutSprite::drawFrame(HDC dc) {
    if (icons && icons[at.icon]) DrawIcon(dc, at.x, at.y, icons[at.icon]);
}

CFlyingSprite::CFlyingSprite() {
    loadIcons(flyerIcons, tamrix::kFlyerIcons, kFirstFlyerIcon);
    tamrix::placeFlyer(at, velocity, std::rand);
    icons = flyerIcons;
}

void CFlyingSprite::drawFrame(HDC dc) {
    tamrix::moveFlyer(at, velocity, std::rand);
    CAboutSprite::drawFrame(dc);
}

CWalkingSprite::CWalkingSprite() {
    loadIcons(walkerIcons[0], tamrix::kWalkerRows * tamrix::kWalkerIcons, kFirstWalkerIcon);
}

void CWalkingSprite::drawFrame(HDC dc) {
    if (!tamrix::moveWalker(at, walk, std::rand)) return;
    icons = walkerIcons[tamrix::walkerRow(walk)];
    CAboutSprite::drawFrame(dc);
}
