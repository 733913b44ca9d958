// A program that quits ends every modal loop, message boxes' and common dialogs' too, and some of these then give what
// they give for OK.
#pragma once

namespace tamrix {

/// Whether the thread is to quit. The message stays posted for the program's own loop.
bool isQuitPending();

}  // namespace tamrix
