// A program that quits ends every modal loop, including those of message boxes and common dialogs. Some of these then
// return the same result as for OK.
#pragma once

namespace tamrix {

/// Whether WM_QUIT has been posted to the thread. The message remains in the queue for the program's own loop.
bool isQuitPending();

}  // namespace tamrix
