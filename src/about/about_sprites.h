// The sprite objects of the about box, which draw themselves.
#pragma once

#include <windows.h>

#include "about/sprites.h"

/// A sprite: an icon from a row of icons, and its position.
class CAboutSprite {
public:
    /// Draws the current icon. Draws nothing if there is no row or the icon is missing.
    virtual void drawFrame(HDC dc);

protected:
    tamrix::Placement at_;
    const HICON* icons_ = nullptr;  // the current row
};

/// Flies around in the picture area; never inactive.
class CFlyingSprite final : public CAboutSprite {
public:
    CFlyingSprite();
    /// Advances by one frame and draws.
    void drawFrame(HDC dc) override;

private:
    tamrix::Velocity velocity_;
};

/// Appears in the text area from time to time, walks or plays, and disappears.
class CWalkingSprite final : public CAboutSprite {
public:
    CWalkingSprite();
    /// Advances by one frame and draws, unless it is inactive.
    void drawFrame(HDC dc) override;

private:
    tamrix::Walk walk_;
};
