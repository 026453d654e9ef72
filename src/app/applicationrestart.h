#pragma once

#include <QString>
#include <QStringList>

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
    static void clear() { s_requested = false; }

    // Starts program with arguments, detached, in workingFolder. False when it cannot be
    // started.
    static bool startAgain(const QString& program, const QStringList& arguments,
                           const QString& workingFolder);
    // The running executable, with the arguments it was given, in the current folder.
    static bool startAgain();

private:
    static inline bool s_requested = false;
};

} // namespace vkm
