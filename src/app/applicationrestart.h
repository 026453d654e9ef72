#pragma once

namespace vkm {

// Starting the editor again once it has shut down: an option that decides how the grid is
// built takes effect only at a start. The request is noted while the application closes;
// after the event loop has ended and everything of the run is released (the instance lock
// among it, which would otherwise refuse the new process), startAgain() starts the same
// executable with the same arguments in the same working folder.
class ApplicationRestart {
public:
    static void request() { s_requested = true; }
    static bool requested() { return s_requested; }

    // Starts the running executable again, detached, with the arguments it was given, in
    // the current folder. False when it cannot be started.
    static bool startAgain();

private:
    static inline bool s_requested = false;
};

} // namespace vkm
