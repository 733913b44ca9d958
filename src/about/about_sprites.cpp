#include "about/about_sprites.h"

#include <cstdlib>

#include "base/module.h"

namespace {

constexpr int kFirstFlyerIcon = 10;
constexpr int kFirstWalkerIcon = 20;

// The first sprite of each kind loads them. Icons that are loaded from a module are shared and never released.
HICON flyerIcons[tamrix::kFlyerIcons];
HICON walkerIcons[tamrix::kWalkerRows][tamrix::kWalkerIcons];

void loadIcons(HICON* table, int count, int firstId) {
    if (!tamrix::instance || table[0]) return;
    for (int i = 0; i < count; ++i) table[i] = LoadIconA(tamrix::instance, MAKEINTRESOURCEA(firstId + i));
}

}  // namespace

void CAboutSprite::drawFrame(HDC dc) {
    if (icons_ && icons_[at_.icon]) DrawIcon(dc, at_.x, at_.y, icons_[at_.icon]);
}

CFlyingSprite::CFlyingSprite() {
    loadIcons(flyerIcons, tamrix::kFlyerIcons, kFirstFlyerIcon);
    tamrix::placeFlyer(at_, velocity_, std::rand);
    icons_ = flyerIcons;
}

void CFlyingSprite::drawFrame(HDC dc) {
    tamrix::moveFlyer(at_, velocity_, std::rand);
    CAboutSprite::drawFrame(dc);
}

CWalkingSprite::CWalkingSprite() {
    loadIcons(walkerIcons[0], tamrix::kWalkerRows * tamrix::kWalkerIcons, kFirstWalkerIcon);
}

void CWalkingSprite::drawFrame(HDC dc) {
    if (!tamrix::moveWalker(at_, walk_, std::rand)) return;
    icons_ = walkerIcons[tamrix::walkerRow(walk_)];
    CAboutSprite::drawFrame(dc);
}
