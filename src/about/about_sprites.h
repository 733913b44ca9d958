// The sprites as the about box holds and draws them.
#pragma once

#include <windows.h>

#include "about/sprites.h"

/// An icon of a row, drawn where it stands.
class CAboutSprite {
public:
    /// Draws the current icon; nothing while there is no row or its icon is missing.
    virtual void drawFrame(HDC dc);

protected:
    tamrix::Placement at;
    const HICON* icons = nullptr;  // the current row
};

/// Flies about in the picture area; never inactive.
class CFlyingSprite final : public CAboutSprite {
public:
    CFlyingSprite();
    /// Moves by one frame and draws.
    void drawFrame(HDC dc) override;

private:
    tamrix::Velocity velocity;
};

/// Comes up in the text area now and then, walks or plays, and goes again.
class CWalkingSprite final : public CAboutSprite {
public:
    CWalkingSprite();
    /// Moves by one frame and draws, unless it is inactive.
    void drawFrame(HDC dc) override;

private:
    tamrix::Walk walk;
};
